// A sheet is filed under a name that the collection has already: the question what to do, and the
// new name. The screen shows the model; FileExists_Response waits for the reply.
#pragma once

#include "platform/keyed_items.h"

#include <QObject>
#include <QString>

namespace kelvrane {

namespace replies {
inline const QString Overwrite = QStringLiteral("Overwrite");
inline const QString Rename = QStringLiteral("Rename");
inline const QString Skip = QStringLiteral("Skip");
} // namespace replies

class FileClash : public QObject {
    Q_OBJECT
  public:
    FileClash();

    /// Label1 (its caption is the question), cmdOverwrite, cmdRename, cmdSkip; txtFileName,
    /// OKButton, CancelButton.
    KeyedItems controls;
    KeyedItems smuiXMLFiles; ///< the collection's sheets, beside the new name
    QString FE_Response;     ///< "" while the user thinks
    QString NewName;         ///< "" but after a rename
    QString DefaultName;     ///< offered as the new name; set by who files sheets
    QString ClashingName;    ///< without its extension; offered where there is no default

    /// fraRename is on display, else FraMain.
    bool isRenaming() const { return m_renaming; }
    void setRenaming(bool renaming);
    /// As a newly opened screen has it; the default name stays.
    void reset();

  signals:
    void FrameChanged();

  private:
    bool m_renaming = false;
};

/// The one clash; it lives with the process.
FileClash& Clash();

/// Waits for the user's reply, one of replies::, and returns it. NewName takes the new name after a
/// rename, exactly as typed but for its extension, and becomes empty after "Skip". A shut-down is
/// a "Skip".
void FileExists_Response(QString& NewName, QString& FE_Response);
/// The screen goes: without a reply it is "Skip".
void UnloadFileExists();
/// A button by its name.
void FileExists_Click(const QString& button);

/// Connects the model to the routines; once a process.
void WireFileExists();

} // namespace kelvrane
