#include "widgets/printing.h"

#include <QApplication>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QStorageInfo>

namespace kelvrane {

QtPrinter::QtPrinter() = default;
QtPrinter::~QtPrinter() = default;

bool QtPrinter::choose(const QString& title) {
    if (!m_printer)
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    const QPointer<QPrintDialog> dialog =
        new QPrintDialog(m_printer.get(), QApplication::activeWindow());
    dialog->setWindowTitle(title);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    delete dialog;
    return accepted && m_printer->isValid();
}

bool QtPrinter::print(const QString& title, const std::function<void(QPagedPaintDevice&)>& paint) {
    if (!m_printer || !m_printer->isValid())
        return false;
    m_printer->setDocName(title);
    paint(*m_printer);
    return m_printer->printerState() != QPrinter::Error;
}

QStringList MountedVolumes::roots() const {
    QStringList roots{QStringLiteral("/")};
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (volume.isValid() && volume.isReady() && !roots.contains(volume.rootPath()) &&
            volume.device().startsWith("/dev/"))
            roots.append(volume.rootPath());
    return roots;
}

} // namespace kelvrane
