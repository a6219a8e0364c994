#include "frame/help_search.h"

#include <QRegularExpression>

#include <algorithm>

namespace kelvrane {

namespace {

constexpr qsizetype wordsBefore = 30, wordsLength = 120; // characters

/// Position of the next word that begins so; -1 for none.
qsizetype nextPlace(const QString& text, const QString& word, qsizetype from) {
    for (qsizetype place = from; (place = text.indexOf(word, place, Qt::CaseInsensitive)) >= 0;
         ++place)
        if (place == 0 || !text[place - 1].isLetterOrNumber())
            return place;
    return -1;
}

int countOf(const QString& text, const QString& word) {
    int count = 0;
    for (qsizetype place = -1; (place = nextPlace(text, word, place + 1)) >= 0;)
        ++count;
    return count;
}

/// Whole words around a place.
QString wordsAround(const QString& text, qsizetype place) {
    qsizetype begin = 0;
    if (place > wordsBefore)
        begin = text.indexOf(u' ', place - wordsBefore) + 1;
    begin = std::min(begin, place);
    QString words = text.mid(begin, wordsLength);
    if (begin + words.size() < text.size()) {
        words.truncate(std::max(words.lastIndexOf(u' '), place - begin));
        words += QChar(0x2026);
    }
    return begin > 0 ? QString(QChar(0x2026) + words) : words;
}

struct Ranked {
    HelpHit hit;
    int inTitle = 0;
    int inText = 0;
};

/// False when a word is missing.
bool rank(const HelpText& page, const QStringList& words, Ranked& ranked) {
    qsizetype first = -1;
    for (const QString& word : words) {
        const bool inTitle = nextPlace(page.title, word, 0) >= 0;
        const int inText = countOf(page.text, word);
        if (!inTitle && inText == 0)
            return false;
        ranked.inTitle += inTitle;
        ranked.inText += inText;
        const qsizetype place = nextPlace(page.text, word, 0);
        if (place >= 0 && (first < 0 || place < first))
            first = place;
    }
    ranked.hit = {page.page, page.title, wordsAround(page.text, std::max<qsizetype>(first, 0))};
    return true;
}

} // namespace

QStringList HelpSearchWords(const QString& typed) {
    static const QRegularExpression signs(QStringLiteral("[^\\w]+"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    return typed.split(signs, Qt::SkipEmptyParts);
}

QList<HelpHit> SearchHelp(const QList<HelpText>& pages, const QStringList& words) {
    if (words.isEmpty())
        return {};
    QList<Ranked> found;
    for (const HelpText& page : pages)
        if (Ranked ranked; rank(page, words, ranked))
            found.append(ranked);
    std::ranges::stable_sort(found, [](const Ranked& first, const Ranked& second) {
        return std::pair(first.inTitle, first.inText) > std::pair(second.inTitle, second.inText);
    });
    QList<HelpHit> hits;
    for (const Ranked& ranked : std::as_const(found))
        hits.append(ranked.hit);
    return hits;
}

} // namespace kelvrane
