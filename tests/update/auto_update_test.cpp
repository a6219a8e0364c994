// The update's rules, on a network that answers from a table.
#include "frame/program_folder.h"
#include "frame/settings.h"
#include "support/working_day_fixture.h"
#include "update/auto_update.h"
#include "update/download.h"
#include "update/internet_texts.h"
#include "update/transfer_status.h"
#include "update/version_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace kelvrane {
namespace {

class Update : public testing::WorkingDayTest {
  protected:
    Update() {
        CurrentTransfer() = {};
        for (const auto& [name, value] : {std::pair{"Version", "1.2.3"},
                                          {"UpdateWebHost", "updates.example"},
                                          {"UpdateFtpHost", "files.example"}})
            RegSetKeyValue(keys::Main, name, QString(value));
    }
    void offer(const QByteArray& file) { internet.replies[web + "kelvrane_version.txt"] = {file}; }
    /// 1.3.0 with a data file and this installer.
    void offerUpdate(const QByteArray& installer = "#!/bin/sh\n") {
        offer("VERSION:1.3.0\nNAME:data.zip;setup.run\n");
        internet.replies[ftp + "data.zip"] = {"data"};
        internet.replies[ftp + "setup.run"] = {installer};
    }
    /// What every road that installs nothing leaves: no file, nothing started, a program that runs.
    void expectNothingInstalled() {
        EXPECT_FALSE(QFile::exists(path("update")));
        EXPECT_TRUE(QDir(folder.path()).entryList({"update-*"}).isEmpty());
        EXPECT_TRUE(launcher.ran.isEmpty() && launcher.opened.isEmpty());
        EXPECT_FALSE(process.ended);
        EXPECT_FALSE(progress.open);
        EXPECT_FALSE(CurrentTransfer().busy);
    }

