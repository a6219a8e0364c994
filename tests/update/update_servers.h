// Real web and FTP servers on loopback, as tests/update/update_servers.py builds them.
//
//     UpdateServers servers;
//     servers.put("updateinfo/kelvrane/setup.run", bytes);
//     fetch(servers.address("http", "http") + "/updateinfo/kelvrane/setup.run");
#pragma once

#include <QHash>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace kelvrane::testing {

class UpdateServers {
  public:
    /// Fails the test when a server can't be started.
    UpdateServers();
    ~UpdateServers();

    /// "ftp://127.0.0.1:43210" of a server by its name.
    QString address(const QString& scheme, const QString& name) const;
    /// What those with TLS must be trusted by.
    QString certificates() const { return m_folder.filePath("ca.pem"); }
    /// Offers a file, by its path on the servers.
    void put(const QString& path, const QByteArray& bytes) const;
    /// Ends every FTP session where it stands.
    void cut();

  private:
    QString readLine();

    QTemporaryDir m_folder;
    QProcess m_process;
    QHash<QString, int> m_ports;
};

} // namespace kelvrane::testing
