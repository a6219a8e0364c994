// prepare_folder FOLDER ROWS: a program folder with a history of so many rows up to today.
#include "bench_folder.h"
#include "platform/error.h"
#include "quiet_ports.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>

#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    bool isNumber = false;
    const int rows = arguments.value(2).toInt(&isNumber);
    if (arguments.size() != 3 || !isNumber || rows < 1 || !QDir().mkpath(arguments[1])) {
        std::fputs("usage: prepare_folder FOLDER ROWS\n", stderr);
        return 2;
    }
    try {
        const QDateTime now = QDateTime::currentDateTime();
        kelvrane::bench::QuietPorts quiet(now);
        kelvrane::bench::PrepareFolder(quiet, QDir(arguments[1]).absolutePath(), rows, now.date());
    } catch (const kelvrane::RuntimeError& error) {
        std::fprintf(stderr, "prepare_folder: %s\n", error.what());
        return 1;
    }
    return 0;
}
