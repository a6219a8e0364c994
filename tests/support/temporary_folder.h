// A folder of its own for a test, removed at the end.
//
//     TemporaryFolder folder;
//     files.create(folder.path("a.dat"), "bytes");
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace kelvrane {

class TemporaryFolder {
  public:
    QString path() const { return m_folder.path(); }
    QString path(const QString& name) const { return m_folder.filePath(name); }

  private:
    QTemporaryDir m_folder;
};

} // namespace kelvrane
