#include "platform/file_store.h"
#include "platform/settings_store.h"
#include "support/raised_error.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

using namespace kelvrane;
using namespace Qt::StringLiterals;

namespace {

/// Counts the files that take a target's place; can be told to fail.
class CountingFiles : public DiskFileStore {
  public:
    void replace(const QString& source, const QString& target) override {
        if (failing)
            Raise(errors::DiskFull);
        ++replaced;
        DiskFileStore::replace(source, target);
    }
    int replaced = 0;
    bool failing = false;
};

class Settings : public testing::Test {
  protected:
    TemporaryFolder folder;
    CountingFiles files;
    const QString path = folder.path(u"settings.json"_s);
    const QString key = u"Software\\K"_s;
};

TEST_F(Settings, ValuesSurviveWithTheirTypes) {
    const QString odd = u"a\0\"\\;&<\r\n 🙂 "_s + QString(10000, u'x');
    {
        SettingsStore store(files, path);
        EXPECT_FALSE(store.setValue(key, u"Name"_s, u"lost"_s));
        store.createKey(key);
        EXPECT_TRUE(store.setValue(key, u"Text"_s, odd));
        EXPECT_TRUE(store.setValue(key, u"Digits"_s, u"5"_s));
        EXPECT_TRUE(store.setValue(key, u"Number"_s, qint32(-2147483648)));
        EXPECT_TRUE(store.setSection(u"Chart"_s, u"Width"_s, u"9375"_s));
    }
    SettingsStore store(files, path);
    EXPECT_FALSE(store.wasDamaged());
    EXPECT_EQ(store.value(key, u"Name"_s), std::nullopt);
    EXPECT_EQ(store.value(key, u"Text"_s), SettingValue(odd));
    EXPECT_EQ(store.value(key, u"Digits"_s), SettingValue(u"5"_s));
    EXPECT_EQ(store.value(key, u"Number"_s), SettingValue(qint32(-2147483648)));
    EXPECT_EQ(store.section(u"Chart"_s, u"Width"_s, u"1"_s), "9375");
    EXPECT_EQ(store.section(u"Chart"_s, u"Height"_s, u"7695"_s), "7695");
    EXPECT_TRUE(files.read(path).contains("\"Digits\": \"5\""));
}

TEST_F(Settings, OnlyAChangeTouchesTheDiskAndABatchDoesItOnce) {
    SettingsStore store(files, path);
    store.beginChanges();
    store.createKey(key);
    store.beginChanges();
    store.setValue(key, u"A"_s, 1);
    EXPECT_TRUE(store.endChanges());
    EXPECT_EQ(files.replaced, 0);
    EXPECT_TRUE(store.endChanges());
    EXPECT_EQ(files.replaced, 1);

    store.createKey(key);
    store.setValue(key, u"A"_s, 1);
    store.beginChanges();
    store.setValue(key, u"A"_s, 2);
    store.setValue(key, u"A"_s, 1);
    store.endChanges();
    EXPECT_EQ(files.replaced, 1);
    store.setValue(key, u"A"_s, u"1"_s); // same digits, another type
    EXPECT_EQ(files.replaced, 2);
}

TEST_F(Settings, AFailedWriteLeavesTheStoreAsItWas) {
    SettingsStore store(files, path);
    store.createKey(key);
    store.setValue(key, u"A"_s, 1);
    files.failing = true;
    EXPECT_FALSE(store.setValue(key, u"A"_s, 2));
    EXPECT_EQ(store.value(key, u"A"_s), SettingValue(1));
    files.failing = false;
    EXPECT_TRUE(store.setValue(key, u"A"_s, 2));
    EXPECT_EQ(SettingsStore(files, path).value(key, u"A"_s), SettingValue(2));
}

TEST_F(Settings, GarbageIsKeptAsideAndReadsAsEmpty) {
    const QByteArray cases[] = {
        "",
        "garbage",
        "[1,2]",
        "{\"keys\":",
        QByteArray("\x00\xFF\x80{", 4),
        QByteArray(100'000, '['),
        QByteArray(17 * 1024 * 1024, ' '),
        "{\"keys\":5,\"sections\":[]}",
        "{\"keys\":{\"Software\\\\K\":true}}",
    };
    for (const QByteArray& bytes : cases) {
        files.create(path, bytes);
        SettingsStore store(files, path);
        EXPECT_TRUE(store.wasDamaged()) << bytes.left(40).toStdString();
        EXPECT_FALSE(store.keyExists(key));
        EXPECT_EQ(files.read(path + u".damaged"_s), bytes);
        store.createKey(key);
        EXPECT_TRUE(store.setValue(key, u"A"_s, 1));
        EXPECT_FALSE(SettingsStore(files, path).wasDamaged());
    }
}

TEST_F(Settings, OtherTypesReadAsNeither) {
    files.create(path,
                 R"({"keys":{"Software\\K":{"a":true,"b":null,"c":[1],"d":1.5,"e":1e10,"f":7}},
                          "sections":{"Chart":{"Width":5}}})");
    const SettingsStore store(files, path);
    EXPECT_FALSE(store.wasDamaged());
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s})
        EXPECT_EQ(store.value(key, name), SettingValue(std::monostate())) << name.toStdString();
    EXPECT_EQ(store.value(key, u"f"_s), SettingValue(7));
    EXPECT_EQ(store.section(u"Chart"_s, u"Width"_s, u"x"_s), "x");
}

} // namespace
