#include "platform/column_value.h"

#include "platform/error.h"
#include "platform/texts.h"

#include <QDate>

#include <cmath>
#include <limits>
#include <optional>

namespace kelvrane {

namespace {

constexpr int storedDateLength = 10; // a time behind the date doesn't count

std::optional<bool> booleanOf(const QString& text) {
    if (text.compare(u"True", Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(u"False", Qt::CaseInsensitive) == 0)
        return false;
    if (IsNumeric(text))
        return ToDouble(text) != 0;
    return std::nullopt;
}

bool isText(const QVariant& value) {
    return value.typeId() == QMetaType::QString;
}

double numberOf(const QVariant& value) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? 1 : 0;
    if (isText(value) || !value.canConvert<double>())
        return ToDouble(value.toString());
    return value.toDouble();
}

QVariant integerToStore(const QVariant& value) {
    const double number = std::nearbyint(numberOf(value));
    if (!(number >= std::numeric_limits<qint32>::min() &&
          number <= std::numeric_limits<qint32>::max()))
        Raise(errors::Overflow);
    return static_cast<qlonglong>(number);
}

QVariant booleanToStore(const QVariant& value) {
    const std::optional<bool> truth =
        isText(value) ? booleanOf(value.toString()) : std::optional(numberOf(value) != 0);
    if (!truth)
        Raise(errors::TypeMismatch);
    return static_cast<qlonglong>(*truth);
}

QVariant dateToStore(const QVariant& value) {
    const QDate date = isText(value) ? DateFromText(value.toString()) : value.toDate();
    if (!date.isValid())
        Raise(errors::TypeMismatch);
    return StoredDateText(date);
}

QString plainText(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return BooleanText(value.toBool());
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return DateText(value.toDate());
    case QMetaType::Double:
        return DoubleText(value.toDouble());
    case QMetaType::Float:
        return SingleText(value.toFloat());
    default:
        return value.toString();
    }
}

} // namespace

QVariant FromStored(const Column& column, const QVariant& stored) {
    if (stored.isNull())
        return {};
    switch (column.type) {
    case ColumnType::Text:
        return stored.toString();
    case ColumnType::Integer:
    case ColumnType::Number:
        if (isText(stored))
            return IsNumeric(stored.toString()) ? QVariant(ToDouble(stored.toString())) : stored;
        return column.type == ColumnType::Number ? QVariant(stored.toDouble()) : stored;
    case ColumnType::Boolean: {
        const std::optional<bool> truth = booleanOf(stored.toString());
        return truth ? QVariant(*truth) : stored;
    }
    case ColumnType::Date: {
        const QDate date = DateFromText(stored.toString().left(storedDateLength));
        return date.isValid() ? QVariant(date) : stored;
    }
    }
    return stored;
}

QVariant ToStored(const Column& column, const QVariant& value) {
    const bool emptyText = isText(value) && value.toString().isEmpty();
    if (value.isNull() || (emptyText && column.type != ColumnType::Text)) {
        if (!column.allowsNull)
            Raise(errors::TypeMismatch,
                  QStringLiteral("The field %1 can't be empty").arg(column.name));
        return {};
    }
    switch (column.type) {
    case ColumnType::Text:
        return plainText(value);
    case ColumnType::Integer:
        return integerToStore(value);
    case ColumnType::Number:
        return numberOf(value);
    case ColumnType::Boolean:
        return booleanToStore(value);
    case ColumnType::Date:
        return dateToStore(value);
    }
    return {};
}

QString StoredText(const Column& column, const QVariant& stored) {
    return stored.isNull() ? QString() : plainText(FromStored(column, stored));
}

TextMatcher::TextMatcher(const Column& column, const QString& text)
    : m_column(column), m_text(text) {
    switch (column.type) {
    case ColumnType::Text:
        break;
    case ColumnType::Integer:
    case ColumnType::Number:
        if (IsNumeric(text))
            m_value = ToDouble(text);
        break;
    case ColumnType::Boolean:
        if (const std::optional<bool> truth = booleanOf(text))
            m_value = *truth;
        break;
    case ColumnType::Date:
        if (const QDate date = DateFromText(text); date.isValid())
            m_value = date;
        break;
    }
}

bool TextMatcher::operator()(const QVariant& stored) const {
    if (m_column.type == ColumnType::Text)
        return stored.toString() == m_text;
    if (!m_value.isValid() || stored.isNull())
        return false;
    const QVariant held = FromStored(m_column, stored);
    if (m_value.typeId() == QMetaType::Double)
        return !isText(held) && held.toDouble() == m_value.toDouble();
    return held == m_value;
}

int CompareStored(const Column& column, const QVariant& left, const QVariant& right) {
    if (left.isNull() || right.isNull())
        return static_cast<int>(right.isNull()) - static_cast<int>(left.isNull());
    if (column.type == ColumnType::Integer || column.type == ColumnType::Number ||
        column.type == ColumnType::Boolean) {
        const double a = left.toDouble();
        const double b = right.toDouble();
        return static_cast<int>(a > b) - static_cast<int>(a < b);
    }
    const QString a = left.toString();
    const QString b = right.toString();
    const int folded = a.compare(b, Qt::CaseInsensitive);
    return folded != 0 ? folded : a.compare(b);
}

} // namespace kelvrane