    const QString web = "http://updates.example/updateinfo/kelvrane/";
    const QString ftp = "ftp://files.example/updateinfo/kelvrane/";
};

TEST_F(Update, OnlyAVersionWorthMoreIsOffered) {
    const struct {
        const char* installed;
        const char* file;
        bool current;
    } rows[] = {
        {"1.2.3", "VERSION:1.2.3\nNAME:a\n", true},
        {"1.2.3", "VERSION:1.2.4\nNAME:a\n", false},
        {"1.2.3", "VERSION:1.2.4\r\nNAME:a\r\n", false},
        {"1.1.60", "VERSION:1.2.3\nNAME:a\n", true}, // 1110 against 1103
        {"1.0.0", "VERSION:0.20.0\nNAME:a\n", true}, // minor 20 equals major 1
        {"1.0.0", "VERSION:0.20.1\nNAME:a\n", false},
        {"32767.32767.32767", "VERSION:32767.32767.32767\nNAME:a\n", true},
        {"1.2.3", "VERSION:32768.0.0\nNAME:a\n", true}, // no 16-bit number
        {"1.2.3", "VERSION:9.x.0\nNAME:a\n", true},
        {"1.2.3", "VERSION:9.9\nNAME:a\n", true},
        {"1.2.3", "VERSION:.9.9\nNAME:a\n", true},
        {"1.2.3", "VERSION:9.0.0\nNAME:a", true}, // cut off
        {"1.2.3", "VERSION:9.0.0", true},
        {"1.2.3", "<html>\n<p>Please log in to this network.</p>\n</html>\n", true},
        {"1.2.3", "\0\xff.\n\n\n", true},
        {"1.2.3", "", true},
        {"none", "VERSION:0.0.1\nNAME:a\n", false}, // no point: zeros
        {"1.x.3", "VERSION:9.0.0\nNAME:a\n", true},
    };
    for (const auto& row : rows) {
        RegSetKeyValue(keys::Main, "Version", QString(row.installed));
        UpdateVersion version;
        QStringList names;
        ParseVersionFile(row.file, version, names);
        EXPECT_EQ(IsCurrentVersion(version), row.current) << row.installed << ' ' << row.file;
    }
}

TEST_F(Update, ANameThatCouldClimbRefusesTheWholeFile) {
    for (const char* name :
         {"../setup.deb", "..", ".", "/etc/cron.d/x", "a/b", "a\\b", "C:x", "", "a\tb", "NUL"}) {
        UpdateVersion version;
        QStringList names;
        ParseVersionFile(QString("VERSION:9.0.0\nNAME:good.zip;%1\n").arg(name), version, names);
        EXPECT_TRUE(names.isEmpty()) << name;
        EXPECT_TRUE(IsCurrentVersion(version)) << name;
    }
    UpdateVersion version;
    QStringList names;
    ParseVersionFile("VERSION:9.0.0\nNAME:a b.zip;..setup..deb\n", version, names);
    EXPECT_EQ(names, (QStringList{"a b.zip", "..setup..deb"}));
}

TEST_F(Update, AnAcceptedUpdateIsFetchedHandedOverAndEndsTheProgram) {
    start("Alpha");
    offerUpdate();
    dialogs.expect("would you like to download and install the update?", BoxAnswer::Yes);
    dialogs.expect("Kelvrane will now close.");
    EXPECT_FALSE(AutoUpdate(true, false, {}));
    EXPECT_EQ(internet.addresses(),
              (QStringList{web + "kelvrane_version.txt", ftp + "data.zip", ftp + "setup.run"}));
    EXPECT_EQ(internet.requests[1].account, "updates.example");
    EXPECT_EQ(internet.requests[1].password, "qvnctlro");
    EXPECT_EQ(fileBytes("update/data.zip"), "data");
    EXPECT_EQ(launcher.ran, QStringList{path("update/setup.run")});
    EXPECT_TRUE(QFileInfo(path("update/setup.run")).isExecutable());
    EXPECT_TRUE(QDir(folder.path()).entryList({"update-*"}).isEmpty());
    EXPECT_TRUE(process.ended);
    EXPECT_TRUE(fileBytes("Fileinfo.dat").contains("Alpha;1001;9:00 AM;;"));

    // The next start: the installer ran, and the check waits for the next time.
    QFile(path("update/data.zip")).setPermissions(QFile::ReadOwner);
    dialogs.expect("Update successful");
    EXPECT_TRUE(AutoUpdate(false, false, {}));
    EXPECT_FALSE(QFile::exists(path("update")));
    EXPECT_EQ(internet.requests.size(), 3);
}

TEST_F(Update, APackageIsOpenedWithTheDesktopsProgram) {
    offer("VERSION:1.3.0\nNAME:kelvrane 1.3.deb\n");
    internet.replies[ftp + "kelvrane%201.3.deb"] = {"!<arch>\n"};
    RegSetKeyValue(keys::Main, "UpdateFtpUser", QString("4711"));
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect("Kelvrane will now close.");
    AutoUpdate(true, false, {});
    EXPECT_EQ(internet.requests.last().account, "4711");
    EXPECT_EQ(launcher.opened, QStringList{path("update/kelvrane 1.3.deb")});
    EXPECT_FALSE(QFileInfo(path("update/kelvrane 1.3.deb")).isExecutable());
    EXPECT_TRUE(launcher.ran.isEmpty());
}

TEST_F(Update, WhatCameOverAnOpenLineIsSavedAndNeverStarted) {
    const auto accept = [&](const std::function<void()>& check) {
        dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
        dialogs.expect(path("downloaded-update"));
        check();
        expectNothingInstalled();
        EXPECT_EQ(fileBytes("downloaded-update/data.zip"), "data");
        EXPECT_FALSE(QFileInfo(path("downloaded-update/setup.run")).isExecutable());
    };
    const auto byHand = [] { AutoUpdate(true, false, {}); };
    for (const QString& name :
         QStringList{web + "kelvrane_version.txt", ftp + "data.zip", ftp + "setup.run"}) {
        SCOPED_TRACE(name.toStdString());
        const QByteArray installer = "#!/bin/sh\n# " + name.toLatin1();
        offerUpdate(installer);
        internet.replies[name].verified = false;
        accept(byHand);
        EXPECT_EQ(fileBytes("downloaded-update/setup.run"), installer) << "the last one's";
    }
    offerUpdate("!<arch>\n"); // a package isn't opened either
    internet.replies[web + "kelvrane_version.txt"].verified = false;
    AutoUpdate(false, false, {});
    accept([&] { internet.deliver(); });

    QDir(path("downloaded-update")).removeRecursively();
    QDir().mkpath(path("elsewhere"));
    QFile::link(path("elsewhere"), path("downloaded-update"));
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect("Error in transfer");
    byHand();
    EXPECT_TRUE(QDir(path("elsewhere")).isEmpty());

    offerUpdate(); // and a safe one is still started
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect("Kelvrane will now close.");
    byHand();
    EXPECT_EQ(launcher.ran.size(), 1);
}

TEST_F(Update, NothingIsInstalledWithoutAYesOrAWholeTransfer) {
    offerUpdate();
    dialogs.expect("Kelvrane Update Available", BoxAnswer::No);
    dialogs.expect("There is not an update available at this time."); // said to a No as well
    AutoUpdate(true, false, {});
    expectNothingInstalled();
    EXPECT_EQ(internet.requests.size(), 1);

    const struct {
        const char* what;
        std::function<void()> spoil;
    } rows[] = {
        {"the first file", [&] { internet.replies[ftp + "data.zip"].error = 12030; }},
        {"the last file", [&] { internet.replies[ftp + "setup.run"].error = 12014; }},
        {"no files", [&] { offer("VERSION:1.3.0\nNAME:\n"); }},
        {"no FTP host", [&] { RegSetKeyValue(keys::Main, "UpdateFtpHost", QString()); }},
        {"no starter", [&] { launcher.starts = false; }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        RegSetKeyValue(keys::Main, "UpdateFtpHost", QString("files.example"));
        offerUpdate();
        row.spoil();
        dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
        if (!launcher.starts)
            dialogs.expect("Kelvrane will now close.");
        dialogs.expect("Error in transfer, please visit http://updates.example for the update.");
        AutoUpdate(true, false, {});
        launcher.ran.clear();
        expectNothingInstalled();
    }
}

TEST_F(Update, AnInstallerBehindALinkIsNotStarted) {
    offerUpdate();
    const QString elsewhere = path("elsewhere");
    QDir().mkpath(elsewhere);
    QFile::link(elsewhere, path("update"));
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect("Error in transfer");
    AutoUpdate(true, false, {});
    EXPECT_TRUE(QDir(elsewhere).isEmpty());

    QFile::remove(path("update"));
    writeFile("elsewhere/evil", "#!/bin/sh\n");
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect("Kelvrane will now close.");
    dialogs.whileOpen = [&](const Box& box) { // exchanged at the last moment
        if (box.text == "Kelvrane will now close.") {
            QFile::remove(path("update/setup.run"));
            QFile::link(elsewhere + "/evil", path("update/setup.run"));
        }
    };
    dialogs.expect("Error in transfer");
    AutoUpdate(true, false, {});
    expectNothingInstalled();
    EXPECT_TRUE(QFile::exists(elsewhere + "/evil"));
}

TEST_F(Update, AQuietCheckAsksWhenItsAnswerArrives) {
    offerUpdate();
    EXPECT_TRUE(AutoUpdate(false, false, {}));
    EXPECT_TRUE(dialogs.shown.isEmpty());
    dialogs.expect("Kelvrane Update Available", BoxAnswer::No);
    dialogs.whileOpen = [&](const Box&) { // the next night, nobody has answered yet
        AutoUpdate(false, false, {});
        internet.deliver();
    };
    internet.deliver();
    EXPECT_EQ(dialogs.shown.size(), 1);
    expectNothingInstalled();
}

TEST_F(Update, WithoutANetworkOnlyTheMenuSpeaks) {
    EXPECT_TRUE(AutoUpdate(false, false, {}));
    internet.deliver();
    dialogs.expect("Internet connection could not be established, Please check your connection and "
                   "try again");
    dialogs.expect("There is not an update available at this time.");
    EXPECT_TRUE(AutoUpdate(true, false, {}));
    EXPECT_EQ(dialogs.shown[0].title, "No internet connection found");

    internet.replies[web + "kelvrane_version.txt"].error = internet_errors::NotLocated;
    dialogs.expect("Kelvrane up to date."); // there is a connection
    EXPECT_TRUE(AutoUpdate(true, false, {}));

    RegSetKeyValue(keys::Main, "UpdateWebHost", QString());
    internet.requests.clear();
    AutoUpdate(false, false, {});
    FetchUsageLog();
    dialogs.expect("Kelvrane up to date.");
    AutoUpdate(true, false, {});
    EXPECT_TRUE(internet.requests.isEmpty());
    expectNothingInstalled();
}

TEST_F(Update, ForceInstallsWhatItsFileNamesAndLeavesTheDayFileAlone) {
    writeFile("Fileinfo.dat", "another instance's day");
    internet.replies[web + "again.txt"] = {"VERSION:1.2.3\nNAME:setup.run\n"};
    internet.replies[ftp + "setup.run"] = {"#!/bin/sh\n"};
    dialogs.expect("Kelvrane will now close.");
    EXPECT_TRUE(AutoUpdate(false, true, "again.txt"));
    EXPECT_EQ(launcher.ran.size(), 1);
    EXPECT_TRUE(process.ended);
    EXPECT_EQ(fileBytes("Fileinfo.dat"), "another instance's day");
}

TEST_F(Update, ForceWithoutAFileInstallsNothing) {
    internet.replies[web + "broken.txt"] = {"VERSION:1.2.3\nNAME:../setup.run\n"};
    for (const char* operand : {"broken.txt", "../up.txt", ""}) {
        dialogs.expect("There is not an update available at this time.");
        AutoUpdate(false, true, operand);
        expectNothingInstalled();
    }
    EXPECT_EQ(internet.requests.size(), 1) << "names that climb aren't even asked for";
}

TEST_F(Update, AShutDownEndsTheWaitWithoutAWord) {
    internet.hangs = true;
    EXPECT_TRUE(AutoUpdate(true, false, {}));
    EXPECT_EQ(internet.cancels, 1);
    internet.hangs = false;
    offerUpdate();
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.whileOpen = [&](const Box&) { internet.hangs = true; };
    AutoUpdate(true, false, {});
    EXPECT_EQ(internet.cancels, 2);
    expectNothingInstalled();
}

TEST_F(Update, AFullAddressIsTakenAsItStands) {
    RegSetKeyValue(keys::Main, "UpdateWebHost", QString("HTTPS://updates.example:8443/kelvrane/"));
    RegSetKeyValue(keys::Main, "UpdateFtpHost", QString(" FTPS://files.example "));
    internet.replies["https://updates.example:8443/kelvrane/updateinfo/kelvrane/"
                     "kelvrane_version.txt"] = {"VERSION:2.0.0\nNAME:x\n"};
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect("Error in transfer");
    AutoUpdate(true, false, {});
    EXPECT_EQ(internet.requests.last().address, "ftps://files.example/updateinfo/kelvrane/x");
    EXPECT_EQ(internet.requests.last().account, "updates.example");
}

TEST_F(Update, LeftoversOfAKilledDownloadGo) {
    for (const char* name : {"update-aB3dE6", "update-of-mine"})
        QDir().mkpath(path(name));
    clock.set(QDateTime::currentDateTime().toString("yyyy-MM-dd hh:mm"));
    offerUpdate();
    internet.replies[ftp + "data.zip"].error = 12002;
    const auto tryIt = [this] {
        dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
        dialogs.expect("Error in transfer");
        AutoUpdate(true, false, {});
    };
    tryIt();
    EXPECT_TRUE(QFile::exists(path("update-aB3dE6"))) << "another process may be at it";
    clock.advanceMinutes(2 * 24 * 60);
    tryIt();
    EXPECT_FALSE(QFile::exists(path("update-aB3dE6")));
    EXPECT_TRUE(QFile::exists(path("update-of-mine")));
}

TEST_F(Update, StatusesAreShownAndBytesCounted) {
    internet.replies[ftp + "a.bin"] = {
        "x",
        0,
        {{.code = 60, .text = "1"},
         {.code = 10, .text = "files.example"},
         {.code = 0, .text = "files.example"},
         {.code = 1, .text = "192.0.2.1"},
         {.code = 20},
         {.code = 21, .text = "192.0.2.1"},
         {.code = 30, .number = 5},
         {.code = 31, .number = 5},
         {.code = 80},
         {.code = 11},
         {.code = 99},
         {.code = 200, .number = 2},
         {.code = 200, .number = 3},
         {.code = 41, .number = 250, .total = 1000},
         {.code = 41, .number = 900, .total = 1000}, // more than was said
         {.code = 50},
         {.code = 51},
         {.code = 70}}};
    FtpFindRecord record;
    CurrentTransfer().fileName = "a.bin";
    EXPECT_TRUE(GetFtpFile("updateinfo/kelvrane/a.bin", path("a.bin"), record, true));
    EXPECT_EQ(record.size, 1000);
    EXPECT_EQ(
        progress.captions,
        (QStringList{"Establishing Connection: 1", "Looking up the IP address for files.example",
                     "Name resolved 192.0.2.1", "Connecting to server...", "Connected to server.",
                     "Connected to 192.0.2.1", "Sending request: 5 bytes", "Request sent: 5 bytes",
                     "Detecting proxy", "Disconnected from network.",
                     "Downloading: a.bin - 250 of 1000", "Downloading: a.bin - 1150 of 1000",
                     "Closing connection", "Connection closed", "Connection Closed",
                     "Download complete. "}));
    EXPECT_EQ(CurrentTransfer().currentText, "files.example");
    EXPECT_EQ(progress.percents.last(), 100);
    EXPECT_TRUE(progress.percents.contains(25));

    EXPECT_FALSE(GetFtpFile("updateinfo/kelvrane/a.bin", path("a.bin"), record, true));
    EXPECT_EQ(CurrentTransfer().lastError, InternetErrorText(12036));
    EXPECT_TRUE(GetFtpFile("updateinfo/kelvrane/a.bin", path("a.bin"), record, false));
    EXPECT_EQ(CurrentTransfer().lastError, "");
}

TEST_F(Update, ErrorsHaveTheirSentences) {
    const QString none = "Error details not available.";
    EXPECT_EQ(InternetErrorText(12002), "The request has timed out.");
    EXPECT_EQ(InternetErrorText(12036), "The request failed because the handle already exists.");
    for (const int code : {0, 112, 12000, 12032, 12035, 12037})
        EXPECT_EQ(InternetErrorText(code), none) << code;
    EXPECT_EQ(InternetErrorText(12003), "Extended error returned from server.");
    EXPECT_EQ(InternetErrorText(12003, QString("550 Gone.") + QChar(0) + "x"), "550 Gone.");
    EXPECT_EQ(InternetErrorText(12003, QString(300, 'x')).size(), 256);
    EXPECT_EQ(InternetErrorText(12002, "550 Gone."), "The request has timed out.");
}

} // namespace
} // namespace kelvrane
