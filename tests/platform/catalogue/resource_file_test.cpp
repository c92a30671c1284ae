// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/ResourceFile.h"
#include "platform/metadata/MetadataStore.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/references.h"
#include "tests/platform/samples.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace MWCore;

using samples::kIcns;
using samples::kText;
constexpr int16_t kCustomIcon = -16455;

std::unique_ptr<ResourceFile> opened(const std::string &path, ForkPermission permission) {
    OSStatus status = noErr;
    auto file = ResourceFile::open(refTo(path), permission, &status);
    EXPECT_EQ(file != nullptr, status == noErr);
    return file;
}

TEST(ResourceFiles, AreCreatedChangedAndRemovedWithTheLastResource) {
    const TemporaryFolder folder;
    FSRef made;
    EXPECT_EQ(FSCreateResFile(refTo(folder.path()), "new", &made), noErr);
    EXPECT_EQ(made.path, folder.at("new").c_str());
    EXPECT_EQ(FSCreateResFile(refTo(folder.path()), "new", nullptr), dupFNErr);
    EXPECT_EQ(FSCreateResFile(refTo(folder.path()), "a/b", nullptr), bdNamErr);
    auto file = opened(folder.at("new"), fsRdWrPerm);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->getResource(kIcns, kCustomIcon), std::nullopt);
    EXPECT_EQ(file->addResource(kIcns, kCustomIcon, {}, "an icon"), noErr);
    EXPECT_EQ(file->removeResource(kText, 1), resNotFound);
    EXPECT_EQ(opened(folder.at("new"), fsRdPerm)->getFirstResource(kIcns), std::nullopt)
        << "nothing is written before close()";
    EXPECT_EQ(file->close(), noErr);

    file = opened(folder.at("new"), fsRdPerm);
    EXPECT_EQ(file->getResource(kIcns, kCustomIcon), "an icon");
    EXPECT_EQ(file->addResource(kIcns, 1, {}, ""), permErr);
    EXPECT_EQ(file->removeResource(kIcns, kCustomIcon), permErr);
    file = opened(folder.at("new"), fsRdWrPerm);
    EXPECT_EQ(file->removeResource(kIcns, kCustomIcon), noErr);
    EXPECT_EQ(file->close(), noErr);
    EXPECT_FALSE(std::filesystem::exists(folder.at("._new")));
    OSStatus status = noErr;
    EXPECT_EQ(ResourceFile::open(made, fsRdPerm, &status), nullptr);
    EXPECT_EQ(status, resFNotFound);
}

TEST(ResourceFiles, AForkStaysInItsPlace) {
    const struct {
        const char *what;
        const char *attribute;
        QByteArray behind = {}; ///< the bytes after the fork
    } rows[] = {{"in an attribute", "user.com.apple.ResourceFork"},
                {"in another attribute", "user.org.netatalk.ResourceFork"},
                {"in a stream", "user.DosStream.AFP_Resource:$DATA", samples::zeros(1)},
                {"in a sidecar", nullptr}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const TemporaryFolder folder;
        const std::string item = folder.file("item");
        if (row.attribute)
            raw::setAttribute(item, row.attribute, samples::resourceFork() + row.behind);
        else
            raw::write(folder.at("._item"), samples::sidecar(0x000C));
        ForkSize size;
        EXPECT_EQ(resourceForkSize(item.c_str(), &size), noErr);
        EXPECT_EQ(size.logical, samples::resourceFork().size());
        EXPECT_GE(size.physical, size.logical);
        auto file = opened(item, fsRdWrPerm);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->getResource(kText, 128), "hello");
        EXPECT_EQ(file->addResource(kIcns, kCustomIcon, {}, "another icon"), noErr);
        EXPECT_EQ(file->close(), noErr);
        file = opened(item, fsRdPerm);
        EXPECT_EQ(file->getResource(kText, 128), "hello");
        EXPECT_EQ(file->getResource(kIcns, kCustomIcon), "another icon");
        EXPECT_EQ(std::filesystem::exists(folder.at("._item")), row.attribute == nullptr);
        if (row.attribute) {
            OSStatus status = noErr;
            const auto fork = readResourceFork(item.c_str(), &status);
            EXPECT_EQ(raw::attribute(item, row.attribute), fork.value_or("") + row.behind);
        }
    }
    const TemporaryFolder folder;
    raw::write(folder.at("._item"), samples::sidecar(0x000C));
    raw::write(folder.file("item"), "");
    auto file = opened(folder.at("item"), fsRdWrPerm);
    EXPECT_EQ(file->addResource(kIcns, 7, {}, "seven"), noErr);
    EXPECT_EQ(file->close(), noErr);
    const auto sidecar = raw::content(folder.at("._item"));
    EXPECT_EQ(sidecar->first(26 + 24 - 4), samples::sidecar(0x000C).first(26 + 24 - 4))
        << "all of the table but the fork's length";
    EXPECT_EQ(sidecar->sliced(50, 32), samples::finderInfo(0x000C));
    EXPECT_TRUE(sidecar->contains("user.mwcore.note") && sidecar->contains("keep me"));
}

TEST(ResourceFiles, ASparseForkTakesNoMemory) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    constexpr uint32_t kLength = 0xFFFFFF00;
    raw::write(folder.at("._item"), samples::hex("0005160700020000") + samples::zeros(16) +
                                        samples::number16(1) + samples::number32(2) +
                                        samples::number32(38) + samples::number32(kLength));
    std::filesystem::resize_file(folder.at("._item"), 38 + uintmax_t(kLength));
    OSStatus status = noErr;
    EXPECT_EQ(readResourceFork(item.c_str(), &status), std::nullopt);
    EXPECT_EQ(status, fileBoundsErr);
    ForkSize size;
    EXPECT_EQ(resourceForkSize(item.c_str(), &size), noErr);
    EXPECT_EQ(size.logical, kLength);

    const std::string other = folder.file("other");
    EXPECT_EQ(writeResourceFork(other.c_str(), QByteArray(256 << 20, 'f')), fileBoundsErr)
        << "it could not be read again afterwards";
    EXPECT_FALSE(std::filesystem::exists(folder.at("._other")));
}

TEST(ResourceFiles, WritersTakeTurns) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    constexpr int kRounds = 25;
    std::vector<pid_t> writers;
    for (int writer = 0; writer < 4; ++writer) {
        writers.push_back(fork());
        if (writers.back() != 0)
            continue;
        int failures = 0;
        for (int round = 0; round < kRounds; ++round)
            failures += writeResourceFork(item.c_str(), QByteArray(1000, 'x')) == noErr ? 0 : 1;
        _exit(failures);
    }
    for (const pid_t writer : writers) {
        int status = 0;
        waitpid(writer, &status, 0);
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

} // namespace
