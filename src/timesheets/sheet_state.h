// What the timesheets remember for the whole process. Reset as a whole by sheetState = {}.
#pragma once

#include "platform/error.h"
#include "platform/int16.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

namespace kelvrane {

/// A cell from which data runs.
struct SSVariable {
    QString Name;   ///< with its hash signs; "" in a place without a variable
    Int16 Row = -1; ///< 1-based; -1: not on the sheet
    Int16 Col = -1; ///< 0-based; -1: not on the sheet
};

/// Places in SSVariables.
namespace anchor {
enum Place { Name, Number, Hours, VTotal, HTotal, Day, Notes, Rate, Total, Count = 11 };
} // namespace anchor

struct SheetState {
    /// "A" to "Q"; read through At(), which raises Subscript for a column beyond.
    std::array<QString, 17> ColumnLetters;
    std::array<QString, 17> ReservedVariables; ///< the vocabulary; nothing reads it
    std::array<QString, 7> ShortDayNames;      ///< "Sun" first; nothing of the timesheets reads it
    std::array<SSVariable, anchor::Count> SSVariables;
    bool HasNumberColumn = true; ///< false: the sheet of this calculation shows no project numbers

    // Of the database in hand, in the order of the rows; element 0 is the first project.
    QStringList ProjectNames;
    QStringList ProjectNumbers;
    QList<Int16> CustomerIDs; ///< customers met in this calculation; 0: none, or beyond 16 bits

    Int16 DBCount;              ///< databases in the list
    Int16 SelectedDBIndex = -1; ///< 1-based, the database last clicked; -1: none
};

inline SheetState sheetState;

/// "C5" of a 0-based column and a 1-based row; raises Subscript for a column beyond the letters.
inline QString CellName(int column, int row) {
    return At(sheetState.ColumnLetters, column) + QString::number(row);
}

inline auto& ColumnLetters = sheetState.ColumnLetters;
inline auto& ReservedVariables = sheetState.ReservedVariables;
inline auto& ShortDayNames = sheetState.ShortDayNames;
inline auto& SSVariables = sheetState.SSVariables;
inline auto& HasNumberColumn = sheetState.HasNumberColumn;
inline auto& ProjectNames = sheetState.ProjectNames;
inline auto& ProjectNumbers = sheetState.ProjectNumbers;
inline auto& CustomerIDs = sheetState.CustomerIDs;
inline auto& DBCount = sheetState.DBCount;
inline auto& SelectedDBIndex = sheetState.SelectedDBIndex;

} // namespace kelvrane
