#include "widgets/format_bar.h"

#include "frame/error_report.h"
#include "widgets/flat_button.h"
#include "widgets/theme.h"
#include "worksheet/cell_text.h"
#include "worksheet/sheet_commands.h"

#include <QAbstractItemView>
#include <QColorDialog>
#include <QComboBox>
#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>

namespace kelvrane {

namespace {

constexpr int iconSide = 18;
constexpr int fontWidth = 140;
constexpr int sizeWidth = 62;
constexpr int formatWidth = 126;
constexpr int pointSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36, 48, 72};

/// The bar from left to right; "" begins another group.
constexpr const char* barRows[] = {
    "undo",  "redo", "",     "font",    "size",    "",     "bold",   "italic", "underline",
    "",      "ink",  "fill", "borders", "",        "left", "center", "right",  "",
    "merge", "wrap", "",     "format",  "autosum", "",     "help",   "about",
};

struct ColorRow {
    const char* name;
    QRgb color;
};
constexpr ColorRow colorRows[] = {
    {"Black", 0xff000000},      {"Dark Gray", 0xff3c4148},  {"Gray", 0xff808790},
    {"Light Gray", 0xffd9dde2}, {"Pale Gray", 0xfff2f4f6},  {"White", 0xffffffff},
    {"Dark Blue", 0xff1f4e8c},  {"Blue", 0xff3b78d8},       {"Pale Blue", 0xffe3edfa},
    {"Teal", 0xff14746f},       {"Green", 0xff2e9e5b},      {"Pale Green", 0xffe2f3e8},
    {"Amber", 0xffe0962e},      {"Pale Amber", 0xfffcf0dc}, {"Red", 0xffc8372d},
    {"Pale Red", 0xfff9e3e1},   {"Purple", 0xff6b4fa0},
};

QIcon Swatch(QRgb color) {
    QPixmap picture(iconSide, iconSide);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setPen(QColor(0x80, 0x87, 0x90));
    painter.setBrush(QColor::fromRgb(color));
    painter.drawRect(1, 1, iconSide - 3, iconSide - 3);
    return picture;
}

void ChooseFont(Spreadsheet& sheet, const CellRange& range, const QString& text) {
    SetFontFamily(sheet, range, text);
}
void ChooseSize(Spreadsheet& sheet, const CellRange& range, const QString& text) {
    SetPointSize(sheet, range, text.toDouble());
}
void ChooseFormat(Spreadsheet& sheet, const CellRange& range, const QString& text) {
    SetNumberFormat(sheet, range, text);
}

} // namespace

FormatBar::FormatBar(SheetSession* session, QWidget* parent) : QWidget(parent), m_session(session) {
    setAccessibleName(QStringLiteral("Format"));
    QWidget* group = addGroup();
    for (const char* key : barRows) {
        if (*key == '\0') {
            group = addGroup();
            continue;
        }
        const SheetAction& action = *ActionOf(QLatin1String(key));
        if (const QLatin1String name(key); name == QLatin1String("font"))
            addList(group, action, fontWidth, &ChooseFont);
        else if (name == QLatin1String("size"))
            addList(group, action, sizeWidth, &ChooseSize);
        else if (name == QLatin1String("format"))
            addList(group, action, formatWidth, &ChooseFormat);
        else
            addButton(group, action);
    }
    fillLists();
    fillColors(addMenu(*ActionOf(QLatin1String("ink"))), QStringLiteral("Automatic"), &SetInk);
    fillColors(addMenu(*ActionOf(QLatin1String("fill"))), QStringLiteral("No Fill"), &SetFill);
    fillBorders(addMenu(*ActionOf(QLatin1String("borders"))));

    const Worksheet* cells = &session->sheet().worksheet();
    connect(session, &SheetSession::SelectionChanged, this, &FormatBar::refresh);
    connect(cells, &Worksheet::Changed, this, &FormatBar::refresh);
    connect(&session->sheet(), &Spreadsheet::HistoryChanged, this, &FormatBar::refresh);
    refresh();
}

QWidget* FormatBar::addGroup() {
    auto* group = new QWidget(this);
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(1);
    m_groups.append(group);
    return group;
}

void FormatBar::addButton(QWidget* group, const SheetAction& action) {
    auto* button = new FlatButton(group);
    button->setObjectName(QLatin1String(action.key));
    button->setIcon(theme::Icon(QLatin1String(action.icon)));
    button->setIconSize({iconSide, iconSide});
    button->setWordShown(false);
    button->setCaption(QLatin1String(action.caption));
    button->setToolTip(ActionToolTip(action));
    button->setCheckable(action.isOn != nullptr);
    connect(button, &QAbstractButton::clicked, this,
            [this, &action] { emit actionWanted(action); });
    group->layout()->addWidget(button);
    m_buttons.insert(button->objectName(), button);
}

QComboBox* FormatBar::addList(QWidget* group, const SheetAction& action, int width, Choice choose) {
    auto* list = new QComboBox(group);
    list->setObjectName(QLatin1String(action.key));
    list->setAccessibleName(QLatin1String(action.caption));
    list->setToolTip(ActionToolTip(action));
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setCompleter(nullptr);
    list->setFixedWidth(width);
    list->setMaxVisibleItems(20);
    list->lineEdit()->setAccessibleName(list->accessibleName());
    const auto take = [this, list, choose] {
        const QString text = list->currentText().trimmed();
        run([&] {
            if (!text.isEmpty())
                choose(m_session->sheet(), m_session->selected(), text);
        });
    };
    connect(list, &QComboBox::activated, this, take);
    connect(list->lineEdit(), &QLineEdit::returnPressed, this, take);
    group->layout()->addWidget(list);
    m_lists.insert(list->objectName(), list);
    return list;
}

