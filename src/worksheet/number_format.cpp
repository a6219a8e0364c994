#include "worksheet/number_format.h"

#include "worksheet/date_picture.h"
#include "worksheet/decimal_digits.h"
#include "worksheet/format_picture.h"

#include <array>
#include <cmath>

namespace kelvrane {

namespace {

using Kind = PictureToken::Kind;
using Sections = QList<PictureSection>;

constexpr int generalDigits = 10;
/// General writes whole numbers out to this many digits, and no more than nine zeros before the
/// first digit of a fraction.
constexpr int generalWholeDigits = DecimalDigits::Significant;
constexpr int generalLeastPower = -9;

struct NamedFormat {
    const char16_t* name;
    const char16_t* picture;
};
/// Names that saved sheets use in the place of pictures.
constexpr std::array<NamedFormat, 17> namedFormats = {{
    {u"General", u""},
    {u"General Number", u""},
    {u"Fixed", u"0.00"},
    {u"Standard", u"#,##0.00"},
    {u"Percent", u"0.00%"},
    {u"Scientific", u"0.00E+00"},
    {u"Currency", u"$#,##0.00_);[Red]($#,##0.00)"},
    {u"General Date", u"m/d/yyyy h:mm AM/PM"},
    {u"Short Date", u"m/d/yyyy"},
    {u"Medium Date", u"d-mmm-yy"},
    {u"Long Date", u"dddd, mmmm d, yyyy"},
    {u"Short Time", u"h:mm"},
    {u"Medium Time", u"h:mm AM/PM"},
    {u"Long Time", u"h:mm:ss AM/PM"},
    {u"Yes/No", u"\"Yes\";\"Yes\";\"No\""},
    {u"True/False", u"\"True\";\"True\";\"False\""},
    {u"On/Off", u"\"On\";\"On\";\"Off\""},
}};

/// Nothing for General and for what can't be read.
std::optional<Sections> sectionsOf(const QString& format) {
    QStringView picture = format;
    for (const NamedFormat& row : namedFormats)
        if (QStringView(row.name).compare(format, Qt::CaseInsensitive) == 0)
            picture = row.picture;
    if (picture.isEmpty())
        return {};
    return ReadPicture(picture);
}

/// The section for texts: the fourth, or a last one with "@".
const PictureSection* textSection(const Sections& sections) {
    const PictureSection& last = sections.last();
    return sections.size() == 4 || last.kind == PictureSection::Kind::Text ? &last : nullptr;
}

struct ChosenSection {
    const PictureSection* section = nullptr;
    bool holdsOnlyNegatives = false; ///< its own signs say so; no "-" is put before it
};

bool admitsAllPositives(const PictureSection& section) {
    if (!section.condition)
        return true;
    const PictureCondition& condition = *section.condition;
    return condition.comparison.startsWith(u'>') && condition.limit == 0;
}

/// Sections without a condition of their own mean, in their order: positive, negative, the rest.
ChosenSection sectionForNumber(const Sections& sections, double number) {
    const qsizetype count = sections.size() - (textSection(sections) ? 1 : 0);
    for (qsizetype i = 0; i < count; ++i) {
        const bool isLast = i == count - 1;
        PictureCondition condition{QStringLiteral(">"), 0};
        if (sections[i].condition)
            condition = *sections[i].condition;
        else if (i == 0 && count == 2)
            condition.comparison = QStringLiteral(">=");
        else if (i == 1)
            condition.comparison = QStringLiteral("<");

        const bool isRest = isLast && !sections[i].condition;
        if (isRest || condition.holds(number)) {
            const bool isBelowZero = isRest && i == 1 && admitsAllPositives(sections[0]);
            return {&sections[i], isBelowZero || (!isRest && condition.admitsOnlyNegatives())};
        }
    }
    return {};
}

QString exponentText(int exponent, QStringView sign, int digits) {
    const QString text = QString::number(std::abs(exponent)).rightJustified(digits, u'0');
    if (exponent < 0)
        return u"E-" + text;
    const QString letter = sign.endsWith(u'+') ? QStringLiteral("E+") : QStringLiteral("E");
    return letter + text;
}

/// All digits of the whole number, "0" for none, and so many decimals.
QString plainDigits(const DecimalDigits& digits, int decimals) {
    QString text;
    for (int power = qMax(digits.wholeDigits(), 1) - 1; power >= -decimals; --power) {
        if (power == -1)
            text += u'.';
        text += QLatin1Char(digits.at(power));
    }
    return text;
}

QString generalText(double number) {
    DecimalDigits digits(number);
    const bool isWholeNumber = digits.decimals() == 0;
    if (!isWholeNumber)
        digits.round(qMax(0, generalDigits - qMax(digits.wholeDigits(), generalLeastPower)));
    const int power = digits.wholeDigits() - 1;
    QString text;
    if (digits.isZero() || (power < generalWholeDigits && power >= generalLeastPower)) {
        text = plainDigits(digits, digits.decimals());
    } else {
        digits.shift(-power);
        digits.round(generalDigits - 1);
        const int carried = digits.wholeDigits() - 1;
        digits.shift(-carried);
        text = plainDigits(digits, digits.decimals()) + exponentText(power + carried, u"+", 2);
    }
    return number < 0 ? u'-' + text : text;
}

/// A number under a section: its digits on the way into the places.
class NumberText {
  public:
    NumberText(const PictureSection& section, double number);
    /// The section filled, with a "-" where the number is below zero and shows digits.
    QString text(bool showsSign) const;

