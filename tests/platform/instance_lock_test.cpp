#include "platform/file_store.h"
#include "platform/instance_lock.h"
#include "platform/machine.h"
#include "support/holding_process.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace kelvrane;
using namespace Qt::StringLiterals;
using kelvrane::testing::HoldingProcess;

namespace {

const QByteArray elsewhere = "host: ada-laptop\nprocess: 17\nsince: 2026-03-01T18:30:00\n"
                             "machine: 00000000\n";

/// A file system without locks, as some shared folders are.
int noLocks(int /*descriptor*/, int /*operation*/) {
    errno = ENOLCK;
    return -1;
}

class Lock : public ::testing::Test {
  protected:
    const QDateTime now{QDate(2026, 3, 2), QTime(9, 0)};
    TemporaryFolder folder;
    DiskFileStore files;
    const QString path = folder.path(u"kelvrane.lock"_s);
};

TEST_F(Lock, OneProcessAtATimeHoldsItAndAKillEndsIt) {
    InstanceLock lock(path);
    {
        HoldingProcess other(path);
        EXPECT_EQ(lock.tryLock(), InstanceState::Running);
        ASSERT_TRUE(lock.holder());
        EXPECT_EQ(lock.holder()->processId, other.id());
        EXPECT_EQ(lock.holder()->host, MachineName());
        EXPECT_EQ(lock.holder()->since, QDateTime(QDate(2026, 3, 2), QTime(8, 15)));
        lock.release();
    }
    EXPECT_FALSE(files.read(path).isEmpty()) << "a killed process leaves its name";
    EXPECT_EQ(lock.tryLock(), InstanceState::Free);
    lock.keep(now);
    InstanceLock second(path);
    EXPECT_EQ(second.tryLock(), InstanceState::Running);
    second.release();
    lock.release();
    EXPECT_EQ(files.read(path), "") << "a process that ended is not named";
    EXPECT_EQ(second.tryLock(), InstanceState::Free);
}

TEST_F(Lock, WhatTheFileHoldsDecidesNothing) {
    const QByteArray ofALivingOne = "host: x\nprocess: " + QByteArray::number(::getppid()) +
                                    "\nsince: 2026-03-01T18:30:00\nmachine: " + MachineTag() + '\n';
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("1234\nKelvrane\nhere\n"), QByteArray(100'000, '\xff'),
          QByteArray("host: \nprocess: -1\nmachine: x"), ofALivingOne}) {
        files.create(path, bytes);
        InstanceLock lock(path);
        EXPECT_EQ(lock.tryLock(), InstanceState::Free) << bytes.left(40).toStdString();
    }
    HoldingProcess other(path);
    InstanceLock lock(path);
    ASSERT_TRUE(QFile::resize(path, 0));
    EXPECT_EQ(lock.tryLock(), InstanceState::Running) << "nor does an empty one";
    EXPECT_FALSE(lock.holder());
    files.remove(path, true);
    EXPECT_EQ(lock.tryLock(), InstanceState::Running) << "nor one that somebody removed";
}

TEST_F(Lock, AnotherMachineIsASuspicion) {
    files.create(path, elsewhere);
    InstanceLock lock(path);
    EXPECT_EQ(lock.tryLock(), InstanceState::Unsure);
    EXPECT_EQ(lock.holder()->host, "ada-laptop");
    lock.keep(now);
    InstanceLock second(path);
    EXPECT_EQ(second.tryLock(), InstanceState::Running);
    second.release();
    files.create(path, elsewhere);
    lock.release();
    EXPECT_EQ(files.read(path), elsewhere) << "not this process's to take away";
}

TEST_F(Lock, WithoutLocksTheNamedProcessCounts) {
    InstanceLock lock(path, noLocks);
    {
        HoldingProcess other(path, noLocks);
        EXPECT_EQ(lock.tryLock(), InstanceState::Unsure);
        EXPECT_EQ(lock.holder()->processId, other.id());
    }
    EXPECT_EQ(lock.tryLock(), InstanceState::Free) << "it was killed";
    EXPECT_EQ(lock.trouble(), 0);
    lock.keep(now);
    EXPECT_TRUE(files.read(path).contains(QByteArray::number(::getpid())));
}

TEST_F(Lock, ADiskThatCannotBeWrittenToKeepsNobodyOut) {
    const QByteArray name = QFile::encodeName(folder.path());
    const auto inChild = [](const std::function<void()>& run) {
        const pid_t child = ::fork();
        if (child == 0) {
            run();
            ::_exit(::testing::Test::HasFailure() ? 1 : 0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    };
    inChild([&] { // full
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit none = {.rlim_cur = 0, .rlim_max = 0};
        ::setrlimit(RLIMIT_FSIZE, &none);
        InstanceLock lock(path);
        EXPECT_EQ(lock.tryLock(), InstanceState::Free);
        lock.keep(now);
        EXPECT_EQ(lock.trouble(), EFBIG);
        InstanceLock second(path);
        EXPECT_EQ(second.tryLock(), InstanceState::Running);
    });
    files.remove(path, true);
    inChild([&] { // read-only, also for who runs the tests as the superuser
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0) {
            ASSERT_EQ(::chown(name.constData(), nobody, nobody), 0);
            ASSERT_EQ(::setuid(nobody), 0);
        }
        ASSERT_EQ(::chmod(name.constData(), 0500), 0);
        InstanceLock lock(path);
        EXPECT_EQ(lock.tryLock(), InstanceState::Free);
        lock.keep(now);
        EXPECT_EQ(lock.trouble(), EACCES);
        InstanceLock second(path);
        EXPECT_EQ(second.tryLock(), InstanceState::Running) << "the folder itself is locked";
        ASSERT_EQ(::chmod(name.constData(), 0700), 0);
        InstanceLock later(path);
        EXPECT_EQ(later.tryLock(), InstanceState::Running) << "also once there is a file again";
    });
}

TEST_F(Lock, WhatIsNoFileInItsPlaceIsPassedOver) {
    const QString victim = folder.path(u"victim"_s);
    files.create(victim, "the user's");
    ASSERT_TRUE(QFile::link(victim, path));
    for (int turn = 0; turn < 3; ++turn) {
        if (turn == 1)
            ASSERT_EQ(::mkfifo(path.toUtf8().constData(), 0600), 0);
        if (turn == 2)
            ASSERT_TRUE(QDir().mkdir(path));
        {
            InstanceLock lock(path);
            EXPECT_EQ(lock.tryLock(), InstanceState::Free);
            lock.keep(now);
        }
        if (turn < 2)
            files.remove(path, true);
    }
    EXPECT_EQ(files.read(victim), "the user's");
}

} // namespace
