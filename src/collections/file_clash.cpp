#include "collections/file_clash.h"

#include "collections/current_collection.h"
#include "frame/error_report.h"
#include "frame/globals.h"
#include "platform/item_rows.h"
#include "platform/ports.h"
#include "timevalues/time_values.h"

#include <utility>

namespace kelvrane {

namespace {

const QString question = QStringLiteral("Label1");
const QString nameField = QStringLiteral("txtFileName");
constexpr qsizetype extensionLength = 4; // ".htm"

constexpr ItemRow controlRows[] = {
    {.key = "Label1", .kind = ItemKind::Text},
    {"cmdOverwrite", "Overwrite"},
    {"cmdRename", "Rename"},
    {"cmdSkip", "Skip"},
    {.key = "txtFileName", .caption = "Please select a new filename:", .kind = ItemKind::Edit},
    {"OKButton", "OK"},
    {"CancelButton", "Cancel"},
};

void overwrite() {
    if (Clash().controls.item(QStringLiteral("cmdOverwrite")).caption == replies::Overwrite)
        Clash().FE_Response = replies::Overwrite;
}

void openRename() {
    FileClash& clash = Clash();
    clash.controls.setValue(nameField,
                            clash.DefaultName.isEmpty() ? clash.ClashingName : clash.DefaultName);
    QString base = CollectionFileName;
    if (base.endsWith(u".htm", Qt::CaseInsensitive))
        base.chop(extensionLength);
    FillCollectionList(clash.smuiXMLFiles, base);
    clash.setRenaming(true);
}

void takeNewName() {
    QString name = StripAtNull(Clash().controls.value(nameField));
    if (name.contains(u".htm"))
        name.chop(extensionLength);
    if (name.trimmed().isEmpty()) {
        MsgBox(QStringLiteral("Please select a valid filename."), {}, BoxIcon::Exclamation);
        return;
    }
    Clash().NewName = name;
    Clash().FE_Response = replies::Rename;
}

struct Command {
    const char* button;
    void (*run)();
};
constexpr Command commands[] = {
    {"cmdOverwrite", overwrite},
    {"cmdRename", openRename},
    {"cmdSkip", [] { Clash().FE_Response = replies::Skip; }},
    {"OKButton", takeNewName},
    {"CancelButton", [] { Clash().setRenaming(false); }},
};

} // namespace

FileClash::FileClash() {
    controls.refill(ItemsOf(controlRows));
}

void FileClash::setRenaming(bool renaming) {
    if (std::exchange(m_renaming, renaming) != renaming)
        emit FrameChanged();
}

void FileClash::reset() {
    FE_Response.clear();
    NewName.clear();
    controls.setValue(nameField, {});
    smuiXMLFiles.clear();
    setRenaming(false);
}

FileClash& Clash() {
    static FileClash clash;
    return clash;
}

void FileExists_Response(QString& NewName, QString& FE_Response) {
    FileClash& clash = Clash();
    clash.reset();
    clash.ClashingName = NewName.endsWith(u".htm") ? NewName.chopped(extensionLength) : NewName;
    clash.controls.setCaption(question, QStringLiteral("The name, ") + NewName +
                                            QStringLiteral(" already exists in the collection.\r"
                                                           "How do you want to handle this file?"));
    if (!ports.events->waitUntil([&] { return !clash.FE_Response.isEmpty(); }))
        clash.FE_Response = replies::Skip;
    if (clash.FE_Response != replies::Overwrite)
        NewName = clash.NewName;
    FE_Response = clash.FE_Response;
}

void UnloadFileExists() {
    if (Clash().FE_Response.isEmpty())
        Clash().FE_Response = replies::Skip;
}

void FileExists_Click(const QString& button) {
    for (const Command& command : commands)
        if (button == QLatin1String(command.button))
            command.run();
}

void WireFileExists() {
    static bool wired = false;
    if (std::exchange(wired, true))
        return;
    QObject::connect(&Clash().controls, &KeyedItems::Clicked, &Clash(), [](const QString& button) {
        Guarded(QStringLiteral("frmFileExists_Click"), [&] { FileExists_Click(button); });
    });
}

} // namespace kelvrane