void FormatBar::fillLists() {
    m_lists[QStringLiteral("font")]->addItems(QFontDatabase::families());
    for (const int size : pointSizes)
        m_lists[QStringLiteral("size")]->addItem(QString::number(size));
    QComboBox* formats = m_lists[QStringLiteral("format")];
    for (const FormatChoice& choice : FormatChoices()) {
        const QString format = QLatin1String(choice.format);
        const QString caption = QLatin1String(choice.caption);
        formats->addItem(format);
        formats->setItemData(formats->count() - 1, caption, Qt::ToolTipRole);
    }
    formats->view()->setMinimumWidth(formatWidth);
}

QMenu* FormatBar::addMenu(const SheetAction& action) {
    auto* menu = new QMenu(this);
    menu->setObjectName(QLatin1String(action.key) + QLatin1String("_menu"));
    menu->setAccessibleName(QLatin1String(action.caption));
    return menu;
}

void FormatBar::fillColors(QMenu* menu, const QString& none,
                           void (*set)(Spreadsheet&, const CellRange&, QRgb)) {
    const auto take = [this, set](QRgb color) {
        run([&] { set(m_session->sheet(), m_session->selected(), color); });
    };
    menu->addAction(none, this, [take] { take(CellStyle::NoColor); });
    for (const ColorRow& row : colorRows)
        menu->addAction(Swatch(row.color), QLatin1String(row.name), this,
                        [take, &row] { take(row.color); });
    menu->addAction(QStringLiteral("&More Colors..."), this, [this, take] {
        const QColor color = QColorDialog::getColor(Qt::white, this);
        if (color.isValid())
            take(color.rgb());
    });
}

void FormatBar::fillBorders(QMenu* menu) {
    for (const BorderChoice& choice : BorderChoices())
        menu->addAction(
                QLatin1String(choice.caption), this,
                [this, &choice] {
                    run([&] { SetBorders(m_session->sheet(), m_session->selected(), choice); });
                })
            ->setObjectName(QLatin1String(choice.key));
    menu->addSeparator();
    QMenu* colors = menu->addMenu(QStringLiteral("Line &Color"));
    fillColors(colors, QStringLiteral("Automatic"),
               [](Spreadsheet& sheet, const CellRange& range, QRgb color) {
                   SetBorderColor(sheet, range, color == CellStyle::NoColor ? 0xff000000 : color);
               });
}

void FormatBar::run(const std::function<void()>& change) {
    Guarded(QStringLiteral("Format"), [&] {
        m_session->commit();
        change();
    });
    refresh();
    emit sheetWanted();
}

bool FormatBar::open(QLatin1String key) {
    if (QComboBox* list = m_lists.value(key)) {
        list->setFocus();
        list->lineEdit()->selectAll();
        return true;
    }
    auto* menu = findChild<QMenu*>(key + QLatin1String("_menu"));
    const FlatButton* button = m_buttons.value(key);
    if (!menu || !button)
        return false;
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
    return true;
}

void FormatBar::takeFocus() {
    m_lists[QStringLiteral("font")]->setFocus();
}

void FormatBar::refresh() {
    for (FlatButton* button : std::as_const(m_buttons)) {
        const SheetAction& action = *ActionOf(QLatin1String(button->objectName().toLatin1()));
        button->setEnabled(!action.isEnabled || action.isEnabled(*m_session));
        if (action.isOn)
            button->setChecked(action.isOn(*m_session));
    }
    const SheetContents& contents = m_session->contents();
    const CellStyle& style = m_session->sheet().worksheet().style(m_session->active());
    m_lists[QStringLiteral("font")]->setEditText(style.fontFamily.isEmpty() ? contents.fontFamily
                                                                            : style.fontFamily);
    m_lists[QStringLiteral("size")]->setEditText(QString::number(ShownPointSize(contents, style)));
    m_lists[QStringLiteral("format")]->setEditText(
        style.numberFormat.isEmpty() ? QStringLiteral("General") : style.numberFormat);
}

/// Groups go on to the next row as words do.
void FormatBar::placeGroups() {
    int x = theme::Step;
    int y = 3;
    int rowHeight = 0;
    for (QWidget* group : std::as_const(m_groups)) {
        const QSize size = group->sizeHint();
        if (x > theme::Step && x + size.width() + theme::Step > width()) {
            x = theme::Step;
            y += rowHeight + 2;
        }
        rowHeight = std::max(rowHeight, size.height());
        group->setGeometry(x, y, size.width(), rowHeight);
        x += size.width() + theme::Margin;
    }
    setFixedHeight(y + rowHeight + 3);
}

void FormatBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeGroups();
}

bool FormatBar::event(QEvent* event) {
    const bool taken = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange ||
        event->type() == QEvent::StyleChange || event->type() == QEvent::Polish)
        placeGroups();
    return taken;
}

} // namespace kelvrane
