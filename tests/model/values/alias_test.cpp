// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXAlias.h"
#include "tests/model/items.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using MWCore::MXAlias;

TEST(Alias, SurvivesAsBytes) {
    const TemporaryFolder folder;
    const std::string item = folder.file("caf\xC3\xA9 \xFF");
    QByteArray data;
    {
        const MXAlias::Ptr alias = MXAlias::aliasWithPath(text(item));
        ASSERT_TRUE(alias);
        data = alias->data();
    }
    const MXAlias::Ptr alias = MXAlias::aliasWithData(data);
    ASSERT_TRUE(alias);
    EXPECT_EQ(alias->path(), text(item));
    fs::rename(item, folder.at("renamed"));
    EXPECT_EQ(alias->path(), text(folder.at("renamed")));
    EXPECT_EQ(alias->data(), data) << "the record never changes";
    EXPECT_EQ(MXAlias::aliasWithPath("/")->path(), "/");
}

TEST(Alias, IsNullForAMissingItem) {
    const TemporaryFolder folder;
    (void)folder.link("dangling", "nowhere");
    (void)folder.file("file");
    const char16_t withNull[] = {u'/', 0};
    for (const QString &path :
         {QString(), QString(""), text(folder.at("missing")), text(folder.at("dangling")),
          text(folder.at("file/x")), QString::fromUtf16(withNull, 2)}) {
        EXPECT_FALSE(MXAlias::initWithPath(path)) << path.toStdString();
    }
    EXPECT_FALSE(MXAlias::_fsRefForPath(text(folder.at("missing"))));
    EXPECT_TRUE(MXAlias::_fsRefForPath(text(folder.at("dangling"))));
    EXPECT_FALSE(MXAlias::initWithData({}));
    for (const QByteArray &foreign : {QByteArray(""), QByteArray("no record"), QByteArray(5, 0)}) {
        const MXAlias::Ptr alias = MXAlias::initWithData(foreign);
        ASSERT_TRUE(alias);
        EXPECT_EQ(alias->data(), foreign);
        EXPECT_TRUE(alias->path().isNull());
    }
}

} // namespace
