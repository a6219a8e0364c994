#include "platform/escaped_fields.h"

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

TEST(EscapedFields, WhatIsWrittenReadsBack) {
    const QList<QStringList> cases = {
        {QString()},
        {QString(), QString()},
        {"O'Neil's site", "7", "1:05"},
        {"Alpha; part 2", ";", ";;", "\\", "\\\\", "\\;", ";\\"},
        {"C:\\work\\", "next"},
        {"\\", ""},
        {QString::fromUtf8("Zo\u00eb; \u2603"), "\u2028"},
    };
    for (const QStringList& fields : cases) {
        const QString line = JoinFields(fields);
        EXPECT_EQ(SplitFields(line), fields) << line.toStdString();
        EXPECT_FALSE(line.contains('\n'));
    }
}

TEST(EscapedFields, TheFormOnDisk) {
    EXPECT_EQ(JoinFields({"Alpha; part 2", "a\\b", "7"}), "Alpha\\; part 2;a\\\\b;7");
    EXPECT_EQ(JoinFields({"one\ntwo\r\nthree\rfour", "\r\r\n"}), "one two three four;  ");
}

TEST(EscapedFields, LinesWithoutEscapesKeepTheirBackslashes) {
    EXPECT_EQ(SplitFields("C:\\work\\new;R&D"), QStringList({"C:\\work\\new", "R&D"}));
    EXPECT_EQ(SplitFields("ends in \\"), QStringList({"ends in \\"}));
    EXPECT_EQ(SplitFields(""), QStringList({""}));
    EXPECT_EQ(SplitFields(";"), QStringList({"", ""}));
}

} // namespace
} // namespace kelvrane
