#include "frame/globals.h"
#include "frame/program_folder.h"
#include "platform/instance_lock.h"
#include "startup/day_claim.h"
#include "startup/open_folder.h"
#include "support/fakes.h"
#include "support/holding_process.h"

#include <sys/stat.h>

namespace kelvrane::testing {
namespace {

class Claim : public ProgramTest {
  protected:
    DayClaim claim(Command command) { return ClaimDay(lock, command); }
    const QString lockFile = path(QString::fromLatin1(files::Lock));
    InstanceLock lock{lockFile};
};

TEST_F(Claim, BesideALivingProcessOnlyOneKeepsTheDay) {
    const struct {
        Command command;
        DayClaim alone, beside;
    } rows[] = {
        {Command::None, DayClaim::Kept, DayClaim::AlreadyRunning},
        {Command::Debug, DayClaim::Kept, DayClaim::Beside},
        {Command::Broken, DayClaim::Kept, DayClaim::Beside},
        {Command::LoadViewer, DayClaim::NotNeeded, DayClaim::NotNeeded},
        {Command::ForceUpdate, DayClaim::NotNeeded, DayClaim::NotNeeded},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(claim(row.command), row.alone);
        EXPECT_EQ(KeepsDay, row.alone == DayClaim::Kept);
        lock.release();
        HoldingProcess other(lockFile);
        EXPECT_EQ(claim(row.command), row.beside);
        EXPECT_FALSE(KeepsDay);
    }
}

TEST_F(Claim, AnotherComputerIsAskedAboutAndNotStartingIsTheFirstAnswer) {
    const QByteArray named = "host: ada-laptop\nprocess: 17\nsince: 2026-03-01T18:30:00\n"
                             "machine: 00000000\n";
    writeFile("kelvrane.lock", named);
    dialogs.expect("'ada-laptop'", BoxAnswer::Cancel);
    EXPECT_EQ(claim(Command::Debug), DayClaim::Declined) << "nobody keeps the day for certain";
    dialogs.expect("'ada-laptop'", BoxAnswer::Cancel);
    EXPECT_EQ(claim(Command::None), DayClaim::Declined);
    EXPECT_FALSE(KeepsDay);
    EXPECT_EQ(fileBytes("kelvrane.lock"), named);
    EXPECT_TRUE(dialogs.shown.last().text.contains("since 3/1/2026, 6:30 PM"));
    EXPECT_EQ(dialogs.shown.last().captions, (QStringList{"Don't start", "Start all the same"}));
    dialogs.expect("'ada-laptop'", BoxAnswer::Ok);
    EXPECT_EQ(claim(Command::None), DayClaim::Kept);
    EXPECT_TRUE(KeepsDay);
    EXPECT_NE(fileBytes("kelvrane.lock"), named);
}

TEST_F(Claim, AFolderThatCannotBeWrittenToIsShownAndTheProgramRuns) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("kelvrane.lock"));
    dialogs.expect("It runs all the same");
    EXPECT_EQ(claim(Command::None), DayClaim::Kept);
    EXPECT_TRUE(KeepsDay);
    EXPECT_TRUE(dialogs.shown.last().text.contains("can't write to its folder"));
}

TEST_F(Claim, AFolderThatOthersCanEnterIsShownOnce) {
    const auto setMode = [this](mode_t mode) {
        ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), mode), 0);
    };
    ShowOpenFolder();
    setMode(0744); // the names can be read, nothing more
    ShowOpenFolder();
    for (const mode_t mode : {0750, 0701}) {
        installSettings();
        setMode(mode);
        dialogs.expect(folder.path());
        ShowOpenFolder();
        ShowOpenFolder();
        QFile::remove(path("settings.json"));
    }
    QDir(folder.path()).mkdir("moved");
    SetAppPath(path("moved"));
    ASSERT_EQ(::chmod(path("moved").toUtf8().constData(), 0755), 0);
    dialogs.expect(path("moved"));
    ShowOpenFolder();
    setMode(0700);
    QFile::remove(path("settings.json"));
    installSettings();
    ShowOpenFolder(); // nobody comes as far as the folder
}

} // namespace
} // namespace kelvrane::testing
