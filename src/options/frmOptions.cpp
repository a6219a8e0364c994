#include "options/frmOptions.h"

#include "options/frmOptionsFields.h"
#include "options/options_model.h"
#include "options/program_options.h"
#include "widgets/captions.h"
#include "widgets/heading_line.h"
#include "widgets/item_mark.h"
#include "widgets/keyed_tool_bar.h"
#include "widgets/open_editor.h"
#include "widgets/quiet_label.h"
#include "widgets/tab_strip.h"
#include "widgets/theme.h"

#include <QGridLayout>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace kelvrane {

namespace {

constexpr QSize leastSize(560, 426);     // the first page stands whole on its usual width
constexpr int leastWidthOfColumns = 700; // below it, the groups stand in one
constexpr int widestText = 440;          // of a description
constexpr int widestForm = 860;          // of a page with captions and fields
constexpr int lineSpacing = 4;           // within a group
constexpr int fieldWidth = 140;          // of a short one
constexpr int captionPercent = 35;
constexpr int columnPercent[] = {45, 55};                    // of the page KELVRANE
constexpr int markInset = theme::Margin - ItemMarkFocusRoom; // marks stand under the headings

QString T(const char* text) {
    return QString::fromLatin1(text);
}

/// Captions stand under the headings, a little in from where the marks' focus ring begins.
QuietLabel* CreateCaption(const QString& text, QWidget* field, QWidget* parent) {
    auto* caption = new QuietLabel(ShownCaption(text), parent);
    caption->setContentsMargins(ItemMarkFocusRoom, 0, 0, 0);
    caption->setBuddy(field);
    return caption;
}

/// Captions on 35 percent of the width, fields on the rest.
QGridLayout* CreateForm(QWidget* form) {
    form->setMaximumWidth(widestForm);
    auto* grid = new QGridLayout(form);
    grid->setContentsMargins(markInset, theme::Margin, theme::Margin, theme::Step);
    grid->setHorizontalSpacing(theme::Margin);
    grid->setVerticalSpacing(theme::Step + 2);
    grid->setColumnStretch(0, captionPercent);
    grid->setColumnStretch(1, 100 - captionPercent);
    return grid;
}

void AddFormRow(QGridLayout* grid, KeyedItems* items, const QString& key, QWidget* form) {
    const int line = grid->rowCount();
    QWidget* field = CreateOptionControl(items, key, form);
    QuietLabel* caption = CreateCaption(items->item(key).caption, field, form);
    caption->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    caption->setMinimumWidth(caption->sizeHint().width());
    const bool wide = items->item(key).kind == ItemKind::Browse;
    if (!wide)
        field->setFixedWidth(std::max(fieldWidth, field->sizeHint().width()));
    grid->addWidget(caption, line, 0);
    grid->addWidget(field, line, 1, wide ? Qt::Alignment() : Qt::AlignLeft);
}

QWidget* CreatePanelForm(KeyedItems* items, const QString& name) {
    auto* form = new QWidget;
    form->setObjectName(name);
    QGridLayout* grid = CreateForm(form);
    for (const KeyedItem& item : items->items())
        AddFormRow(grid, items, item.key, form);
    return form;
}

} // namespace

frmOptions::frmOptions(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Program Options"));
    WireOptions();
    LoadOptions();
    arrange();
    bind();
    setMinimumSize(leastSize);
    resize(QSize(theme::FromTwips(Options().Width), theme::FromTwips(Options().Height))
               .boundedTo(screen()->availableSize()));
}

void frmOptions::arrange() {
    SmartTabStrip = new TabStrip(&Options().SmartTabStrip, this);
    SmartTabStrip->setObjectName(QStringLiteral("SmartTabStrip"));
    if (auto* pages = SmartTabStrip->findChild<QStackedWidget*>())
        pages->setObjectName(QStringLiteral("SmartUIContainer"));
    addPage(0, createKelvranePage());
    addPage(1, createSpreadSheetPage());
    addPage(2, createDatabasePage());
    addPage(3, createMiscPage());

    auto* smuiSelect = new KeyedToolBar(&Options().smuiSelect, this);
    smuiSelect->setObjectName(QStringLiteral("smuiSelect"));
    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Margin, theme::Margin, theme::Margin, theme::Step);
    content->setSpacing(theme::Step);
    content->addWidget(SmartTabStrip, 1);
    content->addWidget(smuiSelect);
}

void frmOptions::addPage(int place, QWidget* content) {
    const OptionPage& page = OptionPages()[place];
    auto* frame = new QScrollArea(SmartTabStrip);
    frame->setObjectName(T(page.frame));
    frame->setAccessibleName(T(page.caption));
    frame->setFrameShape(QFrame::NoFrame);
    frame->setWidgetResizable(true);
    frame->setFocusPolicy(Qt::NoFocus);
    auto* paper = new QWidget(frame);
    auto* layout = new QVBoxLayout(paper);
    layout->setContentsMargins(theme::Step, 0, theme::Step, 0);
    layout->addWidget(content);
    layout->addStretch(1);
    frame->setWidget(paper);
    // The strip paints the paper.
    frame->viewport()->setAutoFillBackground(false);
    paper->setAutoFillBackground(false);
    SmartTabStrip->bindPage(T(page.key), frame);
}

