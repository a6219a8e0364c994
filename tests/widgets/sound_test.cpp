#include "platform/installed_files.h"
#include "support/built_files.h"
#include "support/temporary_folder.h"
#include "widgets/real_ports.h"

#include <QFile>
#include <QLibrary>

#include <gtest/gtest.h>

#include <memory>

namespace kelvrane::testing {
namespace {

// The program asks for the module by these names, and there is nobody else to notice a change.
TEST(Sound, TheModuleGivesAPlayer) {
    const BuiltFiles built;
    QLibrary module(InstalledFile("kelvrane-sound.so"));
    const auto create = reinterpret_cast<QObject* (*)()>(module.resolve("CreateSoundPlayer"));
    ASSERT_TRUE(create) << module.errorString().toStdString();
    const std::unique_ptr<QObject> player(create());
    EXPECT_TRUE(QMetaObject::invokeMethod(player.get(), "play", Q_ARG(QString, QString())));
}

TEST(Sound, WhatCannotBePlayedIsSilence) {
    const TemporaryFolder folder;
    QFile noise(folder.path("bell.wav"));
    ASSERT_TRUE(noise.open(QIODevice::WriteOnly));
    noise.write("no sound at all");
    noise.close();
    QtSound sound;
    for (const QString& path : {QString(), folder.path("missing.wav"), noise.fileName()})
        sound.play(path); // without a module
    const BuiltFiles built;
    sound.play(noise.fileName());
}

} // namespace
} // namespace kelvrane::testing
