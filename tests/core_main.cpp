#include "support/surroundings.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const kelvrane::testing::Surroundings surroundings;
    testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
