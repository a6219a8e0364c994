#include "options/frmTip.h"

#include "options/tips.h"
#include "platform/ports.h"
#include "widgets/keyed_push_button.h"
#include "widgets/theme.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr int textWidth = 380;
constexpr int textLines = 4; ///< of the longest tip; the window stays as it is from tip to tip
constexpr int iconSize = 48;

QString T(const char* text) {
    return QString::fromLatin1(text);
}

} // namespace

frmTip::frmTip(QWidget* parent) : QDialog(parent) {
    setObjectName(T("frmTip"));
    setWindowTitle(T("Tip of the Day"));
    if (!LoadTip()) {
        ports.screens->unload(Screen::frmTip);
        return;
    }
    arrange();
    connect(&Tip().controls, &QAbstractItemModel::dataChanged, this, &frmTip::refresh);
    refresh();
}

void frmTip::arrange() {
    KeyedItems& controls = Tip().controls;
    auto* icon = new QLabel(this);
    icon->setPixmap(theme::AppIcon().pixmap(QSize(iconSize, iconSize), devicePixelRatio()));
    auto* Label1 = new QLabel(controls.item(T("Label1")).caption, this);
    Label1->setObjectName(T("Label1"));
    QFont heading = Label1->font();
    heading.setPointSizeF(heading.pointSizeF() * 1.25);
    heading.setWeight(QFont::DemiBold);
    Label1->setFont(heading);
    lblTipText = new QLabel(this);
    lblTipText->setObjectName(T("lblTipText"));
    lblTipText->setTextFormat(Qt::PlainText);
    lblTipText->setWordWrap(true);
    lblTipText->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblTipText->setFixedWidth(textWidth);
    lblTipText->setMinimumHeight(textLines * lblTipText->fontMetrics().lineSpacing());
    lblTipText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* words = new QVBoxLayout;
    words->setSpacing(theme::Margin);
    words->addWidget(Label1);
    words->addWidget(lblTipText);
    auto* top = new QHBoxLayout;
    top->setSpacing(theme::Gap);
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addLayout(words);

    chkLoadTipsAtStartup = new QCheckBox(controls.item(T("chkLoadTipsAtStartup")).caption, this);
    chkLoadTipsAtStartup->setObjectName(T("chkLoadTipsAtStartup"));
    connect(chkLoadTipsAtStartup, &QCheckBox::clicked, &controls,
            [&controls] { controls.toggle(T("chkLoadTipsAtStartup")); });
    QPushButton* next = CreatePushButton(&controls, T("cmdNextTip"), this);
    next->setText(controls.item(T("cmdNextTip")).caption); // with its mnemonic
    next->setAccessibleName(next->text().remove(QLatin1Char('&')));
    QPushButton* ok = CreatePushButton(&controls, T("cmdOK"), this);
    ok->setDefault(true);
    ok->setFocus();
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::Step);
    buttons->addWidget(chkLoadTipsAtStartup);
    buttons->addStretch(1);
    buttons->addWidget(next);
    buttons->addWidget(ok);

    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Gap, theme::Gap, theme::Gap, theme::Margin);
    content->setSpacing(theme::Gap);
    content->addLayout(top);
    content->addStretch(1);
    content->addLayout(buttons);
    content->setSizeConstraint(QLayout::SetFixedSize);
}

void frmTip::refresh() {
    const KeyedItems& controls = Tip().controls;
    lblTipText->setText(controls.value(T("lblTipText")));
    chkLoadTipsAtStartup->setChecked(controls.item(T("chkLoadTipsAtStartup")).ticked);
}

/// Esc and the close box are the OK button.
void frmTip::reject() {
    Tip().controls.click(T("cmdOK"));
}

} // namespace kelvrane
