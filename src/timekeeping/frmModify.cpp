#include "timekeeping/frmModify.h"

#include "frame/error_report.h"
#include "timekeeping/modify_entry.h"
#include "timekeeping/modify_model.h"
#include "widgets/keyed_panel.h"
#include "widgets/keyed_push_button.h"
#include "widgets/open_editor.h"
#include "widgets/theme.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvrane {

namespace {
constexpr QSize startSize(420, 240);
} // namespace

frmModify::frmModify(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmModify"));
    setWindowTitle(QStringLiteral("Modify Entry"));
    WireModify();
    FrmModify_Load();
    SmuiModify = new KeyedPanel(&Modify().SmuiModify, Modify().heading, this);
    SmuiModify->setObjectName(QStringLiteral("SmuiModify"));
    SmuiModify->setValueAlignment(Qt::AlignLeft);
    cmdUpdate = CreatePushButton(&Modify().buttons, QStringLiteral("cmdUpdate"), this);
    cmdCancel = CreatePushButton(&Modify().buttons, QStringLiteral("cmdCancel"), this);
    arrange();
    SmuiModify->setFocus();
}

void frmModify::arrange() {
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    buttons->addStretch(1);
    buttons->addWidget(cmdUpdate);
    buttons->addWidget(cmdCancel);
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Margin, theme::Margin, theme::Margin, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addWidget(SmuiModify, 1);
    content->addLayout(buttons);
    resize(startSize);
}

void frmModify::closeEvent(QCloseEvent* event) {
    event->ignore();
    CommitOpenEditor();
    Guarded(QStringLiteral("frmModify_QueryUnload"), FrmModify_QueryUnload);
}

void frmModify::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace kelvrane
