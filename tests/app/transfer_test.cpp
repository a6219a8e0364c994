// The network for real: the helper program against web and FTP servers on loopback, plain and with
// TLS, whole and broken in every way that a server or a disk has.
#include "app/transfer_internet.h"
#include "frame/settings.h"
#include "platform/installed_files.h"
#include "support/fakes.h"
#include "support/temporary_folder.h"
#include "timekeeping/shut_down.h"
#include "update/auto_update.h"
#include "update/transfer_status.h"
#include "update/update_servers.h"
#include "widgets/real_ports.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QScopeGuard>

#include <gtest/gtest.h>

#include <memory>
#include <sys/resource.h>
#include <utility>
#include <vector>

namespace kelvrane {
namespace {

const QString place = "/updateinfo/kelvrane/";

QByteArray randomBytes(int count) {
    QByteArray bytes(count, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = char(QRandomGenerator::global()->generate());
    return bytes;
}

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class Transfer : public testing::ProgramTest {
  protected:
    Transfer() {
        qputenv("no_proxy", "*");
        SetInstalledFolder(QDir(QCoreApplication::applicationDirPath() + "/..").absolutePath());
        ports.events = &realEvents;
        connectTo(servers.certificates());
    }
    ~Transfer() override {
        internetPort.reset();
        SetInstalledFolder({});
    }
    /// Patience is for a machine that is busy; a case that waits for its end sets it short.
    void connectTo(const QString& certificates, int seconds = 20) {
        internetPort =
            std::make_unique<TransferInternet>(TransferSettings{.connectSeconds = seconds,
                                                                .stallSeconds = seconds,
                                                                .quietSeconds = seconds,
                                                                .quietMilliseconds = 0,
                                                                .certificates = certificates});
        ports.internet = internetPort.get();
    }
    InternetRequest ftpRequest(const QString& server, const QString& name, const QString& file) {
        return {.address = servers.address("ftp", server) + place + name,
                .account = "anonymous",
                .password = "qvnctlro",
                .file = file};
    }
    InternetResult fetch(const InternetRequest& request, Internet::OnStatus onStatus = {}) {
        const auto result = std::make_shared<std::optional<InternetResult>>();
        internetPort->fetch(request, std::move(onStatus), [result](const InternetResult& answer) {
            EXPECT_FALSE(*result) << "answered twice";
            *result = answer;
        });
        realEvents.waitUntil([&] { return result->has_value(); });
        return **result;
    }

    testing::UpdateServers servers;
    QtEvents realEvents;
    std::unique_ptr<TransferInternet> internetPort;
};

TEST_F(Transfer, TextsComeOverTheWebOrNotAtAll) {
    const QByteArray text = "VERSION:1.3.0\nNAME:a\n";
    servers.put("updateinfo/kelvrane/v.txt", text);
    servers.put("large", QByteArray(64 * 1024, 'x'));
    servers.put("too-large", QByteArray(64 * 1024 + 1, 'x'));
    const QString http = servers.address("http", "http");
    const QString https = servers.address("https", "https");
    const QString capitals = servers.address("HTTPS", "https");
    struct Row {
        QString address;
        int error;
        QByteArray text = {};
        bool verified = false;
        int answers = 0;
    };
    std::vector<Row> rows = {
        {http + place + "v.txt", 0, text},
        {https + place + "v.txt", 0, text, true},
        {capitals + place + "v.txt", 0, text, true},
        {https + "/odd/redirect-home?" + place + "v.txt", 0, text, true},
        {http + "/odd/redirect-home?" + https + place + "v.txt", 0, text}, // led there by anybody
        {https + "/odd/redirect-home?" + http + place + "v.txt", 12006},
        {capitals + "/odd/redirect-home?" + http + place + "v.txt", 12006},
        {http + "/odd/redirect-home?" + place + "v.txt", 0, text},
        {http + "/large", 0, QByteArray(64 * 1024, 'x')},
        {http + "/too-large", 12016},
        {http + "/odd/endless", 12016},
        {http + place + "none.txt", 12028},
        {http + "/odd/redirect-round", 12028},
        {http + "/odd/redirect-to-file", 12006},
        {"file:///etc/passwd", 12006},
        {"gopher://127.0.0.1/", 12006},
        {http + "/v.txt\nfile /etc/x", 12005},
        {"http://", 12005},
        {"http://" + QString(70, 'a') + "/", 12007}, // no name can be so long
        {servers.address("http", "refused") + "/", 12029},
        {http + "/odd/cut", 12030},
    };
    for (Row& row : rows)
        internetPort->fetch({.address = row.address}, {}, [&row](const InternetResult& result) {
            ++row.answers;
            EXPECT_EQ(result.error, row.error) << row.address.toStdString();
            EXPECT_EQ(result.text, row.text) << row.address.toStdString();
            EXPECT_EQ(result.verified, row.verified) << row.address.toStdString();
        });
    realEvents.waitUntil(
        [&] { return std::ranges::all_of(rows, [](const Row& row) { return row.answers > 0; }); });
    connectTo({}); // the system trusts nobody here
    EXPECT_EQ(fetch({.address = servers.address("https", "https") + place + "v.txt"}).error, 12029);
}

TEST_F(Transfer, AServerThatKeepsSilentIsGivenUp) {
    connectTo(servers.certificates(), 1);
    for (const QString scheme : {"http", "https", "ftp"}) {
        const InternetRequest request = {.address = servers.address(scheme, "silent") + "/a",
                                         .file = path("a")};
        EXPECT_EQ(fetch(request).error, 12002) << scheme.toStdString();
        EXPECT_FALSE(QFile::exists(path("a")));
    }
    EXPECT_EQ(fetch({.address = servers.address("http", "http") + "/odd/stuck"}).error, 12002);
    // It never stalls; a quiet request has an end all the same.
    EXPECT_EQ(
        fetch({.address = servers.address("http", "http") + "/odd/drops", .quiet = true}).error,
        12002);
}

TEST_F(Transfer, FilesComeOverFtpWholeOrNotAtAll) {
    const QByteArray bytes = randomBytes(400'000);
    servers.put("updateinfo/kelvrane/a b.bin", bytes);
    servers.put("updateinfo/kelvrane/empty", {});
    double received = 0;
    double total = 0;
    const auto count = [&](const InternetStatus& status) {
        if (status.code != 41)
            return;
        received += status.number;
        total = status.total;
    };
    for (const QString server : {"ftp", "ftps"}) {
        SCOPED_TRACE(server.toStdString());
        received = 0;
        const QString file = path(server);
        const InternetResult result = fetch(ftpRequest(server, "a%20b.bin", file), count);
        EXPECT_EQ(result.error, 0);
        EXPECT_EQ(result.verified, server == "ftps");
        EXPECT_EQ(bytesOf(file), bytes);
        EXPECT_EQ(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), 0);
        EXPECT_EQ(received, 400'000);
        EXPECT_EQ(total, 400'000);
        EXPECT_EQ(fetch(ftpRequest(server, "empty", path(server + "0"))).error, 0);
        EXPECT_TRUE(QFile::exists(path(server + "0")));
    }

    const QString file = path("broken");
    const InternetResult missing = fetch(ftpRequest("ftp", "none", file));
    EXPECT_EQ(missing.error, 12003);
    EXPECT_TRUE(missing.response.startsWith("550 ")) << missing.response.toStdString();
    InternetRequest wrong = ftpRequest("ftp", "a%20b.bin", file);
    wrong.password = "password";
    EXPECT_EQ(fetch(wrong).error, 12014);
    EXPECT_EQ(fetch(ftpRequest("refused", "a", file)).error, 12029);
    EXPECT_EQ(fetch(ftpRequest("ftp", "a%20b.bin", path("none/a"))).error, 112);
    EXPECT_FALSE(QFile::exists(file));

    writeFile("mine", "mine");
    EXPECT_EQ(fetch(ftpRequest("ftp", "a%20b.bin", path("mine"))).error, 112);
    EXPECT_EQ(fileBytes("mine"), "mine");
    connectTo({});
    EXPECT_EQ(fetch(ftpRequest("ftps", "a%20b.bin", file)).error, 12029)
        << "no falling back to an open line";
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(Transfer, AProxyThatSpeaksHttpInsteadOfFtpVerifiesNothing) {
    servers.put("updateinfo/kelvrane/a.bin", "bytes");
    qunsetenv("no_proxy");
    qputenv("ftp_proxy", servers.address("http", "http").toUtf8());
    const auto restore = qScopeGuard([] {
        qunsetenv("ftp_proxy");
        qputenv("no_proxy", "*");
    });
    const InternetResult result = fetch(ftpRequest("ftps", "a.bin", path("a.bin")));
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(bytesOf(path("a.bin")), "bytes");
    EXPECT_FALSE(result.verified);
}

TEST_F(Transfer, AFullDiskLeavesNoHalfOfAFile) {
    servers.put("updateinfo/kelvrane/a.bin", randomBytes(400'000));
    rlimit former = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &former), 0);
    const rlimit small = {100'000, former.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_FSIZE, &former); });
    EXPECT_EQ(fetch(ftpRequest("ftp", "a.bin", path("a.bin"))).error, 112);
    EXPECT_FALSE(QFile::exists(path("a.bin")));
}

TEST_F(Transfer, ASessionCutOffInTheMiddleIsAnError) {
    servers.put("updateinfo/kelvrane/a.bin", randomBytes(400'000));
    bool cut = false;
    const InternetResult result =
        fetch(ftpRequest("slow", "a.bin", path("a.bin")), [&](const InternetStatus& status) {
            if (status.code == 41 && !std::exchange(cut, true))
                servers.cut();
        });
    EXPECT_TRUE(cut);
    EXPECT_TRUE(result.error == 12030 || result.error == 12031) << result.error;
    EXPECT_FALSE(QFile::exists(path("a.bin")));
}

TEST_F(Transfer, WhatIsCancelledIsNotHeardOfAgain) {
    servers.put("updateinfo/kelvrane/a.bin", randomBytes(400'000));
    bool begun = false;
    internetPort->fetch(
        ftpRequest("slow", "a.bin", path("a.bin")),
        [&](const InternetStatus& status) { begun = begun || status.code == 41; },
        [](const InternetResult&) { ADD_FAILURE() << "it was cancelled"; });
    realEvents.waitUntil([&] { return begun; });
    internetPort->cancelAll();
    EXPECT_EQ(fetch({.address = servers.address("http", "refused")}).error, 12029);
    // So too from within what it says, while events go on.
    bool cancelled = false;
    internetPort->fetch(
        {.address = servers.address("http", "http") + "/"},
        [&](const InternetStatus&) {
            EXPECT_FALSE(std::exchange(cancelled, true));
            internetPort->cancelAll();
            realEvents.yield();
            realEvents.yield();
        },
        [](const InternetResult&) { ADD_FAILURE() << "it was cancelled"; });
    realEvents.waitUntil([&] { return cancelled; });
    // The program may also end in the middle, and waits for nobody.
    internetPort->fetch({.address = servers.address("http", "silent")}, {},
                        [](const InternetResult&) { ADD_FAILURE() << "it has gone"; });
    realEvents.yield();
    internetPort.reset();
}

TEST_F(Transfer, TheHelperEndsWithWhoeverAskedIt) {
    servers.put("updateinfo/kelvrane/a.bin", randomBytes(400'000));
    QProcess helper;
    helper.start(InstalledFile("kelvrane-transfer"), QStringList());
    helper.write(("url " + servers.address("ftp", "slow") + place + "a.bin\nfile " + path("a.bin") +
                  "\naccount anonymous\npassword qvnctlro\nlimit 1000000\nconnect-seconds 9\n"
                  "stall-seconds 9\ngo\n")
                     .toUtf8());
    while (!helper.readAllStandardOutput().contains("status 41"))
        ASSERT_TRUE(helper.waitForReadyRead());
    EXPECT_TRUE(QFile::exists(path("a.bin")));
    helper.closeWriteChannel();
    EXPECT_TRUE(helper.waitForFinished());
    EXPECT_FALSE(QFile::exists(path("a.bin")));
}

TEST_F(Transfer, AHelperThatIsMissingOrTalksNonsenseIsAnError) {
    TemporaryFolder other;
    SetInstalledFolder(other.path());
    EXPECT_EQ(fetch({.address = "http://127.0.0.1/"}).error, 12004);
    const auto putHelper = [&](const char* script) {
        QFile helper(other.path("kelvrane-transfer"));
        ASSERT_TRUE(helper.open(QIODevice::WriteOnly));
        helper.write(QByteArray("#!/bin/sh\n") + script + "\n");
        helper.close();
        helper.setPermissions(QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    };
    for (const char* script :
         {"exit 3", "kill -9 $$", "echo nonsense", "echo done", "echo text 99999999; echo done 0 ",
          "echo status 41; echo status 41 x y z; echo done x", "yes | tr -d '\\n'",
          "head -c 300000 /dev/zero"}) {
        putHelper(script);
        const InternetResult result = fetch({.address = "http://127.0.0.1/"});
        EXPECT_EQ(result.error, 12004) << script;
        EXPECT_TRUE(result.text.isEmpty());
    }
    connectTo({}, 1);
    for (const char* script : {"exec sleep 600", "echo status 20 0 0 ; exec sleep 600"}) {
        putHelper(script);
        EXPECT_EQ(fetch({.address = "http://127.0.0.1/"}).error, 12002) << script;
    }
}

TEST_F(Transfer, AnUpdateFromRealServersIsHandedOver) {
    CurrentTransfer() = {};
    const QByteArray installer = "#!/bin/sh\n" + randomBytes(300'000);
    servers.put("updateinfo/kelvrane/kelvrane_version.txt",
                "VERSION:1.3.0\nNAME:data.bin;setup.run\n");
    servers.put("updateinfo/kelvrane/data.bin", randomBytes(1000));
    servers.put("updateinfo/kelvrane/setup.run", installer);
    for (const auto& [name, value] : {std::pair{"Version", QString("1.2.0")},
                                      {"UpdateWebHost", servers.address("https", "https")},
                                      {"UpdateFtpHost", servers.address("ftp", "ftps")},
                                      {"UpdateFtpUser", QString("nobody")}})
        RegSetKeyValue(keys::Main, name, value);
    const auto check = [this] { AutoUpdate(true, false, {}); };

    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect("Error in transfer"); // the account isn't theirs
    check();
    RegSetKeyValue(keys::Main, "UpdateFtpHost", servers.address("ftp", "ftp"));
    RegSetKeyValue(keys::Main, "UpdateFtpUser", QString("anonymous"));
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect(path("downloaded-update")); // an open line
    check();
    EXPECT_EQ(fileBytes("downloaded-update/setup.run"), installer);
    EXPECT_TRUE(launcher.ran.isEmpty());
    RegSetKeyValue(keys::Main, "UpdateFtpHost", servers.address("ftp", "ftps"));
    dialogs.expect("Kelvrane Update Available", BoxAnswer::Yes);
    dialogs.expect("Kelvrane will now close.");
    check();
    EXPECT_EQ(launcher.ran, QStringList{path("update/setup.run")});
    EXPECT_EQ(fileBytes("update/setup.run"), installer);
    EXPECT_TRUE(process.ended);
    EXPECT_TRUE(progress.captions.contains("Downloading: setup.run - 300010 of 300010"));
    dialogs.expect("Update successful");
    check();

    for (const char* file : {"VERSION:9.0.0\nNAME:../../setup.run\n", "\1\2\3garbage\n\n"}) {
        servers.put("updateinfo/kelvrane/kelvrane_version.txt", file);
        dialogs.expect("There is not an update available at this time.");
        check();
    }
    EXPECT_FALSE(QFile::exists(path("update")));
}

} // namespace
} // namespace kelvrane
