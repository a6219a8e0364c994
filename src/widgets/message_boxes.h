// Message boxes and the file dialog, for real.
#pragma once

#include "platform/ports.h"

#include <QList>
#include <QPointer>

class QDialog;
class QWidget;

namespace kelvrane {

/// "Database Files ( *.mdb ) |*.mdb" as the file dialog wants it: "Database Files (*.mdb)".
QString FileDialogFilter(const QString& filter);

/// A message as it is shown: line breaks of every kind as one, endless words and texts shortened.
QString ShownMessage(const QString& text);

class MessageBoxes : public Dialogs {
  public:
    BoxAnswer ask(const Box& box) override;
    std::optional<QString> openFile(const FileQuestion& question) override;
    std::optional<QString> saveFile(const FileQuestion& question) override;

    /// Closes every open box as if by its frame; the calls that wait return one after the other.
    void closeAll();
    /// closeAll, and whatever is asked from now on is answered as if by its frame, unseen: nobody
    /// is there any more, and the process must end.
    void shutDown();
    bool isOpen() const { return !m_open.isEmpty(); }

  private:
    std::optional<QString> runFileDialog(const FileQuestion& question, bool saves);
    int run(QDialog* dialog);

    QList<QPointer<QDialog>> m_open; ///< the innermost last
    bool m_shutDown = false;
};

} // namespace kelvrane
