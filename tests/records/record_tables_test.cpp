#include "platform/error.h"
#include "records/record_fixture.h"
#include "support/raised_error.h"

namespace kelvrane::testing {
namespace {

class RecordTablesTest : public RecordTest {};

TEST_F(RecordTablesTest, EachOpenerHasItsOwnCursorAndGetsItBack) {
    for (const char* name : {"A", "B", "C"})
        AddProject(QString::fromLatin1(name));
    int count = 0;
    OpenProjectTable(QStringLiteral("Optimistic"), &count);
    EXPECT_EQ(count, 3);
    const OpenTable* manager = ProjectTable.get();
    ProjectRecords().setPosition(2);

    OpenProjectTable(QStringLiteral("ReadOnly"));
    ProjectRecords().find(QStringLiteral("Project_Name = 'C'"));
    EXPECT_EQ(RaisedError(
                  [] { ProjectRecords().setValue(QStringLiteral("Notes"), QStringLiteral("x")); }),
              errors::PermissionDenied);
    CloseProjectTable();
    EXPECT_EQ(ProjectRecords().text(project_column::Name), "B");
    EXPECT_TRUE(ProjectRecordsOpen);

    // The long holder goes first: the other opener's set stays in use.
    OpenProjectTable(QStringLiteral("ReadOnly"));
    ProjectRecords().moveLast();
    CloseProjectTable(manager);
    EXPECT_EQ(ProjectRecords().text(project_column::Name), "C");
    CloseProjectTable();
    EXPECT_FALSE(ProjectRecordsOpen);
    EXPECT_EQ(RaisedError([] { ProjectRecords(); }), errors::NoObject);
    CloseProjectTable();
}

TEST_F(RecordTablesTest, AFailedOpenLeavesTheFormerOpenerItsSet) {
    AddProject(QStringLiteral("A"));
    OpenProjectTable(QStringLiteral("Optimistic"));
    writeFile(QStringLiteral("rubbish.mdb"), "this is no database, but it is longer than a header");
    for (const QString& file : {QStringLiteral("absent.mdb"), QStringLiteral("rubbish.mdb")}) {
        ProjectDatabase = path(file);
        EXPECT_EQ(RaisedError([] { OpenProjectTable(QStringLiteral("ReadOnly")); }),
                  errors::DatabaseOpen)
            << file.toStdString();
        CloseProjectTable();
        EXPECT_EQ(ProjectRecords().text(project_column::Name), "A");
    }
    EXPECT_FALSE(disk.exists(path(QStringLiteral("absent.mdb"))));
}

} // namespace
} // namespace kelvrane::testing
