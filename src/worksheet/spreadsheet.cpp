#include "worksheet/spreadsheet.h"

#include "platform/error.h"
#include "platform/ports.h"
#include "platform/texts.h"
#include "worksheet/number_format.h"
#include "worksheet/sheet_html.h"

#include <utility>

namespace kelvrane {

namespace {

constexpr qsizetype mostSteps = 200;

QString valueText(const CellValue& value, const CellStyle& style) {
    if (const double* number = std::get_if<double>(&value)) {
        const QDateTime moment =
            IsDateFormat(style.numberFormat) ? MomentOfSerial(*number) : QDateTime();
        return moment.isValid() && *number >= 1 ? DateText(moment.date()) : DoubleText(*number);
    }
    if (const bool* truth = std::get_if<bool>(&value))
        return BooleanText(*truth);
    return FormatCellValue(value, {});
}

} // namespace

QString SheetRange::Value() const {
    const Worksheet& sheet = m_sheet->worksheet();
    return valueText(sheet.value(m_range.first), sheet.style(m_range.first));
}

void SheetRange::setValue(const QString& text) const {
    Worksheet& sheet = m_sheet->worksheet();
    const Worksheet::Changes changes(sheet);
    for (int row = m_range.first.row; row <= m_range.last.row; ++row)
        for (int column = m_range.first.column; column <= m_range.last.column; ++column) {
            const CellAddress cell{row, column};
            const Cell held = sheet.contents().cells.value(cell);
            if (!held.formula.isEmpty() || valueText(held.value, held.style) != text)
                sheet.enter(cell, text);
        }
}

void SheetRange::setValue(double number) const {
    Worksheet& sheet = m_sheet->worksheet();
    const Worksheet::Changes changes(sheet);
    for (int row = m_range.first.row; row <= m_range.last.row; ++row)
        for (int column = m_range.first.column; column <= m_range.last.column; ++column)
            sheet.setValue({row, column}, number);
}

QString SheetRange::Formula() const {
    const Cell held = m_sheet->worksheet().contents().cells.value(m_range.first);
    return held.formula.isEmpty() ? valueText(held.value, held.style) : held.formula;
}

void SheetRange::setFormula(const QString& formula) const {
    Worksheet& sheet = m_sheet->worksheet();
    const Worksheet::Changes changes(sheet);
    for (int row = m_range.first.row; row <= m_range.last.row; ++row)
        for (int column = m_range.first.column; column <= m_range.last.column; ++column)
            sheet.enter({row, column}, ShiftedFormula(formula, row - m_range.first.row,
                                                      column - m_range.first.column));
}

void SheetRange::setNumberFormat(const QString& format) const {
    m_sheet->worksheet().changeStyle(m_range, [&](CellStyle& style) {
        style.numberFormat = format == u"General" ? QString() : format;
    });
}

QString SheetRange::NumberFormat() const {
    const QString format = m_sheet->worksheet().style(m_range.first).numberFormat;
    return format.isEmpty() ? QStringLiteral("General") : format;
}

void SheetRange::setHorizontalAlignment(int alignment) const {
    m_sheet->worksheet().changeStyle(m_range, [&](CellStyle& style) {
        style.horizontal = alignment == Center ? HorizontalAlign::Center : HorizontalAlign::General;
    });
}

Spreadsheet::Spreadsheet(QObject* parent) : QObject(parent) {}

SheetRange Spreadsheet::Range(const QString& name) {
    const auto range = ParseRange(name);
    if (!range)
        Raise(errors::BadArgument, QStringLiteral("There is no cell '%1'").arg(name));
    return {this, *range};
}

void Spreadsheet::setHTMLURL(const QString& path) {
    load(ReadSheetHtml(ports.files->read(path)));
}

QString Spreadsheet::HTMLData() const {
    return WriteSheetHtml(m_worksheet.contents());
}

void Spreadsheet::setHTMLData(const QString& text) {
    load(text.isEmpty() ? SheetContents() : ReadSheetHtml(text.toUtf8()));
}

void Spreadsheet::setViewableRange(const QString& rows) {
    const QStringList parts = rows.split(QLatin1Char(':'));
    const int last = parts.size() == 2 && parts[0] == u"1" ? parts[1].toInt() : 0;
    if (last < 1 || last > SheetRows)
        Raise(errors::BadArgument, QStringLiteral("'%1' are no rows").arg(rows));
    m_viewableRows = last;
}

void Spreadsheet::edit(const std::function<void(Worksheet&)>& change) {
    const SheetContents before = m_worksheet.contents();
    try {
        const Worksheet::Changes changes(m_worksheet);
        change(m_worksheet);
    } catch (...) {
        m_worksheet.setContents(before);
        throw;
    }
    if (m_worksheet.contents() == before)
        return;
    m_steps.resize(m_steps.size() - std::exchange(m_undone, 0));
    m_steps.append({before, m_worksheet.contents()});
    if (m_steps.size() > mostSteps)
        m_steps.removeFirst();
    emit HistoryChanged();
    emit Edited();
}

void Spreadsheet::undo() {
    if (!canUndo())
        return;
    ++m_undone;
    m_worksheet.setContents(m_steps[m_steps.size() - m_undone].before);
    emit HistoryChanged();
    emit Edited();
}

void Spreadsheet::redo() {
    if (!canRedo())
        return;
    m_worksheet.setContents(m_steps[m_steps.size() - m_undone].after);
    --m_undone;
    emit HistoryChanged();
    emit Edited();
}

/// What a program or a file put on the sheet isn't the user's to undo.
void Spreadsheet::load(const SheetContents& contents) {
    m_steps.clear();
    m_undone = 0;
    m_worksheet.setContents(contents);
    emit HistoryChanged();
}

} // namespace kelvrane
