// What the record rules and the Database Manager remember for the whole process, beside the two
// record sets. Reset as a whole by recordState = {}.
#pragma once

#include "platform/int16.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace kelvrane {

namespace current_table {
inline constexpr int Projects = 0;
inline constexpr int Customers = 1;
} // namespace current_table

struct RecordState {
    int CurrentTable = current_table::Projects;
    /// 1-based positions that a cancel returns to; empty until first set.
    std::optional<int> ProjectPosition;
    std::optional<int> CustomerPosition;
    /// Columns of ProjectInfo from position 1 upward; element 0 is unused.
    QStringList FieldNames;
    Int16 EntryStatus;         ///< result of the last SAVE: 0 or 103
    bool ItemSelected = false; ///< a selection was made; read when the manager closes
};

inline RecordState recordState;

inline auto& CurrentTable = recordState.CurrentTable;
inline auto& ProjectPosition = recordState.ProjectPosition;
inline auto& CustomerPosition = recordState.CustomerPosition;
inline auto& FieldNames = recordState.FieldNames;
inline auto& EntryStatus = recordState.EntryStatus;
inline auto& ItemSelected = recordState.ItemSelected;

/// Fills FieldNames from the project table.
void CollectFieldNames();

} // namespace kelvrane
