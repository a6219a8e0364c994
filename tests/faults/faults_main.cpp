#include <QCoreApplication>

#include <gtest/gtest.h>

// Without windows, so that a forked child is the whole process again.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
