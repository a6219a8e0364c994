#include "records/frmBrowseForCust.h"

#include "platform/ports.h"
#include "records/customer_browser.h"
#include "widgets/captions.h"
#include "widgets/flat_button.h"
#include "widgets/keyed_panel.h"
#include "widgets/theme.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

namespace kelvrane {

namespace {
constexpr QSize startSize(720, 420);
constexpr int findWidth = 150;
} // namespace

frmBrowseForCust::frmBrowseForCust(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmBrowseForCust"));
    setWindowTitle(QStringLiteral("Browse for Customer"));
    setModal(true);
    WireCustomerBrowser();
    FrmBrowseForCustomer_Load();
    arrange();
    bind();
    showRecordNumber();
    FINDWHAT->setFocus();
}

QWidget* frmBrowseForCust::createBarItem(const KeyedItem& item) {
    KeyedItems& bar = Browser().SmartStatusBar;
    if (item.kind == ItemKind::Text)
        return RECORDNUM = new QLabel(SmartStatusBar);
    if (item.kind == ItemKind::Edit) {
        FINDWHAT = new QLineEdit(SmartStatusBar);
        FINDWHAT->setMinimumWidth(findWidth);
        FINDWHAT->setClearButtonEnabled(true);
        FINDWHAT->setPlaceholderText(item.toolTip);
        FINDWHAT->setAccessibleName(item.toolTip);
        connect(FINDWHAT, &QLineEdit::textChanged, &bar,
                [&bar, key = item.key](const QString& text) { bar.edit(key, text); });
        return FINDWHAT;
    }
    auto* button = new FlatButton(SmartStatusBar);
    button->setCaption(ShownCaption(item.caption.isEmpty() ? item.toolTip : item.caption));
    button->setWordShown(!item.caption.isEmpty());
    button->setHint(item.caption.isEmpty() ? QString() : item.toolTip);
    button->setIcon(theme::Icon(item.image));
    connect(button, &QToolButton::clicked, &bar, [&bar, key = item.key] { bar.click(key); });
    return button;
}

void frmBrowseForCust::arrange() {
    smuiCustInfo =
        new KeyedPanel(&Browser().smuiCustInfo, QStringLiteral("Customer Information"), this);
    smuiCustInfo->setObjectName(QStringLiteral("smuiCustInfo"));
    smuiCustInfo->setValueAlignment(Qt::AlignLeft);
    SmartStatusBar = new QWidget(this);
    SmartStatusBar->setObjectName(QStringLiteral("SmartStatusBar"));
    auto* bar = new QHBoxLayout(SmartStatusBar);
    bar->setContentsMargins(0, 0, 0, 0);
    bar->setSpacing(theme::Step);
    for (const KeyedItem& item : Browser().SmartStatusBar.items()) {
        QWidget* control = createBarItem(item);
        control->setObjectName(item.key);
        if (control->toolTip().isEmpty())
            control->setToolTip(item.toolTip);
        bar->addWidget(control, control == FINDWHAT ? 1 : 0);
    }
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Margin, theme::Margin, theme::Margin, theme::Margin);
    content->setSpacing(theme::Margin);
    content->addWidget(smuiCustInfo, 1);
    content->addWidget(SmartStatusBar);
    resize(startSize);
}

void frmBrowseForCust::bind() {
    KeyedItems& bar = Browser().SmartStatusBar;
    connect(&bar, &KeyedItems::dataChanged, this, &frmBrowseForCust::showRecordNumber);
    connect(&Browser(), &CustomerBrowser::RowMarked, smuiCustInfo, &KeyedPanel::setCurrentKey);
    const auto key = [this, &bar](const QKeySequence& keys, const char* item) {
        connect(new QShortcut(keys, this), &QShortcut::activated, &bar,
                [&bar, item] { bar.click(QString::fromLatin1(item)); });
    };
    key(QKeySequence(QStringLiteral("Alt+Left")), "PREVIOUS");
    key(QKeySequence(QStringLiteral("Alt+Right")), "NEXT");
    key(QKeySequence(Qt::Key_F3), "FIND");
    connect(new QShortcut(QKeySequence(QStringLiteral("Ctrl+F")), this), &QShortcut::activated,
            FINDWHAT, [this] { FINDWHAT->setFocus(); });
}

void frmBrowseForCust::showRecordNumber() {
    RECORDNUM->setText(Browser().SmartStatusBar.item(QStringLiteral("RECORDNUM")).caption);
}

/// Enter finds while a text is typed, presses the button that has the focus, and selects elsewhere.
void frmBrowseForCust::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (auto* button = qobject_cast<QAbstractButton*>(focusWidget()); enter && button)
        button->click();
    else if (enter)
        Browser().SmartStatusBar.click(FINDWHAT->hasFocus() ? QStringLiteral("FIND")
                                                            : QStringLiteral("SELECT"));
    else
        QDialog::keyPressEvent(event);
}

void frmBrowseForCust::reject() {
    ports.screens->unload(Screen::frmBrowseForCust);
}

} // namespace kelvrane
