// The dialog that files the sheet on display: which name it gets, beside the sheets that the
// collection has.
#pragma once

#include "platform/keyed_items.h"

#include <QObject>
#include <QString>

#include <functional>

namespace kelvrane {

class SheetNaming : public QObject {
    Q_OBJECT
  public:
    SheetNaming();

    KeyedItems controls; ///< lblPrompt, txtFileName, OKButton, CancelButton
    KeyedItems smuiXMLFiles;

    std::function<QString()> sheetHtml; ///< asked when the name is chosen
    KeyedItems* progress = nullptr;     ///< the panel with PROGRESS

  signals:
    void HideWanted();
};

/// The one dialog; it lives with the process.
SheetNaming& Naming();

/// "1/5/2003" as the name of a sheet: "1_5_2003".
QString SheetNameOfDate(const QString& startDate);

/// Shows the dialog with a name to begin with and waits until it is gone. The panel outlives it.
void AskSheetName(const QString& defaultName, const std::function<QString()>& sheetHtml,
                  KeyedItems& progress);

/// Fills the list with the current collection's sheets.
void LoadSelFilename();
/// OKButton files the sheet under the name, CancelButton closes.
void SelFilename_Click(const QString& button);

/// Connects the model to the routines; once a process.
void WireSelFilename();

} // namespace kelvrane
