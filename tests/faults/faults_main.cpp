#include "support/surroundings.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <gtest/gtest.h>

// Without windows, so that a forked child is the whole process again.
int main(int argc, char** argv) {
    // Thousands of small folders: in memory, where there is such a place. What an ended process
    // leaves behind is the same there as on a disk.
    if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
        qputenv("TMPDIR", "/dev/shm");
    const kelvrane::testing::Surroundings surroundings;
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
