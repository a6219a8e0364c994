#include "app/program.h"
#include "app/session_end.h"
#include "app/start_trace.h"
#include "frame/error_report.h"
#include "startup/command_line.h"
#include "widgets/theme.h"

#include <QApplication>
#include <QStringList>

#include <cstdio>
#include <cstring>

namespace {

constexpr char usage[] = "usage: kelvrane [debug | COLLECTION.col | ForceUpdate FILE]\n"
                         "       kelvrane --help | --version\n";

/// Answers that need neither a display nor a file; -1 to go on.
int answerWithoutStarting(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::printf("Kelvrane %s\n", KELVRANE_VERSION);
        return 0;
    }
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::fputs(usage, stdout);
        return 0;
    }
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    using namespace kelvrane;
    if (const int answered = answerWithoutStarting(argc, argv); answered >= 0)
        return answered;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kelvrane"));
    QApplication::setOrganizationName(QStringLiteral("brindlemoor-ware"));
    QApplication::setApplicationVersion(QStringLiteral(KELVRANE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("kelvrane"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QString commandText = QApplication::arguments().mid(1).join(QLatin1Char(' '));
    if (ParseCommandLine(commandText).command == Command::Unknown) {
        std::fputs(usage, stderr);
        return 2;
    }
    QApplication::setWindowIcon(theme::AppIcon());
    StartTrace::installIfWanted(&application);
    Program program;
    SessionEnd sessionEnd(&application, [&program] { program.saveForLogOut(); });
    StartResult result = StartResult::Ended;
    Guarded(QStringLiteral("Main"), [&] { result = program.start(commandText); });
    return result == StartResult::Running ? QApplication::exec() : 0;
}
