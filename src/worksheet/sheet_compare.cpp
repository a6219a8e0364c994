#include "worksheet/sheet_compare.h"

#include "platform/error.h"

namespace kelvrane {

namespace {

class LineReader {
  public:
    explicit LineReader(QStringView text) : m_rest(text) {}

    bool atEnd() const { return m_rest.isEmpty(); }
    /// Without its line end. Raises EndOfFile behind the last line.
    QStringView next() {
        if (atEnd())
            Raise(errors::EndOfFile);
        const qsizetype end = m_rest.indexOf(u'\n');
        QStringView line = end < 0 ? m_rest : m_rest.first(end);
        m_rest = end < 0 ? QStringView() : m_rest.sliced(end + 1);
        if (line.endsWith(u'\r'))
            line.chop(1);
        return line;
    }

  private:
    QStringView m_rest;
};

constexpr QStringView headBegins = u"<head>";
constexpr QStringView headEnds = u"</head>";
constexpr QStringView settingsEnd = u"</xml>";

void goToHead(LineReader& lines) {
    while (lines.next() != headBegins) {
    }
}

void goToCells(LineReader& lines) {
    while (!lines.next().startsWith(settingsEnd)) {
    }
}

bool headsDiffer(LineReader& a, LineReader& b) {
    QStringView lineA;
    QStringView lineB;
    while (lineA != headEnds && lineB != headEnds) {
        lineB = b.next();
        lineA = a.next();
        const bool areRules = lineA.startsWith(u'.') && lineB.startsWith(u'.');
        if (!areRules && lineA != lineB)
            return true;
    }
    return false;
}

/// The line without its class=, or what stands before that where no blank follows in either line.
QString withoutClass(QStringView line, qsizetype at, qsizetype blank, bool toTheEnd) {
    return toTheEnd ? line.first(at).toString() : line.first(at) + line.sliced(blank + 1);
}

bool cellsDiffer(QStringView a, QStringView b) {
    constexpr QStringView attribute = u"class=";
    const qsizetype classA = a.indexOf(attribute);
    const qsizetype classB = b.indexOf(attribute);
    if (classA < 0 || classB < 0)
        return a != b;
    const qsizetype blankA = a.indexOf(u' ', classA);
    const qsizetype blankB = b.indexOf(u' ', classB);
    const bool toTheEnd = blankA < 0 || blankB < 0;
    return withoutClass(a, classA, blankA, toTheEnd) != withoutClass(b, classB, blankB, toTheEnd);
}

} // namespace

bool SavedSheetsDiffer(const QString& saved, const QString& current) {
    LineReader a(saved);
    LineReader b(current);
    goToHead(a);
    goToHead(b);
    if (headsDiffer(a, b))
        return true;
    goToCells(a);
    goToCells(b);
    while (!a.atEnd() && !b.atEnd())
        if (cellsDiffer(a.next(), b.next()))
            return true;
    return false;
}

} // namespace kelvrane
