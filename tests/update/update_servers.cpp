#include "update/update_servers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace kelvrane::testing {

UpdateServers::UpdateServers() {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start("python3", {"tests/update/update_servers.py", m_folder.path()});
    for (QString line = readLine(); line != "ready"; line = readLine()) {
        if (line.isEmpty()) {
            ADD_FAILURE() << "the servers didn't start; what they said stands above";
            return;
        }
        m_ports.insert(line.section(' ', 0, 0), line.section(' ', 1).toInt());
    }
}

UpdateServers::~UpdateServers() {
    m_process.closeWriteChannel();
    m_process.waitForFinished();
}

QString UpdateServers::readLine() {
    while (!m_process.canReadLine())
        if (!m_process.waitForReadyRead())
            return {};
    return QString::fromUtf8(m_process.readLine().trimmed());
}

QString UpdateServers::address(const QString& scheme, const QString& name) const {
    EXPECT_TRUE(m_ports.contains(name)) << name.toStdString();
    return QStringLiteral("%1://127.0.0.1:%2").arg(scheme).arg(m_ports.value(name));
}

void UpdateServers::put(const QString& path, const QByteArray& bytes) const {
    QFile file(m_folder.filePath("site/" + path));
    QDir().mkpath(QFileInfo(file).path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void UpdateServers::cut() {
    m_process.write("cut\n");
    EXPECT_EQ(readLine(), "cut");
}

} // namespace kelvrane::testing
