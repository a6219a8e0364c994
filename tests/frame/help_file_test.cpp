#include "frame/help_file.h"
#include "frame/settings.h"
#include "platform/installed_files.h"
#include "startup/install_step.h"
#include "support/fakes.h"

#include <QDir>

#include <gtest/gtest.h>

namespace kelvrane::testing {
namespace {

class HelpFileTest : public ProgramTest {
  protected:
    HelpFileTest() {
        SetInstalledFolder(installed.path());
        setVersion("0.9");
    }
    ~HelpFileTest() override { SetInstalledFolder({}); }
    void install(const QByteArray& bytes) {
        disk.create(installed.filePath("Kelvrane.qch"), bytes);
    }
    void setVersion(const QString& version) { settings->setValue(keys::Main, "Version", version); }
    QByteArray copy() const { return fileBytes("Kelvrane.qch"); }

    QTemporaryDir installed;
};

TEST_F(HelpFileTest, TheInstallStepCopiesKeepsAndRenews) {
    install("first");
    RunInstallStep();
    EXPECT_EQ(copy(), "first");

    install("second"); // this version's, but the step has been taken
    RunInstallStep();
    EXPECT_EQ(copy(), "first");

    setVersion("1.1.9");
    RunInstallStep();
    EXPECT_EQ(copy(), "second");
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(HelpFileTest, WithoutOneToInstallTheStepGoesThroughAndNothingIsLost) {
    writeFile("Kelvrane.qch", "an older one");
    RunInstallStep();
    EXPECT_EQ(copy(), "an older one");
    EXPECT_EQ(RegQueryValue(keys::Main, "Version"), KELVRANE_VERSION);
}

TEST_F(HelpFileTest, ADamagedCopyIsReplacedAndWhatWasMadeFromItGoes) {
    install("sound");
    for (const QByteArray& before : {QByteArray("soun"), QByteArray(), QByteArray("Sound")}) {
        writeFile("Kelvrane.qch", before);
        writeFile("Kelvrane.qhc", "made from it");
        RenewHelpFile();
        EXPECT_EQ(copy(), "sound");
        EXPECT_FALSE(disk.exists(HelpCollectionPath()));
    }
    writeFile("Kelvrane.qhc", "made from it");
    RenewHelpFile();
    EXPECT_TRUE(disk.exists(HelpCollectionPath())) << "the same file is left alone";
}

} // namespace
} // namespace kelvrane::testing
