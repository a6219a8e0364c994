#include "worksheet/html_cell_value.h"

#include "worksheet/number_format.h"
#include "worksheet/relative_notation.h"
#include "worksheet/sheet_markup.h"
#include "worksheet/typed_value.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <charconv>
#include <cmath>

namespace kelvrane {

namespace {

std::optional<CellValue> numberOf(QByteArrayView text) {
    text = text.trimmed();
    double number = 0;
    const auto [end, fault] = std::from_chars(text.begin(), text.end(), number);
    if (fault != std::errc() || end != text.end() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::optional<CellValue> truthOf(QByteArrayView text) {
    if (text.compare("TRUE", Qt::CaseInsensitive) == 0 || text == "1")
        return CellValue(true);
    if (text.compare("FALSE", Qt::CaseInsensitive) == 0 || text == "0")
        return CellValue(false);
    return std::nullopt;
}

std::optional<CellValue> errorOf(QByteArrayView text) {
    CellError error{};
    if (!ParseCellError(QString::fromUtf8(text), error))
        return std::nullopt;
    return error;
}

void readX(CellSource& source, const HtmlTag& tag) {
    if (const auto error = tag.value("x:err"))
        source.value = errorOf(*error);
    else if (const auto truth = tag.value("x:bool"))
        source.value = truthOf(*truth);
    else if (const auto number = tag.value("x:num")) {
        source.value = numberOf(*number);
        source.isNumber = true;
    } else if (const auto text = tag.value("x:str")) {
        source.isText = true;
        if (const auto exact = tag.value("data-text"))
            source.value = TextOfExact(QString::fromUtf8(*exact));
        else if (!text->isEmpty())
            source.value = QString::fromUtf8(*text);
    }
}

/// "1033;0;0.00": a language, that of the format, the format. Formats of other languages than
/// English use other letters and marks; they are left out.
void readSdnum(CellSource& source, QByteArrayView sdnum) {
    constexpr int languageBits = 0x3ff;
    constexpr int english = 9;
    const qsizetype first = sdnum.indexOf(';');
    const qsizetype second = first < 0 ? -1 : sdnum.indexOf(';', first + 1);
    if (second < 0)
        return;
    int language = sdnum.sliced(first + 1, second - first - 1).toByteArray().toInt();
    if (language == 0)
        language = sdnum.first(first).toByteArray().toInt();
    if ((language & languageBits) == english)
        source.numberFormat = QString::fromUtf8(sdnum.sliced(second + 1));
}

void readSd(CellSource& source, const HtmlTag& tag) {
    if (const auto sdnum = tag.value("sdnum"))
        readSdnum(source, *sdnum);
    const bool isTruth = source.numberFormat == QLatin1String("BOOLEAN");
    if (isTruth)
        source.numberFormat.clear();
    const auto number = tag.value("sdval");
    if (!number || source.value || source.isText)
        return;
    source.value = isTruth ? truthOf(*number) : numberOf(*number);
}

QJsonObject objectOf(QByteArrayView json) {
    return QJsonDocument::fromJson(json.toByteArray()).object();
}

/// {"1":2,"2":"text"}: the kind, and the value under the kind's number.
void readData(CellSource& source, const HtmlTag& tag) {
    if (const auto json = tag.value("data-sheets-numberformat"))
        source.numberFormat = objectOf(*json).value(QLatin1String("2")).toString();
    const auto json = tag.value("data-sheets-value");
    if (!json || source.value || source.isText)
        return;
    const QJsonObject object = objectOf(*json);
    const int kind = object.value(QLatin1String("1")).toInt();
    const QJsonValue value = object.value(QString::number(kind));
    if (kind == 2)
        source.value = value.toString();
    else if (kind == 3)
        source.value = value.toDouble();
    else if (kind == 4)
        source.value = value.toInt() != 0;
}

void readFormula(CellSource& source, const HtmlTag& tag, CellAddress at) {
    if (const auto exact = tag.value("data-formula"))
        source.formula = TextOfExact(QString::fromUtf8(*exact));
    else if (const auto formula = tag.value("x:fmla"))
        source.formula = QString::fromUtf8(*formula);
    else if (const auto relative = tag.value("data-sheets-formula"))
        source.formula = FromRelativeNotation(QString::fromUtf8(*relative), at);
    if (!source.formula.startsWith(u'='))
        source.formula.clear();
}

CellValue typedValue(Cell& cell, const QString& text) {
    const TypedValue typed = ParseTyped(text);
    if (cell.style.numberFormat.isEmpty())
        cell.style.numberFormat = typed.format;
    return typed.value;
}

CellValue shownValue(Cell& cell, const CellSource& source, const QString& text, PlainCells plain) {
    if (source.isText)
        return text;
    if (text.isEmpty())
        return {};
    if (source.isNumber)
        if (const auto number = NumberOfText(text))
            return *number;
    if (plain == PlainCells::Text || IsTextFormat(cell.style.numberFormat))
        return text;
    return typedValue(cell, text);
}

} // namespace

CellSource CellSourceOf(const HtmlTag& tag, CellAddress at) {
    CellSource source;
    readX(source, tag);
    readSd(source, tag);
    readData(source, tag);
    readFormula(source, tag, at);
    return source;
}

void FillCell(Cell& cell, const CellSource& source, const QString& text, PlainCells plain) {
    if (cell.style.numberFormat.isEmpty() && source.numberFormat != QLatin1String("General"))
        cell.style.numberFormat = source.numberFormat;
    cell.formula = source.formula;
    cell.value = source.value ? *source.value : shownValue(cell, source, text, plain);
    // Programs that mark all numbers mark an error as 0.
    if (CellError error{}; plain == PlainCells::Text && ParseCellError(text, error))
        cell.value = error;
}

} // namespace kelvrane
