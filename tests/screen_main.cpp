#include "support/surroundings.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const kelvrane::testing::Surroundings surroundings;
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
