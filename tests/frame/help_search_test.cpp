#include "frame/help_search.h"

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

const QList<HelpText> pages = {
    {QUrl("a"), "Breaks", "Press Break, and the time until you press it again is kept apart."},
    {QUrl("b"), "The control screen",
     "Again a break and again a break. The C++ key, the word unbroken."},
    {QUrl("c"), "Invoices",
     QString("word ").repeated(40) + "Rates and discounts, Zo\u00eb's too. " +
         QString("word ").repeated(40)},
};

QString found(const QString& typed) {
    QStringList names;
    for (const HelpHit& hit : SearchHelp(pages, HelpSearchWords(typed)))
        names.append(hit.page.toString());
    return names.join(' ');
}

TEST(HelpSearch, FindsPagesThatHaveAllWordsByTheirBeginnings) {
    const struct {
        const char* typed;
        const char* pages;
    } cases[] = {
        {"break", "a b"},         // the title counts more than how often
        {"BREA", "a b"},          // any case, beginnings
        {"reak", ""},             // no ends of words
        {"again", "b a"},         // in no title, so how often counts
        {"control word", "b"},    // one in the title, one in the text
        {"break invoices", ""},   // all words
        {"\"rates\" (AND)", "c"}, // signs are none, "and" is a word
        {"zo\xc3\xab", "c"},      //
        {"c++", "b"},             //
        {"", ""},
        {" *\"", ""},
    };
    for (const auto& row : cases)
        EXPECT_EQ(found(row.typed), row.pages) << row.typed;
}

TEST(HelpSearch, ShowsWholeWordsAroundTheFirstPlace) {
    const auto words = [](const char* typed) {
        return SearchHelp(pages, HelpSearchWords(typed)).value(0).words;
    };
    EXPECT_EQ(words("breaks"), pages[0].text) << "found in the title: from the beginning";
    const QString around = words("discounts");
    EXPECT_TRUE(around.startsWith(QString(QChar(0x2026)) + "word ")) << around.toStdString();
    EXPECT_TRUE(around.endsWith(QString("word") + QChar(0x2026))) << around.toStdString();
    EXPECT_TRUE(around.contains("Rates and discounts"));
    const QList<HelpText> endless = {{QUrl("e"), "", QString(5000, 'x')}};
    EXPECT_LT(SearchHelp(endless, {"x"}).value(0).words.size(), 200);
}

} // namespace
} // namespace kelvrane
