// A database whose writer was ended in the middle of a change: it is as before or as after it, and
// the next backup and compaction go through.
#include "child.h"
#include "fault_shim.h"
#include "platform/connection.h"
#include "platform/database_file.h"
#include "platform/file_store.h"
#include "platform/recordset.h"
#include "support/temporary_folder.h"

namespace kelvrane::faults {
namespace {

class KilledWriter : public ::testing::Test {
  protected:
    KilledWriter() {
        files.create(target, {});
        Connection connection(target);
        connection.execute("CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT)");
        connection.execute("INSERT INTO T (Name) VALUES ('before')");
        connection.execute("INSERT INTO T (Name) VALUES ('before')");
    }
    ~KilledWriter() override { Disarm(); }

    void change() {
        Connection connection(target);
        connection.begin();
        for (const char* sql :
             {"UPDATE T SET Name = 'after' WHERE ID = 1", "DELETE FROM T WHERE ID = 2"})
            connection.execute(QLatin1String(sql));
        connection.commit();
    }
    void compact() {
        DatabaseCompaction compaction(files, target);
        compaction.settle();
        compaction.compactTo(temp);
        compaction.close();
        ReplaceDatabase(files, temp, target);
    }
    QString names() {
        Connection connection(target);
        Recordset rows(connection, "T");
        QStringList list;
        for (; !rows.atEnd(); rows.moveNext())
            list.append(rows.text("Name"));
        return list.join(' ');
    }

    TemporaryFolder folder;
    DiskFileStore files;
    const QString target = folder.path("x.mdb");
    const QString temp = folder.path("temp.mdb");
};

TEST_F(KilledWriter, LeavesNoJournalThatABackupStumblesOver) {
    const QByteArray before = files.read(target);
    int status = Killed;
    bool withJournal = false;
    bool withContents = false;
    for (long at = 1; status == Killed; ++at) {
        SCOPED_TRACE(at);
        ASSERT_LT(at, 100);
        files.create(target, before);
        status = RunInChild([&] {
            Arm({.root = folder.path().toStdString(), .at = at, .flushes = false});
            change();
        });
        ASSERT_TRUE(status == Killed || status == 0) << status;
        if (const QString journal = target + "-journal"; files.exists(journal)) {
            withJournal = true;
            withContents = withContents || !files.read(journal).isEmpty();
        }
        ASSERT_EQ(RunInChild([&] {
                      EXPECT_NO_THROW(compact());
                      const QString now = names();
                      EXPECT_TRUE(now == "before before" || now == "after") << now.toStdString();
                  }),
                  0);
        EXPECT_EQ(files.filesIn(folder.path()), QStringList{"x.mdb"});
    }
    EXPECT_TRUE(withJournal && withContents) << "the cases that matter came up";
    EXPECT_EQ(names(), "after");
}

} // namespace
} // namespace kelvrane::faults