QWidget* frmOptions::createKelvranePage() {
    auto* page = new QWidget;
    columns = new QBoxLayout(QBoxLayout::LeftToRight, page);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(theme::Step);
    QVBoxLayout* stacks[std::size(columnPercent)];
    for (size_t column = 0; column < std::size(columnPercent); ++column) {
        stacks[column] = new QVBoxLayout;
        stacks[column]->setSpacing(theme::Margin - 2);
        columns->addLayout(stacks[column], columnPercent[column]);
    }
    for (const OptionGroup& group : OptionGroups())
        stacks[group.column]->addWidget(createGroup(group, page));
    for (QVBoxLayout* stack : stacks)
        stack->addStretch(1);
    return page;
}

QWidget* frmOptions::createGroup(const OptionGroup& group, QWidget* page) {
    auto* box = new QWidget(page);
    auto* content = new QVBoxLayout(box);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(lineSpacing);
    content->addWidget(new HeadingLine(T(group.heading), box));
    if (*group.description) {
        auto* text = new QuietLabel(T(group.description), box);
        text->setWordWrap(true);
        text->setMaximumWidth(widestText);
        text->setContentsMargins(theme::Margin, 0, theme::Margin, 0);
        content->addWidget(text);
    }
    OptionsModel& model = Options();
    QWidget* check = CreateOptionControl(&model.controls, T(group.control), box);
    auto* fields = new QGridLayout;
    fields->setContentsMargins(markInset, 0, theme::Margin, 0);
    fields->setHorizontalSpacing(theme::Margin);
    fields->setVerticalSpacing(lineSpacing);
    fields->setColumnStretch(1, 1);
    fields->addWidget(check, 0, 0, 1, 2);
    // The captions of all groups are as wide as the widest, so that the fields line up.
    const int captions = ItemMarkFocusRoom + fontMetrics().horizontalAdvance(T("Sound File:")) + 2;
    fields->setColumnMinimumWidth(0, captions);
    for (const OptionField& field : OptionFields()) {
        if (qstrcmp(field.control, group.control) != 0)
            continue;
        KeyedItems* items = &(model.*field.panel);
        const bool alone = items == &model.controls;
        QWidget* control = alone ? CreateOptionControl(items, T(field.name), box)
                                 : CreateOptionPanel(items, T(field.name), box);
        control->setAccessibleDescription(T(group.heading));
        const int line = fields->rowCount();
        QuietLabel* caption = CreateCaption(T(field.caption), control, box);
        fields->addWidget(caption, line, 0);
        fields->addWidget(control, line, 1, alone ? Qt::AlignLeft : Qt::Alignment());
    }
    content->addLayout(fields);
    return box;
}

QWidget* frmOptions::createSpreadSheetPage() {
    return CreatePanelForm(&Options().smuiSpreadSheet, QStringLiteral("smuiSpreadSheet"));
}

QWidget* frmOptions::createDatabasePage() {
    return CreatePanelForm(&Options().smuiDatabase, QStringLiteral("smuiDatabase"));
}

QWidget* frmOptions::createMiscPage() {
    auto* form = new QWidget;
    KeyedItems* controls = &Options().controls;
    QGridLayout* grid = CreateForm(form);
    AddFormRow(grid, controls, QStringLiteral("cboRecentProjects"), form);
    QWidget* tips = CreateOptionControl(controls, QStringLiteral("chkShowTips"), form);
    grid->addWidget(tips, grid->rowCount(), 0, 1, 2);
    return form;
}

void frmOptions::bind() {
    connect(&Options(), &OptionsModel::PageTurned, this, &frmOptions::turnTo);
}

void frmOptions::turnTo(const QString& page) {
    SmartTabStrip->setCurrent(page);
    for (const OptionPage& each : OptionPages()) {
        if (page != QLatin1String(each.key))
            continue;
        for (QWidget* control : findChild<QWidget*>(T(each.frame))->findChildren<QWidget*>())
            if (control->focusPolicy() & Qt::TabFocus && control->isEnabled()) {
                control->setFocus();
                return;
            }
    }
}

void frmOptions::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    Options().Loading = false;
}

void frmOptions::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    columns->setDirection(width() < leastWidthOfColumns ? QBoxLayout::TopToBottom
                                                        : QBoxLayout::LeftToRight);
    if (!isMaximized())
        KeepOptionsSize(int(theme::ToTwips(width())), int(theme::ToTwips(height())));
}

void frmOptions::reject() {
    CommitOpenEditor();
    Options().smuiSelect.click(QStringLiteral("CLOSE"));
}

} // namespace kelvrane
