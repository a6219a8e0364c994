// The help file that was built: nothing that the program or a page points at may be missing.
#include "frame/help_file.h"
#include "frame/help_topics.h"
#include "support/built_files.h"
#include "support/fakes.h"
#include "widgets/help_library.h"

#include <QAbstractItemModel>
#include <QHelpEngineCore>
#include <QImage>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QUrl>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

class HelpPages : public ProgramTest {
  protected:
    HelpPages() {
        QSignalSpy ready(&library, &HelpLibrary::contentsReady);
        if (library.contents()->rowCount() == 0)
            ready.wait();
        QHelpEngineCore engine(HelpCollectionPath());
        engine.setReadOnly(true);
        engine.setupData();
        for (const QUrl& file : engine.files("brindlemoor-ware.kelvrane", QString(), "htm"))
            pages.append(file);
    }
    static QStringList captured(const QByteArray& page, const char* pattern) {
        QStringList found;
        const QRegularExpression expression(pattern, QRegularExpression::CaseInsensitiveOption);
        for (auto each = expression.globalMatch(QString::fromUtf8(page)); each.hasNext();)
            found.append(each.next().captured(1));
        return found;
    }
    /// "" when the address can be shown, else what is wrong with it.
    QString faultOf(const QUrl& address) {
        const QByteArray page = library.data(address);
        if (page.isEmpty())
            return "no such page: " + address.toString();
        if (!address.hasFragment())
            return {};
        const QStringList places = captured(page, "\\b(?:name|id)=\"([^\"]*)\"");
        return places.contains(address.fragment()) ? QString()
                                                   : "no such place: " + address.toString();
    }
    void walkContents(const QModelIndex& parent, int& count) {
        const QAbstractItemModel& contents = *library.contents();
        for (int row = 0; row < contents.rowCount(parent); ++row) {
            const QModelIndex entry = contents.index(row, 0, parent);
            EXPECT_EQ(faultOf(library.contentsAddress(entry)), "");
            ++count;
            walkContents(entry, count);
        }
    }

    BuiltFiles built;
    HelpLibrary library;
    QList<QUrl> pages;
};

TEST_F(HelpPages, EveryTopicHasItsPage) {
    for (int topic = 0; topic < 2000; ++topic)
        if (const QString page = HelpPage(topic); !page.isEmpty())
            EXPECT_FALSE(library.pageAddress(page).isEmpty()) << topic << ' ' << page.toStdString();
    EXPECT_TRUE(library.pageAddress("No_Such_Page.htm").isEmpty());
}

TEST_F(HelpPages, EveryLinkAndPictureLeadsSomewhereAndEveryPageHasATitle) {
    ASSERT_GT(pages.size(), 20);
    for (const QUrl& page : std::as_const(pages)) {
        SCOPED_TRACE(page.path().toStdString());
        const QByteArray text = library.data(page);
        EXPECT_EQ(captured(text, "<title>([^<]+)</title>").size(), 1);
        for (const QString& link : captured(text, "\\bhref=\"([^\"]*)\""))
            if (const QUrl address = page.resolved(QUrl(link)); address.scheme() == u"qthelp")
                EXPECT_EQ(faultOf(address), "");
            else
                EXPECT_TRUE(address.scheme() == u"http" || address.scheme() == u"https")
                    << link.toStdString();
        for (const QString& picture : captured(text, "<img[^>]*\\bsrc=\"([^\"]*)\""))
            EXPECT_FALSE(QImage::fromData(library.data(page.resolved(QUrl(picture)))).isNull())
                << picture.toStdString();
    }
}

TEST_F(HelpPages, ContentsAndIndexPointAtPages) {
    int entries = 0;
    walkContents({}, entries);
    EXPECT_GT(entries, 20);
    EXPECT_EQ(library.contentsPage().fileName(), "index.htm");
    const QAbstractItemModel& index = *library.index();
    QSignalSpy filled(&index, &QAbstractItemModel::modelReset);
    if (index.rowCount() == 0)
        filled.wait();
    EXPECT_GT(index.rowCount(), 1);
    for (int row = 0; row < index.rowCount(); ++row) {
        const QString word = index.index(row, 0).data().toString();
        const QList<HelpLink> links = library.pagesOf(word);
        EXPECT_FALSE(links.isEmpty()) << word.toStdString();
        for (const HelpLink& link : links)
            EXPECT_EQ(faultOf(link.page), "") << word.toStdString();
    }
}

} // namespace
} // namespace kelvrane::testing
