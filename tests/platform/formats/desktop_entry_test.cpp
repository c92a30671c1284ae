// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/DesktopEntry.h"

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

using MWCore::DesktopEntry;
constexpr auto kMain = DesktopEntry::kMainGroup;

struct ValueRow {
    const char *what;
    const char *text;
    std::optional<QString> value; ///< of the key K in the main group
};
const ValueRow kValueRows[] = {
    {"plain", "[Desktop Entry]\nK=v", "v"},
    {"blanks around", "[Desktop Entry]\n \tK \t= v\n", "v"},
    {"the first = counts", "[Desktop Entry]\nK=a=b", "a=b"},
    {"escapes", "[Desktop Entry]\nK=\\sa\\nb\\tc\\rd\\\\e\\q\\", " a\nb\tc\rd\\e\\q\\"},
    {"CR LF", "[Desktop Entry]\r\nK=v\r\n", "v"},
    {"empty", "[Desktop Entry]\nK=", ""},
    {"invalid UTF-8", "[Desktop Entry]\nK=a\xFF", QString::fromUtf16(u"a\xDCFF")},
    {"twice", "[Desktop Entry]\nK=1\n[O]\nK=2\n[Desktop Entry]\nK=3", "3"},
    {"in a comment", "[Desktop Entry]\n#K=v", std::nullopt},
    {"before the group", "K=v\n[Desktop Entry]", std::nullopt},
    {"in another group", "[Desktop Entry]\n[Desktop Action K]\nK=v", std::nullopt},
    {"in a damaged group", "[Desktop Entry]\n[Other\nK=v", std::nullopt},
    {"another key", "[Desktop Entry]\nKK=v\nK[de]=v\nk=v\n=v\nK\n", std::nullopt},
};

TEST(DesktopEntry, FindsTheValue) {
    for (const ValueRow &row : kValueRows)
        EXPECT_EQ(DesktopEntry(row.text).value(kMain, "K"), row.value) << row.what;
}

struct LocaleRow {
    const char *locale;
    const char *keys;
    const char *value;
};
constexpr LocaleRow kLocaleRows[] = {
    {"sr_YU@Latn", "K=d\nK[sr_YU]=lc\nK[sr@Latn]=lm\nK[sr]=l\nK[sr_YU@Latn]=lcm\nK[de]=x", "lcm"},
    {"sr_YU.UTF-8@Latn", "K[sr]=l\nK[sr_YU]=lc\nK[sr@Latn]=lm\nK=d", "lc"},
    {"sr_YU@Latn", "K[sr]=l\nK[sr@Latn]=lm\nK=d", "lm"},
    {"sr_YU@Latn", "K[sr]=l\nK=d", "l"},
    {"sr", "K=d\nK[sr_YU]=lc\nK[sr@Latn]=lm", "d"},
    {"C", "K=d\nK[sr]=l", "d"},
    {"", "K[]=x\nK=d", "x"},
};

TEST(DesktopEntry, ChoosesTheLocaleInTheStandardsOrder) {
    for (const LocaleRow &row : kLocaleRows) {
        const DesktopEntry entry(QByteArray("[Desktop Entry]\n") + row.keys);
        EXPECT_EQ(entry.localizedValue(kMain, "K", row.locale), row.value)
            << row.locale << ": " << row.keys;
    }
}

TEST(DesktopEntry, SplitsListsAndReadsBooleans) {
    const DesktopEntry entry("[Desktop Entry]\nA=a;b\\;c;\nB=;a\\\\;\\s\nC=\nT=true\nF=false\nN=1");
    EXPECT_EQ(entry.list(kMain, "A"), QStringList({"a", "b;c"}));
    EXPECT_EQ(entry.list(kMain, "B"), QStringList({"", "a\\", " "}));
    EXPECT_EQ(entry.list(kMain, "C"), QStringList());
    EXPECT_EQ(entry.list(kMain, "D"), QStringList());
    EXPECT_EQ(entry.boolean(kMain, "T"), true);
    EXPECT_EQ(entry.boolean(kMain, "F"), false);
    EXPECT_EQ(entry.boolean(kMain, "N"), std::nullopt);
}

