#include "records/record_state.h"

#include "records/record_tables.h"

namespace kelvrane {

void CollectFieldNames() {
    const Recordset& records = ProjectRecords();
    QStringList names{QString()};
    for (int position = 1; position < records.fieldCount(); ++position)
        names.append(records.fieldName(position));
    FieldNames = names;
}

} // namespace kelvrane
