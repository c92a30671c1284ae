// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/itemicons/SampleHome.h"

#include "benchmarks/support/check.h"
#include "icons/IconFamily.h"
#include "icons/IconFamilyBuilder.h"
#include "platform/catalogue/FileCatalogue.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include <QColor>
#include <QImage>

namespace {

namespace fs = std::filesystem;
using MWCore::stringWithFileSystemRepresentation;

enum class Kind { File, Folder, LinkToFile, LinkToFolder, CustomIcon, Bundle, Locked };

struct Row {
    int share; ///< of 500 items
    Kind kind;
    const char *suffix;
    const char *content = "content\n";
};

constexpr const char *kExecutable = "\177ELF\2\1\1\0\0\0\0\0\0\0\0\0\2\0>\0\1\0\0\0";
constexpr const char *kEntry =
    "[Desktop Entry]\nType=Application\nName=Files\nIcon=system-file-manager\nExec=true\n";

// clang-format off
constexpr Row kRows[] = {
    {110, Kind::File, ".jpg"},   {40, Kind::File, ".png"},   {10, Kind::File, ".gif"},
    {10, Kind::File, ".webp"},   {5, Kind::File, ".svg"},
    {25, Kind::File, ".pdf"},    {15, Kind::File, ".odt"},   {15, Kind::File, ".docx"},
    {10, Kind::File, ".xlsx"},   {5, Kind::File, ".pptx"},   {15, Kind::File, ".txt"},
    {10, Kind::File, ".md"},     {5, Kind::File, ".csv"},    {10, Kind::File, ".html"},
    {15, Kind::File, ".cpp"},    {10, Kind::File, ".h"},     {15, Kind::File, ".py"},
    {5, Kind::File, ".js"},      {5, Kind::File, ".json"},   {5, Kind::File, ".xml"},
    {5, Kind::File, ".sh"},      {3, Kind::File, ".TXT"},    {2, Kind::File, "~"},
    {20, Kind::File, ".mp3"},    {5, Kind::File, ".flac"},   {10, Kind::File, ".mp4"},
    {5, Kind::File, ".mkv"},
    {10, Kind::File, ".zip"},    {5, Kind::File, ".tar.gz"}, {5, Kind::File, ".tar.xz"},
    {3, Kind::File, ".deb"},     {2, Kind::File, ".iso"},
    {10, Kind::File, ""},        {5, Kind::File, "", "#!/bin/sh\necho\n"},
    {3, Kind::File, "", kExecutable},                        {2, Kind::File, ".unknown"},
    {40, Kind::Folder, ""},      {12, Kind::LinkToFile, ""}, {4, Kind::LinkToFolder, ""},
    {4, Kind::File, ".desktop", kEntry},
    {1, Kind::CustomIcon, ".txt"}, {1, Kind::Bundle, ".app"}, {3, Kind::Locked, ".txt"},
};
// clang-format on

constexpr const char *kUserFolders =
    "XDG_DESKTOP_DIR=\"$HOME/Desktop\"\nXDG_DOCUMENTS_DIR=\"$HOME/Documents\"\n"
    "XDG_DOWNLOAD_DIR=\"$HOME/Downloads\"\nXDG_MUSIC_DIR=\"$HOME/Music\"\n"
    "XDG_PICTURES_DIR=\"$HOME/Pictures\"\nXDG_VIDEOS_DIR=\"$HOME/Videos\"\n";
constexpr const char *kLinkTarget = "Documents/report.pdf";
constexpr const char *kUserFolderNames[] = {"Desktop", "Documents", "Downloads",
                                            "Music",   "Pictures",  "Videos"};

void write(const fs::path &path, std::string_view content) {
    fs::create_directories(path.parent_path());
    std::ofstream file(path);
    check((file << content << std::flush).good(), path.c_str());
}

/// The family of a square in a colour of its own.
MWCore::IconFamily::Ptr familyOf(long number) {
    constexpr int kHues = 360;
    constexpr int kStep = 37;
    QImage image(256, 256, QImage::Format_RGBA8888);
    image.fill(QColor::fromHsv(static_cast<int>(number / 500 * kStep % kHues), 200, 220));
    MWCore::IconFamilyBuilder builder;
    builder.addPicture(MWCore::Picture(image));
    MWCore::IconFamily::Ptr family = builder.build();
    require(family != nullptr, "no icon family was built");
    return family;
}

void makeBundle(const fs::path &path, long number) {
    write(path / "Contents/Info.plist",
          "<plist version=\"1.0\"><dict><key>CFBundlePackageType</key><string>APPL</string>"
          "<key>CFBundleExecutable</key><string>run</string>"
          "<key>CFBundleIconFile</key><string>icon</string></dict></plist>");
    write(path / "Contents/MacOS/run", "#!/bin/sh\n");
    fs::permissions(path / "Contents/MacOS/run", fs::perms::owner_all);
    const fs::path icon = path / "Contents/Resources/icon.icns";
    write(icon, "");
    require(familyOf(number)->writeToFile(stringWithFileSystemRepresentation(icon.c_str())),
            "an icon family cannot be written");
}

/// Locks or unlocks a file, if the process may do so.
void setNodeFlags(const fs::path &path, MWCore::FSNodeFlags flags) {
    MWCore::FSRef ref;
    MWCore::FSCatalogInfo info;
    info.nodeFlags = flags;
    if (MWCore::FSPathMakeRef(path.c_str(), &ref) == MWCore::noErr)
        (void)MWCore::FSSetCatalogInfo(ref, MWCore::kFSCatInfoNodeFlags, info);
}

const Row &rowOf(long number) {
    constexpr long kShares = 500;
    constexpr long kSpread = 207; // has no divisor in common with the shares: kinds alternate
    long share = number * kSpread % kShares;
    return *std::ranges::find_if(kRows, [&share](const Row &row) {
        share -= row.share;
        return share < 0;
    });
}

fs::path nameOf(long number) {
    const Row &row = rowOf(number);
    char name[64];
    std::snprintf(name, sizeof name, "holiday in may %06ld%s", number, row.suffix);
    return name;
}

void makeItem(const fs::path &home, long number) {
    const Row &row = rowOf(number);
    const fs::path path = home / nameOf(number);
    switch (row.kind) {
    case Kind::Folder:
        fs::create_directory(path);
        return;
    case Kind::LinkToFile:
        fs::create_symlink(kLinkTarget, path);
        return;
    case Kind::LinkToFolder:
        fs::create_symlink("Documents", path);
        return;
    case Kind::Bundle:
        makeBundle(path, number);
        return;
    case Kind::File:
    case Kind::CustomIcon:
    case Kind::Locked:
        write(path, row.content);
    }
    if (row.kind == Kind::Locked)
        setNodeFlags(path, MWCore::kFSNodeLockedMask);
    if (row.kind == Kind::CustomIcon)
        require(familyOf(number)->setAsCustomIconForFile(
                    stringWithFileSystemRepresentation(path.c_str())),
                "a custom icon cannot be set");
}

} // namespace

SampleHome::SampleHome(long items) {
    write(path() / ".config/user-dirs.dirs", kUserFolders);
    for (const char *const name : kUserFolderNames)
        fs::create_directory(path() / name);
    write(path() / kLinkTarget, "%PDF-1.4\n");
    const long generated = items - static_cast<long>(std::size(kUserFolderNames)) - 1;
    for (long number = 0; number < generated; ++number)
        makeItem(path(), number);
}

SampleHome::~SampleHome() {
    for (const auto &entry : fs::directory_iterator(path()))
        if (entry.is_regular_file())
            setNodeFlags(entry.path(), {});
}
