// The values of a column: as the database keeps them, as the program uses them, and as text.
// Dates are kept as ISO text, booleans as 0 and 1, numbers as numbers.
#pragma once

#include "platform/connection.h"

#include <QString>
#include <QVariant>

namespace kelvrane {

/// QString, qlonglong, double, bool or QDate by the column's type; null stays null, and what can't
/// be read as its type stays as it is kept.
QVariant FromStored(const Column& column, const QVariant& stored);

/// The form to keep. An empty text is null in all but text columns. Raises TypeMismatch for a value
/// that isn't of the column's type or a null that the column refuses, Overflow for an integer
/// outside 32 bits.
QVariant ToStored(const Column& column, const QVariant& value);

/// "" for null; dates as m/d/yyyy, booleans as "True" and "False".
QString StoredText(const Column& column, const QVariant& stored);

/// Whether the kept value equals a text: numbers, booleans and dates by value, texts byte for byte.
/// Made once and asked for many rows.
class TextMatcher {
  public:
    TextMatcher(const Column& column, const QString& text);
    bool operator()(const QVariant& stored) const;

  private:
    Column m_column;
    QString m_text;
    QVariant m_value; ///< invalid where the text isn't of the column's type
};

/// Below 0, 0, above 0. Null comes first; texts without regard to case, then exactly.
int CompareStored(const Column& column, const QVariant& left, const QVariant& right);

} // namespace kelvrane