  private:
    void takeExponent();
    bool dropsPoint() const;
    QString placeText(const PictureToken& token) const;
    QString decimalText(const PictureToken& token) const;
    /// The digit with the comma that follows it.
    QString wholeDigit(int power, QChar digit) const;
    QString excess(int lowest) const;

    const PictureSection& m_section;
    double m_number;
    DecimalDigits m_digits;
    int m_exponent = 0;
    int m_exponentPlaces = 0;
};

NumberText::NumberText(const PictureSection& section, double number)
    : m_section(section), m_number(number), m_digits(number) {
    m_digits.shift(section.shift);
    if (section.hasExponent)
        takeExponent();
    else
        m_digits.round(section.decimalPlaces);
    for (const PictureToken& token : section.tokens)
        if (token.kind == Kind::ExponentDigit)
            ++m_exponentPlaces;
}

/// The exponent is a multiple of the places before the point: "##0.0E+0" counts in thousands.
void NumberText::takeExponent() {
    const int step = qMax(1, m_section.wholePlaces);
    const auto stepFor = [&](int power) { return int(std::floor(double(power) / step)) * step; };
    if (m_digits.isZero())
        return;
    m_exponent = stepFor(m_digits.wholeDigits() - 1);
    m_digits.shift(-m_exponent);
    m_digits.round(m_section.decimalPlaces);
    const int carried = stepFor(m_digits.wholeDigits() - 1); // 9.99 became 10.0
    m_digits.shift(-carried);
    m_exponent += carried;
}

/// "#.##" shows a whole number without its point.
bool NumberText::dropsPoint() const {
    for (const PictureToken& token : m_section.tokens)
        if (token.kind == Kind::Digit && token.place < 0 && token.letter != u'#')
            return false;
    return m_section.decimalPlaces > 0 && m_digits.decimals() == 0;
}

QString NumberText::wholeDigit(int power, QChar digit) const {
    const bool isBeforeComma = m_section.groups && power > 0 && power % 3 == 0;
    if (!isBeforeComma)
        return digit;
    return QString(digit) + (digit == u' ' ? u' ' : u',');
}

/// The digits above a power, for which the picture has no places.
QString NumberText::excess(int lowest) const {
    QString text;
    for (int power = m_digits.wholeDigits() - 1; power >= lowest; --power)
        text += wholeDigit(power, QLatin1Char(m_digits.at(power)));
    return text;
}

QString NumberText::decimalText(const PictureToken& token) const {
    if (token.letter == u'0' || -token.place <= m_digits.decimals())
        return QString(QLatin1Char(m_digits.at(token.place)));
    return token.letter == u'?' ? QStringLiteral(" ") : QString();
}

QString NumberText::placeText(const PictureToken& token) const {
    if (token.place < 0)
        return decimalText(token);
    QString text;
    if (token.place == m_section.wholePlaces - 1)
        text = excess(token.place + 1);
    if (token.letter == u'0' || token.place < m_digits.wholeDigits())
        text += wholeDigit(token.place, QLatin1Char(m_digits.at(token.place)));
    else if (token.letter == u'?')
        text += wholeDigit(token.place, u' ');
    return text;
}

QString NumberText::text(bool showsSign) const {
    QString text;
    bool showsNumber = false; // and it isn't zero by now
    for (const PictureToken& token : m_section.tokens) {
        if (token.kind == Kind::Digit) {
            text += placeText(token);
            showsNumber = showsNumber || !m_digits.isZero();
        } else if (token.kind == Kind::Point) {
            if (m_section.wholePlaces == 0)
                text += excess(0);
            if (!dropsPoint())
                text += u'.';
            showsNumber = showsNumber || !m_digits.isZero();
        } else if (token.kind == Kind::Exponent) {
            text += exponentText(m_exponent, token.text, m_exponentPlaces);
        } else if (token.kind == Kind::General || token.kind == Kind::Text) {
            text += generalText(std::abs(m_number));
            showsNumber = showsNumber || m_number != 0;
        } else if (token.kind == Kind::Literal) {
            text += token.text;
        }
    }
    return showsSign && showsNumber ? u'-' + text : text;
}

QString numberUnderFormat(double number, const QString& format) {
    if (!std::isfinite(number))
        return CellErrorText(CellError::Number);
    const std::optional<Sections> sections = sectionsOf(format);
    if (!sections)
        return generalText(number);
    const auto [section, holdsOnlyNegatives] = sectionForNumber(*sections, number);
    if (!section)
        return generalText(number);
    if (section->kind == PictureSection::Kind::Date)
        return DatePictureText(*section, holdsOnlyNegatives ? -number : number);
    return NumberText(*section, number).text(number < 0 && !holdsOnlyNegatives);
}

QString textUnderFormat(const QString& text, const QString& format) {
    const std::optional<Sections> sections = sectionsOf(format);
    const PictureSection* section = sections ? textSection(*sections) : nullptr;
    if (!section)
        return text;
    QString shown;
    for (const PictureToken& token : section->tokens)
        shown += token.kind == Kind::Text || token.kind == Kind::General ? text : token.text;
    return shown;
}

} // namespace

QString FormatCellValue(const CellValue& value, const QString& format) {
    if (const double* number = std::get_if<double>(&value))
        return numberUnderFormat(*number, format);
    if (const QString* text = std::get_if<QString>(&value))
        return textUnderFormat(*text, format);
    if (const bool* truth = std::get_if<bool>(&value))
        return *truth ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    if (const CellError* error = std::get_if<CellError>(&value))
        return CellErrorText(*error);
    return {};
}

QString FormatColorName(const CellValue& value, const QString& format) {
    const std::optional<Sections> sections = sectionsOf(format);
    if (!sections)
        return {};
    const PictureSection* section = nullptr;
    if (const double* number = std::get_if<double>(&value))
        section = sectionForNumber(*sections, *number).section;
    else if (IsText(value))
        section = textSection(*sections);
    return section ? section->color : QString();
}

bool IsDateFormat(const QString& format) {
    const std::optional<Sections> sections = sectionsOf(format);
    return sections && sections->first().kind == PictureSection::Kind::Date;
}

bool IsTextFormat(const QString& format) {
    return format.trimmed() == u'@';
}

} // namespace kelvrane