struct EditRow {
    const char *what;
    const char *before;
    const char *set;     ///< after K was set to "new"
    const char *removed; ///< after K was removed
};
constexpr EditRow kEditRows[] = {
    {"empty", "", "[Desktop Entry]\nK=new\n", ""},
    {"no line end", "[Desktop Entry]\nA=1", "[Desktop Entry]\nA=1\nK=new", "[Desktop Entry]\nA=1"},
    {"another group, no line end", "[O]", "[O]\n[Desktop Entry]\nK=new\n", "[O]"},
    {"in place", "# c\n[Desktop Entry]\n K = \told\\n\r\nK[de]=alt\n\n[O]\nK=1\n",
     "# c\n[Desktop Entry]\n K = \tnew\r\nK[de]=alt\n\n[O]\nK=1\n",
     "# c\n[Desktop Entry]\nK[de]=alt\n\n[O]\nK=1\n"},
    {"at the end of the group", "[Desktop Entry]\r\nA=\xFF\r\n\r\n# c\r\n[O]\r\nK=1\r\n",
     "[Desktop Entry]\r\nA=\xFF\r\nK=new\r\n\r\n# c\r\n[O]\r\nK=1\r\n",
     "[Desktop Entry]\r\nA=\xFF\r\n\r\n# c\r\n[O]\r\nK=1\r\n"},
    {"twice", "[Desktop Entry]\nK=1\n[O]\n[Desktop Entry]\nK=2",
     "[Desktop Entry]\nK=1\n[O]\n[Desktop Entry]\nK=new",
     "[Desktop Entry]\n[O]\n[Desktop Entry]\n"},
};

TEST(DesktopEntry, ChangesNothingButTheKey) {
    for (const EditRow &row : kEditRows) {
        DesktopEntry set{QByteArray(row.before)};
        EXPECT_TRUE(set.setValue(kMain, "K", "new")) << row.what;
        EXPECT_EQ(set.toBytes(), row.set) << row.what;
        DesktopEntry removed{QByteArray(row.before)};
        removed.removeKey(kMain, "K");
        EXPECT_EQ(removed.toBytes(), row.removed) << row.what;
    }
}

TEST(DesktopEntry, RefusesWhatItCouldNotReadBack) {
    const QByteArray before = "[Desktop Entry]\nA=1\n";
    DesktopEntry entry(before);
    for (const char *key : {"", " K", "K ", "#K", "[K", "K=", "K\nL", "K\r"})
        EXPECT_FALSE(entry.setValue(kMain, key, "v")) << key;
    for (const char *group : {"", "a]", "[a", "a\nb"})
        EXPECT_FALSE(entry.setValue(group, "K", "v")) << group;
    EXPECT_FALSE(entry.setValue(kMain, "K", QString(QChar(0))));
    EXPECT_EQ(entry.toBytes(), before);
}

TEST(DesktopEntry, WritesValidEntries) {
    const TemporaryFolder folder;
    DesktopEntry entry;
    EXPECT_TRUE(entry.setValue(kMain, "Type", "Link"));
    EXPECT_TRUE(entry.setValue(kMain, "Name", " Grün\t\\\n; "));
    EXPECT_TRUE(entry.setValue(kMain, "Name[de]", "Grün"));
    EXPECT_TRUE(entry.setValue(kMain, "URL", "file:///tmp/a%20b"));
    EXPECT_TRUE(entry.setValue("X-Ours", "Order", "1"));
    std::ofstream(folder.at("a.desktop")) << entry.toBytes().toStdString();
    const auto result = runProcess({"desktop-file-validate", folder.at("a.desktop")});
    EXPECT_EQ(result.status, 0) << result.output << entry.toBytes().toStdString();
}

TEST(DesktopEntry, ReadsManyLinesInOnePass) {
    for (const char *line : {"[a]\n", "K[x]=\n", "\\;\n", "[", ";"}) {
        DesktopEntry entry("[Desktop Entry]\n" + QByteArray(line).repeated(300'000));
        EXPECT_EQ(entry.value(kMain, "K"), std::nullopt);
        EXPECT_TRUE(entry.setValue(kMain, "K", "v"));
        entry.removeKey(kMain, "K[x]");
        EXPECT_EQ(entry.localizedValue(kMain, "K", "x"), "v");
    }
}

} // namespace
