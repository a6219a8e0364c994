#include "timesheets/template_variables.h"

#include "platform/ports.h"
#include "platform/texts.h"

#include <QLocale>

#include <array>
#include <tuple>

namespace kelvrane {

namespace {

constexpr const char* reservedNames[] = {
    "#NAME#",      "#NUMBER#",   "#HOURS#",     "#TOTAL#",     "#DATE#",      "#YEAR#",
    "#WEEK#",      "#CUS_NAME#", "#CUS_TITLE#", "#CUS_ADDR1#", "#CUS_ADDR2#", "#CUS_CITY#",
    "#CUS_STATE#", "#CUS_ZIP#",  "#CUS_CSZ#",   "#RATE#",      "#ALIAS#",
};
constexpr const char* dayNames[] = {"Sun", "Mon", "Tues", "Wed", "Thur", "Fri", "Sat"};
constexpr const char* weekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};

/// In the order of anchor::Place.
constexpr const char* anchorNames[] = {"#NAME#", "#NUMBER#", "#HOURS#", "#VTOTAL#", "#HTOTAL#",
                                       "#DAY#",  "#NOTES#",  "#RATE#",  "#TOTAL#"};

constexpr std::array<qsizetype, 2> yearLengths = {4, 2};

struct DateForm {
    const char* picture; ///< QLocale's
    bool isRange;
    bool isUpper;
};
constexpr auto dateForms = std::to_array<DateForm>({
    {"MMM d", true, true},
    {"MMM d", true, false},
    {"M/d", true, false},
    {"MMMM d", false, true},
    {"MMMM d", false, false},
    {"M/d", false, false},
    {"MMM d, yyyy", true, true},
    {"MMMM d, yyyy", true, false},
    {"M/d/yyyy", true, false},
    {"M/d/yy", true, false},
});
constexpr auto monthForms = std::to_array<DateForm>({
    {"MMMM", false, false},
    {"MMMM", false, true},
    {"MMM", false, false},
    {"MMM", false, true},
});

struct CustomerVariable {
    const char* token;
    QString CustomerSheetFields::*field;
};
/// In the order of replacement: a field that holds a later variable is expanded in turn.
constexpr CustomerVariable customerVariables[] = {
    {"#COMPANY#", &CustomerSheetFields::Company},
    {"#TITLE#", &CustomerSheetFields::Title},
    {"#FIRSTNAME#", &CustomerSheetFields::FirstName},
    {"#LASTNAME#", &CustomerSheetFields::LastName},
    {"#ADDRESS1#", &CustomerSheetFields::Address1},
    {"#ADDRESS2#", &CustomerSheetFields::Address2},
    {"#CITY#", &CustomerSheetFields::City},
    {"#STATE#", &CustomerSheetFields::State},
    {"#ZIPCODE#", &CustomerSheetFields::ZipCode},
};

template <typename Texts, size_t size>
void fill(Texts& texts, const char* const (&names)[size]) {
    static_assert(std::tuple_size_v<Texts> == size);
    for (size_t place = 0; place < size; ++place)
        texts[place] = QString::fromLatin1(names[place]);
}

/// Fields that hold variables of their own could make a text grow without end.
void replaceAll(QString& text, const QString& token, const QString& replacement) {
    const qint64 growth = text.count(token) * (replacement.size() - token.size());
    if (growth > 0 && text.size() + growth > LongestCellText)
        Raise(errors::Overflow,
              QStringLiteral("The text of a cell becomes too long by %1").arg(token));
    text.replace(token, replacement);
}

/// "#DATE10#" of "DATE" and 10.
QString numbered(const char* word, int number) {
    return QStringLiteral("#%1%2#").arg(QLatin1String(word)).arg(number);
}

template <typename Forms, typename Format>
void replaceNumbered(QString& text, const char* word, const Forms& forms, Format&& format) {
    for (int number = 1; number <= int(forms.size()); ++number)
        if (const QString token = numbered(word, number); text.contains(token))
            replaceAll(text, token, format(number));
}

QDate startOf(const SheetPeriod& period) {
    const QDate start = DateFromText(period.startDate);
    if (!start.isValid())
        Raise(errors::TypeMismatch,
              QStringLiteral("'%1' is no date to start a sheet from").arg(period.startDate));
    return start;
}

QString formatted(QDate date, const DateForm& form) {
    const QString text = QLocale::c().toString(date, QLatin1String(form.picture));
    return form.isUpper ? text.toUpper() : text;
}

void tellMissing(const char* name) {
    MsgBox(QStringLiteral("TimeSheet can not be created without setting the %1 variable")
               .arg(QLatin1String(name)),
           QStringLiteral("Spreadsheet can not be calculated"));
}

bool isOnSheet(anchor::Place place) {
    return SSVariables[place].Row != -1;
}

} // namespace

void InitSpreadsheetTables() {
    for (size_t column = 0; column < ColumnLetters.size(); ++column)
        ColumnLetters[column] = QChar(u'A' + static_cast<char16_t>(column));
    fill(ReservedVariables, reservedNames);
    fill(ShortDayNames, dayNames);
}

void ResetSSVariables() {
    SSVariables = {};
    for (size_t place = 0; place < std::size(anchorNames); ++place)
        SSVariables[place].Name = QString::fromLatin1(anchorNames[place]);
    HasNumberColumn = true;
}

bool CheckProjectAnchors() {
    if (!isOnSheet(anchor::Name)) {
        tellMissing(anchorNames[anchor::Name]);
        return false;
    }
    HasNumberColumn = isOnSheet(anchor::Number);
    if (HasNumberColumn && !isOnSheet(anchor::Hours)) {
        tellMissing(anchorNames[anchor::Hours]);
        return false;
    }
    return true;
}

QString ExpandDateVariables(const QString& cellText, const SheetPeriod& period) {
    QString text = cellText;
    if (!text.contains(u'#'))
        return text;
    replaceAll(text, QStringLiteral("#WEEK#"), QString::number(period.week));
    replaceNumbered(text, "YEAR", yearLengths,
                    [&](int n) { return FormatYearVariable(period, n); });
    replaceNumbered(text, "DATE", dateForms, [&](int n) { return FormatDateRange(period, n); });
    replaceNumbered(text, "MONTH", monthForms,
                    [&](int n) { return FormatMonthVariable(period, n); });
    return text;
}

QString FormatDateRange(const SheetPeriod& period, int n) {
    const DateForm& form = At(dateForms, n - 1);
    QString left = formatted(startOf(period), form);
    QString right;
    if (form.isRange) {
        left += QStringLiteral(" - ");
        right = formatted(period.end, form);
    }
    return left + QLatin1Char(' ') + right;
}

QString FormatMonthVariable(const SheetPeriod& period, int n) {
    return formatted(startOf(period), At(monthForms, n - 1));
}

QString FormatYearVariable(const SheetPeriod& period, int n) {
    return period.startDate.right(At(yearLengths, n - 1));
}

QString ExpandCustomerVariables(const QString& cellText, const CustomerSheetFields& fields) {
    QString text = cellText;
    for (const CustomerVariable& variable : customerVariables)
        replaceAll(text, QString::fromLatin1(variable.token), fields.*variable.field);
    return text;
}

QString WeekdayNumberConvert(bool toNumber, const QString& value) {
    for (int number = 1; number <= int(std::size(weekdays)); ++number) {
        const QString name = QString::fromLatin1(weekdays[number - 1]);
        const QString digit = QString::number(number);
        if (value == (toNumber ? name : digit))
            return toNumber ? digit : name;
    }
    return {};
}

} // namespace kelvrane
