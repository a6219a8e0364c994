// The option panel of the spreadsheet screen: what the calculation goes by. Each change is stored
// and calculates anew.
#pragma once

#include <QString>

namespace kelvrane {

/// Shows the settings in SmartToolbox; its changes do nothing meanwhile.
void FillSMUIToolbox();
/// A row of SmartToolbox was changed.
void SheetOptionChange(const QString& key, const QString& value);
/// ImgClose: the panel and the list of databases go.
void CloseToolbox();

} // namespace kelvrane
