#include "timekeeping/modify_model.h"

namespace kelvrane {

namespace {

struct Row {
    const QString& key;
    const char* caption;
    const char* toolTip;
    ItemKind kind;
};
const Row rows[] = {
    {modify_rows::Project, "Project Name", "Select a new project Name", ItemKind::DropDown},
    {modify_rows::Number, "Project Number", "Project Number cannot be changed.", ItemKind::Text},
    {modify_rows::Start, "Start Time", "Modify the start time of a project", ItemKind::Edit},
    {modify_rows::Stop, "Stop Time", "Modify the stop time of a project", ItemKind::Edit},
    {modify_rows::Break, "Break Time", "Modify the break time of a project", ItemKind::Edit},
};

} // namespace

void ModifyModel::reset() {
    QList<KeyedItem> items;
    for (const Row& row : rows)
        items.append({.key = row.key,
                      .caption = QString::fromLatin1(row.caption),
                      .kind = row.kind,
                      .toolTip = QString::fromLatin1(row.toolTip)});
    SmuiModify.refill(items);
    buttons.refill({{.key = QStringLiteral("cmdUpdate"),
                     .caption = QStringLiteral("Update"),
                     .kind = ItemKind::Button},
                    {.key = QStringLiteral("cmdCancel"),
                     .caption = QStringLiteral("Cancel"),
                     .kind = ItemKind::Button}});
    heading.clear();
    EntryIndex = -1;
    opened = {};
    dirty = saved = false;
}

ModifyModel& Modify() {
    static ModifyModel model;
    return model;
}

} // namespace kelvrane
