#include "frame/frmDebugWindow.h"

#include "frame/error_report.h"
#include "frame/globals.h"
#include "frame/other_process.h"
#include "frame/trace.h"
#include "platform/ports.h"
#include "widgets/theme.h"

#include <QCloseEvent>
#include <QLabel>
#include <QListWidget>
#include <QShortcut>
#include <QVBoxLayout>

namespace kelvrane {

namespace {
void Copy() {
    Guarded(QStringLiteral("List1_Click"), [] { CopyTrace(); });
}
} // namespace

frmDebugWindow::frmDebugWindow(QWidget* parent) : QWidget(parent), List1(new QListWidget(this)) {
    setObjectName(QStringLiteral("frmDebugWindow"));
    const QString title = QStringLiteral("Kelvrane - Start-up Trace");
    setWindowTitle(KeepsDay ? title : title + QStringLiteral(" - ") + OtherProcessText);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setAccessibleName(QStringLiteral("Start-up Trace"));
    List1->setAlternatingRowColors(true);
    List1->viewport()->installEventFilter(this);
    auto* hint =
        new QLabel(QStringLiteral("Click the list to copy the trace, newest line first."), this);
    QPalette quiet = hint->palette();
    quiet.setColor(QPalette::WindowText, theme::SecondaryText(palette()));
    hint->setPalette(quiet);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::Margin, theme::Margin, theme::Margin, theme::Margin);
    layout->setSpacing(theme::Step);
    layout->addWidget(List1, 1);
    layout->addWidget(hint);
    resize(480, 360);

    for (const QString& line : Trace().lines())
        append(line);
    connect(&Trace(), &TraceLines::Appended, this, &frmDebugWindow::append);
    connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this, Copy);
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
            &QWidget::close);
}

void frmDebugWindow::append(const QString& line) {
    List1->addItem(line);
    List1->scrollToBottom();
}

/// The viewport is watched, since a click counts on an empty list too.
bool frmDebugWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == List1->viewport() && event->type() == QEvent::MouseButtonRelease)
        Copy();
    return QWidget::eventFilter(watched, event);
}

void frmDebugWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    ports.screens->unload(Screen::frmDebugWindow);
}

} // namespace kelvrane
