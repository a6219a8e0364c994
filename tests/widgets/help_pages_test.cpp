// The help file that was built: nothing that the program or its tree names may be missing.
#include "frame/help_topics.h"
#include "support/built_files.h"
#include "support/fakes.h"
#include "widgets/help_library.h"

#include <QAbstractItemModel>
#include <QDir>
#include <QDirIterator>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

class HelpPages : public ProgramTest {
  protected:
    HelpPages() {
        QSignalSpy ready(&library, &HelpLibrary::contentsReady);
        if (library.contents()->rowCount() == 0)
            ready.wait();
    }
    void walkContents(const QModelIndex& parent, int& count) {
        const QAbstractItemModel& contents = *library.contents();
        for (int row = 0; row < contents.rowCount(parent); ++row) {
            const QModelIndex entry = contents.index(row, 0, parent);
            EXPECT_TRUE(library.has(library.contentsAddress(entry)))
                << entry.data().toString().toStdString();
            ++count;
            walkContents(entry, count);
        }
    }

    BuiltFiles built;
    HelpLibrary library;
};

TEST_F(HelpPages, EveryTopicHasItsPage) {
    for (int topic = 0; topic < 2000; ++topic)
        if (const QString page = HelpPage(topic); !page.isEmpty())
            EXPECT_FALSE(library.pageAddress(page).isEmpty()) << topic << ' ' << page.toStdString();
    EXPECT_TRUE(library.pageAddress("No_Such_Page.htm").isEmpty());
}

TEST_F(HelpPages, EveryFileOfTheHelpIsInside) {
    const QDir folder(QDir("resources/help").absolutePath()); // tests run in the source's root
    int files = 0;
    for (QDirIterator all(folder.path(), QDir::Files, QDirIterator::Subdirectories);
         all.hasNext();) {
        const QString name = folder.relativeFilePath(all.next());
        if (name.endsWith(".qhp"))
            continue;
        ++files;
        EXPECT_FALSE(library.pageAddress(name).isEmpty()) << name.toStdString();
    }
    EXPECT_GT(files, 20);
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
            EXPECT_TRUE(library.has(link.page)) << word.toStdString();
    }
}

} // namespace
} // namespace kelvrane::testing
