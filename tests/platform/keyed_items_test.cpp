#include "platform/error.h"
#include "platform/keyed_items.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace kelvrane;
using namespace Qt::StringLiterals;

namespace {

KeyedItem keyed(const QString& key, const QString& value = {}) {
    return {.key = key, .caption = key, .value = value};
}

QList<KeyedItem> keyedList(const QString& keys) {
    QList<KeyedItem> items;
    for (const QChar key : keys) {
        if (key == u'-')
            items.append({.kind = ItemKind::Separator});
        else
            items.append(keyed(key));
    }
    return items;
}

TEST(KeyedItems, AWriteOfTheModuleOnlySignalsViewsAndOnlyWhenSomethingChanged) {
    KeyedItems items({keyed(u"A"_s, u"1"_s)});
    int changes = 0;
    int userSignals = 0;
    QObject::connect(&items, &KeyedItems::dataChanged, [&] { ++changes; });
    QObject::connect(&items, &KeyedItems::Edited, [&] { ++userSignals; });

    items.setValue(u"A"_s, u"1"_s);
    EXPECT_EQ(changes, 0);
    items.setValue(u"A"_s, u"2"_s);
    items.setEnabled(u"A"_s, false);
    items.setChoices(u"A"_s, {u"x"_s});
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(userSignals, 0);
    EXPECT_EQ(items.value(u"A"_s), "2");
    EXPECT_THROW(items.setValue(u"B"_s, {}), RuntimeError);
    EXPECT_THROW(items.item({}), RuntimeError);
}

TEST(KeyedItems, TheUsersDoingsReachOnlyWhatIsInReach) {
    KeyedItems items({{.key = u"D"_s,
                       .caption = u"d"_s,
                       .kind = ItemKind::DropDown,
                       .choices = {u"x"_s, u"y"_s}},
                      {.key = u"M"_s, .caption = u"m"_s, .kind = ItemKind::SubMenu},
                      {.key = u"S"_s, .caption = u"s"_s, .parent = u"M"_s}});
    QStringList seen;
    QObject::connect(&items, &KeyedItems::Edited,
                     [&](const QString& key, const QString& value) { seen << key + "=" + value; });
    QObject::connect(&items, &KeyedItems::Chosen,
                     [&](const QString& key, int place) { seen << key + QString::number(place); });
    QObject::connect(&items, &KeyedItems::Clicked, [&](const QString& key) { seen << key; });

    items.choose(u"D"_s, 1);
    items.choose(u"D"_s, 2);
    items.toggle(u"S"_s);
    EXPECT_EQ(seen, (QStringList{u"D1"_s, u"D=y"_s, u"S"_s}));

    seen.clear();
    items.setVisible(u"D"_s, false);
    items.setEnabled(u"M"_s, false);
    items.edit(u"D"_s, u"z"_s);
    items.click(u"M"_s);
    items.click(u"S"_s);
    items.press(u"absent"_s);
    EXPECT_EQ(seen, QStringList());
    EXPECT_EQ(items.value(u"D"_s), "y");
}

TEST(KeyedItems, ARefillSignalsTheDifferenceAlone) {
    KeyedItems items(keyedList(u"ABC"_s));
    QAbstractItemModelTester tester(&items, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QPersistentModelIndex c(items.index(2));
    int structure = 0;
    int changes = 0;
    QObject::connect(&items, &KeyedItems::rowsInserted, [&] { ++structure; });
    QObject::connect(&items, &KeyedItems::rowsRemoved, [&] { ++structure; });
    QObject::connect(&items, &KeyedItems::rowsMoved, [&] { ++structure; });
    QObject::connect(&items, &KeyedItems::modelReset, [&] { ++structure; });
    QObject::connect(&items, &KeyedItems::dataChanged, [&] { ++changes; });

    QList<KeyedItem> next = keyedList(u"ABC"_s);
    next[1].value = u"new"_s;
    items.refill(next);
    EXPECT_EQ(structure, 0);
    EXPECT_EQ(changes, 1);

    items.refill(keyedList(u"XYCAB"_s)); // two come in, one moves up
    EXPECT_EQ(c.row(), 2);
    items.refill(keyedList(u"C"_s));
    EXPECT_EQ(c.row(), 0);
    items.refill({});
    EXPECT_FALSE(c.isValid());
}

TEST(KeyedItems, AnyRefillEndsWithTheGivenItems) {
    std::mt19937 random(7);
    KeyedItems items;
    QAbstractItemModelTester tester(&items, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int round = 0; round < 2000; ++round) {
        QString keys = u"ABCDEF---"_s;
        std::shuffle(keys.begin(), keys.end(), random);
        keys.truncate(static_cast<int>(random() % 10));
        if (round % 10 == 0)
            keys += u"AA"; // a key twice is no reason to hang
        items.refill(keyedList(keys));
        ASSERT_EQ(items.items(), keyedList(keys)) << keys.toStdString();
    }
}

} // namespace
