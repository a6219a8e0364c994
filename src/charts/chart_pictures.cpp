#include "charts/chart_pictures.h"

#include "charts/chart_model.h"
#include "charts/picture_printing.h"
#include "platform/error.h"
#include "platform/ports.h"
#include "platform/texts.h"

#include <QBuffer>
#include <QStandardPaths>

namespace kelvrane {

namespace {

void takePicture() {
    Charts().picForm = {};
    emit Charts().PictureWanted();
    if (Charts().picForm.isNull())
        Raise(errors::NoObject);
}

QByteArray bitmapBytes(const QImage& picture) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!picture.convertToFormat(QImage::Format_RGB32).save(&buffer, "BMP"))
        Raise(errors::DeviceError);
    return buffer.data();
}

FileQuestion saveQuestion() {
    QString day = DateText(Charts().StartDate);
    day.replace(QLatin1Char('/'), QLatin1Char('_'));
    return {.title = QStringLiteral("Save Chart As"),
            .folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation),
            .filter = QStringLiteral("Bitmaps|*.bmp"),
            .defaultExtension = QStringLiteral(".bmp"),
            .fileName = QStringLiteral("TK_") + day + QStringLiteral(".bmp")};
}

bool mayReplace(const QString& path) {
    return !ports.files->exists(path) || MsgBox(QStringLiteral("File Exists, Overwrite this file?"),
                                                QStringLiteral("File Exists"), BoxIcon::Question,
                                                BoxButtons::YesNo) == BoxAnswer::Yes;
}

} // namespace

void mnuSaveAs() {
    takePicture();
    const QByteArray bytes = bitmapBytes(Charts().picForm);
    const FileQuestion question = saveQuestion();
    while (const auto path = ports.dialogs->saveFile(question)) {
        if (path->isEmpty())
            return;
        if (mayReplace(*path)) {
            ports.files->writeAtomically(*path, bytes);
            return;
        }
    }
}

void mnuPrint() {
    takePicture();
    const QImage picture = Charts().picForm;
    const QString title = QStringLiteral("Chart");
    if (!ports.printer->choose(title))
        return;
    const bool printed = ports.printer->print(
        title, [&](QPagedPaintDevice& device) { PrintPictureToFitPage(device, picture); });
    if (!printed)
        MsgBox(QStringLiteral("The chart could not be printed."), {}, BoxIcon::Exclamation);
}

} // namespace kelvrane
