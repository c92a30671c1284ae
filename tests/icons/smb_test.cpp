// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Custom icons as a Mac sees and sets them on a share of Samba's vfs_fruit.
#include "icons/IconFamily.h"
#include "platform/catalogue/ItemMetadata.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/formats/BigEndian.h"
#include "tests/icons/SambaShare.h"
#include "tests/platform/samples.h"

#include <filesystem>
#include <utility>

#include <gtest/gtest.h>

using namespace MWCore;

namespace {

constexpr int16_t kIconId = -16455;
constexpr uint16_t kIconFlag = 0x0400;
constexpr uint16_t kLabelFlags = 0x0006;
constexpr qsizetype kFlagsInAfpInfo = 16 + 8;

/// The name "Icon\r" as a Mac sends it.
const std::string kIconFile = "folder/Icon\uF00D";

const struct {
    const char *what, *options;
    bool hasForksInAttributes;
} kShares[] = {
    {"Finder information in a record, forks in sidecars", "fruit:encoding = native\n", false},
    {"both in streams",
     "fruit:encoding = native\nfruit:metadata = stream\nfruit:resource = stream\n", true},
};

/// An icon that is short enough for an attribute and differs from that of any other @p colour.
IconFamily::Ptr iconOf(char colour) {
    IconFamilyHandle bytes;
    EXPECT_EQ(SetIconFamilyData(bytes, fourCharCode("ics8"), QByteArray(256, colour)), noErr);
    return IconFamily::initWithData(bytes);
}

QByteArray forkWith(const IconFamily &icon) {
    const auto fork = ResourceFile::makeUnattached();
    EXPECT_EQ(fork->addResource(kIconFamilyType, kIconId, {}, icon.data()), noErr);
    return fork->toBytes().value_or(QByteArray());
}

/// What a client sees of an item: its Finder flags, and whether its fork contains the icon.
using Seen = std::pair<uint16_t, bool>;
Seen seenBy(const SambaShare &share, const std::string &name, const IconFamily &icon) {
    const auto fork = share.read(name + ":AFP_Resource").value_or(QByteArray());
    const auto info = share.read(name + ":AFP_AfpInfo").value_or(QByteArray());
    return {numberAt<uint16_t>(info, kFlagsInAfpInfo).value_or(0), fork.contains(icon.data())};
}

bool hasIconHere(const std::string &path, const IconFamily &icon) {
    FSRef ref;
    OSStatus status = FSPathMakeRef(path.c_str(), &ref);
    const auto fork = status == noErr ? ResourceFile::open(ref, fsRdPerm, &status) : nullptr;
    return fork && fork->getResource(kIconFamilyType, kIconId) == icon.data();
}

uint16_t flagsHere(const std::string &path) {
    const auto info = ItemMetadata::read(path.c_str()).finderInfo();
    return static_cast<uint16_t>(info ? info->flags.toInt() : 0);
}

} // namespace

TEST(IconsOverSmb, AreTheSameHereAndThere) {
    for (const auto &row : kShares) {
        SCOPED_TRACE(row.what);
        const SambaShare share(row.options);
        if (!share.failureReason().empty())
            GTEST_SKIP() << share.failureReason();
        const std::string file = share.at("file");
        const std::string folder = share.at("folder");
        const QString filePath = QString::fromStdString(file);
        const QString folderPath = QString::fromStdString(folder);
        std::filesystem::create_directory(folder);
        const auto theirs = iconOf(1);
        const auto ours = iconOf(2);
        const uint16_t flags = kIconFlag | kLabelFlags;
        for (const std::string &name : {std::string("file"), kIconFile}) {
            share.write(name + ":AFP_Resource", forkWith(*theirs));
            share.write(name + ":AFP_AfpInfo", samples::afpInfo(flags, false));
        }
        share.write("folder:AFP_AfpInfo", samples::afpInfo(flags, false));
        EXPECT_TRUE(hasIconHere(file, *theirs) && hasIconHere(folder + "/Icon\r", *theirs));
        EXPECT_EQ(flagsHere(file), flags);
        EXPECT_EQ(flagsHere(folder), flags);

        ASSERT_TRUE(ours->setAsCustomIconForFile(filePath));
        ASSERT_TRUE(ours->setAsCustomIconForDirectory(folderPath));
        EXPECT_EQ(seenBy(share, "file", *ours), Seen(flags, true));
        EXPECT_EQ(seenBy(share, "folder", *ours), Seen(flags, false));
        EXPECT_EQ(seenBy(share, kIconFile, *ours), Seen(0, !row.hasForksInAttributes));

        ASSERT_TRUE(IconFamily::removeCustomIconFromFile(filePath));
        ASSERT_TRUE(IconFamily::removeCustomIconFromDirectory(folderPath));
        EXPECT_EQ(seenBy(share, "file", *ours), Seen(kLabelFlags, false));
        EXPECT_EQ(seenBy(share, "folder", *ours), Seen(kLabelFlags, false));
        EXPECT_EQ(share.read(kIconFile), std::nullopt);

        ASSERT_TRUE(ours->setAsCustomIconForFile(filePath)); // now the sidecar is ours
        EXPECT_EQ(seenBy(share, "file", *ours), Seen(flags, !row.hasForksInAttributes));
        EXPECT_EQ(flagsHere(file), flags) << "Samba has changed it";
    }
}
