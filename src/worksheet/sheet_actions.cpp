#include "worksheet/sheet_actions.h"

#include "worksheet/sheet_commands.h"

#include <algorithm>

namespace kelvrane {

namespace {

template <Toggle toggle>
void RunToggle(SheetSession& session) {
    ToggleFormat(session.sheet(), session.selected(), toggle);
}
template <Toggle toggle>
bool IsToggled(const SheetSession& session) {
    return IsOn(session.sheet().worksheet().style(session.active()), toggle);
}

template <HorizontalAlign align>
void RunAlign(SheetSession& session) {
    ToggleAlign(session.sheet(), session.selected(), align);
}
template <HorizontalAlign align>
bool IsAligned(const SheetSession& session) {
    return session.sheet().worksheet().style(session.active()).horizontal == align;
}

template <VerticalAlign align>
void RunVertical(SheetSession& session) {
    SetVerticalAlign(session.sheet(), session.selected(), align);
}
template <VerticalAlign align>
bool IsVertical(const SheetSession& session) {
    return session.sheet().worksheet().style(session.active()).vertical == align;
}

/// What changes the selected range and nothing else.
template <void (*change)(Spreadsheet&, const CellRange&)>
void RunOnRange(SheetSession& session) {
    change(session.sheet(), session.selected());
}

bool IsMerged(const SheetSession& session) {
    const CellRange span = session.contents().spanAt(session.active());
    return span.first != span.last;
}
bool CanMerge(const SheetSession& session) {
    const CellRange range = session.selected();
    return range.first != range.last;
}

/// Where there is nothing to add up, the formula is begun for the user to go on.
void RunAutoSum(SheetSession& session) {
    const QList<CellAddress> written = AutoSum(session.sheet(), session.selected());
    if (written.isEmpty())
        session.beginEdit(EditMode::InPlace, QStringLiteral("=SUM("));
    else if (!session.selected().contains(written.first()))
        session.select(RangeBetween(written.first(), written.last()));
}

constexpr int hidden = 0;
constexpr int sizeStep = 6; ///< CSS pixels a key

template <int step>
void RunWiden(SheetSession& session) {
    const CellRange range = session.selected();
    const int width = ShownWidth(session.contents(), range.last.column) + step;
    SetColumnWidths(session.sheet(), range, std::max(sizeStep, width));
}
template <int step>
void RunHeighten(SheetSession& session) {
    const CellRange range = session.selected();
    const int height = ShownHeight(session.shown(), range.last.row) + step;
    SetRowHeights(session.sheet(), range, std::max(sizeStep, height));
}

constexpr SheetAction actions[] = {
    {"undo", "Undo", "undo", "Ctrl+Z", [](SheetSession& session) { session.sheet().undo(); },
     nullptr, [](const SheetSession& session) { return session.sheet().canUndo(); }},
    {"redo", "Redo", "redo", "Ctrl+Y Ctrl+Shift+Z",
     [](SheetSession& session) { session.sheet().redo(); }, nullptr,
     [](const SheetSession& session) { return session.sheet().canRedo(); }},
    {"cut", "Cut", "", "Ctrl+X Shift+Del"},
    {"copy", "Copy", "", "Ctrl+C Ctrl+Ins"},
    {"paste", "Paste", "", "Ctrl+V Shift+Ins"},
    {"font", "Font", "", "Ctrl+Shift+F"},
    {"size", "Font Size", "", "Ctrl+Shift+P"},
    {"bold", "Bold", "bold", "Ctrl+B", RunToggle<Toggle::Bold>, IsToggled<Toggle::Bold>},
    {"italic", "Italic", "italic", "Ctrl+I", RunToggle<Toggle::Italic>, IsToggled<Toggle::Italic>},
    {"underline", "Underline", "underline", "Ctrl+U", RunToggle<Toggle::Underline>,
     IsToggled<Toggle::Underline>},
    {"ink", "Text Color", "textcolor", "Ctrl+Shift+T"},
    {"fill", "Fill Color", "fillcolor", "Ctrl+Shift+H"},
    {"borders", "Borders", "borders", "Ctrl+Shift+O"},
    {"left", "Align Left", "alignleft", "Ctrl+Shift+L", RunAlign<HorizontalAlign::Left>,
     IsAligned<HorizontalAlign::Left>},
    {"center", "Center", "aligncenter", "Ctrl+Shift+E", RunAlign<HorizontalAlign::Center>,
     IsAligned<HorizontalAlign::Center>},
    {"right", "Align Right", "alignright", "Ctrl+Shift+R", RunAlign<HorizontalAlign::Right>,
     IsAligned<HorizontalAlign::Right>},
    {"top", "Align Top", "", "", RunVertical<VerticalAlign::Top>, IsVertical<VerticalAlign::Top>},
    {"middle", "Align Middle", "", "", RunVertical<VerticalAlign::Middle>,
     IsVertical<VerticalAlign::Middle>},
    {"bottom", "Align Bottom", "", "", RunVertical<VerticalAlign::Bottom>,
     IsVertical<VerticalAlign::Bottom>},
    {"merge", "Merge Cells", "merge", "Ctrl+Shift+M", RunOnRange<ToggleMerge>, IsMerged, CanMerge},
    {"wrap", "Wrap Text", "wraptext", "Ctrl+Shift+W", RunToggle<Toggle::Wrap>,
     IsToggled<Toggle::Wrap>},
    {"format", "Number Format", "", "Ctrl+Shift+N"},
    {"autosum", "AutoSum", "autosum", "Alt+=", RunAutoSum},
    {"clear", "Clear Contents", "", "Del", RunOnRange<ClearValues>},
    {"clear_all", "Clear Contents and Formats", "", "Ctrl+Shift+Del", RunOnRange<ClearAll>},
    {"insert_rows", "Insert Rows", "", "", RunOnRange<InsertRows>},
    {"delete_rows", "Delete Rows", "", "", RunOnRange<DeleteRows>},
    {"fit_rows", "Fit Height", "", "", RunOnRange<FitRows>},
    {"hide_rows", "Hide Rows", "", "",
     [](SheetSession& session) { SetRowHeights(session.sheet(), session.selected(), hidden); }},
    {"show_rows", "Show Rows", "", "", RunOnRange<ShowRows>},
    {"insert_columns", "Insert Columns", "", "", RunOnRange<InsertColumns>},
    {"delete_columns", "Delete Columns", "", "", RunOnRange<DeleteColumns>},
    {"fit_columns", "Fit Width", "", "", RunOnRange<FitColumns>},
    {"hide_columns", "Hide Columns", "", "",
     [](SheetSession& session) { SetColumnWidths(session.sheet(), session.selected(), hidden); }},
    {"show_columns", "Show Columns", "", "", RunOnRange<ShowColumns>},
    {"wider", "Wider", "", "Alt+Right", RunWiden<sizeStep>},
    {"narrower", "Narrower", "", "Alt+Left", RunWiden<-sizeStep>},
    {"higher", "Higher", "", "Alt+Down", RunHeighten<sizeStep>},
    {"lower", "Lower", "", "Alt+Up", RunHeighten<-sizeStep>},
    {"select_all", "Select All", "", "Ctrl+A", [](SheetSession& session) { session.selectAll(); }},
    {"select_rows", "Select Rows", "", "Shift+Space",
     [](SheetSession& session) {
         session.selectRows(session.selected().first.row, session.selected().last.row);
     }},
    {"select_columns", "Select Columns", "", "Ctrl+Space",
     [](SheetSession& session) {
         session.selectColumns(session.selected().first.column, session.selected().last.column);
     }},
    {"edit", "Edit Cell", "", "F2",
     [](SheetSession& session) { session.beginEdit(EditMode::InPlace); }},
    {"go_to", "Go To", "", "F5 Ctrl+G"},
    {"help", "Help", "help", "F1"},
    {"about", "About", "about", ""},
};

} // namespace

std::span<const SheetAction> SheetActions() {
    return actions;
}

const SheetAction* ActionOf(QLatin1String key) {
    const auto* found = std::ranges::find_if(
        actions, [key](const SheetAction& action) { return QLatin1String(action.key) == key; });
    return found == std::end(actions) ? nullptr : found;
}

const SheetAction* ActionForKeys(const QKeySequence& keys) {
    if (keys.isEmpty())
        return nullptr;
    const QString asked = keys.toString(QKeySequence::PortableText);
    const auto* found = std::ranges::find_if(actions, [&](const SheetAction& action) {
        return QString::fromLatin1(action.keys).split(QLatin1Char(' ')).contains(asked);
    });
    return found == std::end(actions) ? nullptr : found;
}

QString ActionToolTip(const SheetAction& action) {
    const QString caption = QString::fromLatin1(action.caption);
    const QString keys = QString::fromLatin1(action.keys).section(QLatin1Char(' '), 0, 0);
    return keys.isEmpty()
               ? caption
               : caption + QStringLiteral(" (") +
                     QKeySequence(keys).toString(QKeySequence::NativeText) + QLatin1Char(')');
}

} // namespace kelvrane
