#include "collections/sheet_printing.h"

#include "collections/collection_file.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"
#include "worksheet/page_painter.h"
#include "worksheet/sheet_html.h"

#include <QFileInfo>

namespace kelvrane {

namespace {
constexpr qsizetype mostNamesShown = 10;
}

SheetContents ReadCollectionSheet(const QString& path) {
    RefuseLinks(path);
    return ReadSheetHtml(ports.files->read(path));
}

void PrintSheets(const QStringList& paths,
                 const std::function<void(const SheetContents&)>& showSheet) {
    SkipErrors step(QStringLiteral("PrintSheets"));
    QStringList failed;
    for (const QString& path : paths) {
        const QString name = QFileInfo(path).fileName();
        const bool printed = step.condition([&] {
            const SheetContents contents = ReadCollectionSheet(path);
            showSheet(contents);
            return ports.printer->print(
                name, [&](QPagedPaintDevice& device) { PrintSheet(contents, device); });
        });
        if (!printed)
            failed.append(name);
    }
    if (failed.isEmpty())
        return;
    QString text = QStringLiteral("These sheets could not be printed:");
    for (const QString& name : failed.first(qMin(mostNamesShown, failed.size())))
        text += u'\r' + name;
    if (const qsizetype more = failed.size() - mostNamesShown; more > 0)
        text += QStringLiteral("\rand %1 more").arg(more);
    MsgBox(text, {}, BoxIcon::Exclamation);
}

} // namespace kelvrane
