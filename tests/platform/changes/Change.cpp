// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/platform/changes/Change.h"

#include "icons/IconFamily.h"
#include "platform/aliases/Aliases.h"
#include "platform/catalogue/FileCatalogue.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/FSSpec.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/samples.h"

#include <algorithm>
#include <filesystem>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace MWCore;

constexpr uint32_t kPassing = 0x50617373; // 'Pass'
constexpr UTCDateTime kDate = 4'000'000'000ULL * 65536;

FSRef referenceTo(const std::string &path) {
    FSRef ref;
    (void)FSPathMakeRef(path.c_str(), &ref);
    return ref;
}

OSStatus changeInfo(const std::string &path, void (*change)(FinderInfo &)) {
    return FSChangeFinderInfo(referenceTo(path), change);
}

FinderInfo infoOf(const std::string &path) {
    FinderInfo info;
    (void)readFinderInfo(path.c_str(), &info);
    return info;
}

OSStatus lock(const std::string &path) {
    FSCatalogInfo info;
    info.nodeFlags = kFSNodeLockedMask;
    return FSSetCatalogInfo(referenceTo(path), kFSCatInfoNodeFlags, info);
}

OSStatus setDate(const std::string &path) {
    FSCatalogInfo info;
    info.contentModDate = kDate;
    return FSSetCatalogInfo(referenceTo(path), kFSCatInfoContentMod, info);
}

FSCatalogInfo catalogueOf(const std::string &path, FSCatalogInfoBitmap whichInfo) {
    FSCatalogInfo info;
    (void)FSGetCatalogInfoForPath(path.c_str(), whichInfo, &info);
    return info;
}

OSStatus addResource(const std::string &path) {
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(referenceTo(path), fsRdWrPerm, &status);
    return fork ? (void)fork->addResource(kPassing, 1, {}, "data"), fork->close() : status;
}

bool hasResource(const std::string &path) {
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(referenceTo(path), fsRdPerm, &status);
    return fork && fork->getResource(kPassing, 1) == "data";
}

OSStatus makeAlias(const std::string &path, AliasFileForm form) {
    return FSCreateAliasFile(referenceTo("/usr"), path.c_str(), form);
}

bool leadsToUsr(const std::string &path) {
    FSRef ref = referenceTo(path);
    bool isFolder = false;
    bool isAlias = false;
    return FSResolveAliasFile(&ref, AliasSteps::All, &isFolder, &isAlias) == noErr && isAlias &&
           ref.path == "/usr";
}

bool hasEmptyFork(const std::string &path) {
    OSStatus status = noErr;
    return readResourceFork(path.c_str(), &status).has_value();
}

QString textOf(const std::string &path) {
    return QString::fromStdString(path);
}

std::string folderOf(const std::string &path) {
    return std::filesystem::path(path).parent_path();
}

/// An icon that differs from that of any other @p colour.
IconFamily::Ptr iconOf(char colour) {
    IconFamilyHandle bytes;
    (void)SetIconFamilyData(bytes, fourCharCode("ics8"), QByteArray(256, colour));
    return IconFamily::initWithData(bytes);
}

constexpr char kOldColour = 1;
constexpr char kNewColour = 2;

bool hasIcon(const std::string &path, char colour) {
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(referenceTo(path), fsRdPerm, &status);
    return fork && fork->getResource(samples::kIcns, -16455) == iconOf(colour)->data();
}

bool hasIconFlag(const std::string &path) {
    return infoOf(path).flags.testFlag(kHasCustomIcon);
}

std::string iconFileOf(const std::string &folder) {
    return folder + "/Icon\r";
}

OSStatus setFolderIcon(const std::string &path) {
    return iconOf(kNewColour)->setAsCustomIconForDirectory(textOf(folderOf(path))) ? noErr : ioErr;
}

/// A resource that no attribute has room for.
OSStatus addLongResource(const std::string &path) {
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(referenceTo(path), fsRdWrPerm, &status);
    const QByteArray data(70'000, 'd');
    return fork ? (void)fork->addResource(kPassing, 2, {}, data), fork->close() : status;
}

bool hasLongResource(const std::string &path) {
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(referenceTo(path), fsRdPerm, &status);
    return fork && fork->getResource(kPassing, 2) == QByteArray(70'000, 'd');
}

constexpr auto kNone = Change::Item::None;
constexpr auto kPlain = Change::Item::Plain;
constexpr auto kWithSidecar = Change::Item::WithSidecar;
constexpr auto kInFolderWithIcon = Change::Item::InFolderWithIcon;

auto label = [](const std::string &path) {
    return changeInfo(path, [](FinderInfo &info) { info.setLabelNumber(2); });
};
auto isLabelled = [](const std::string &path) { return infoOf(path).labelNumber() == 2; };

const Change kChanges[] = {
    {"label", label, isLabelled, kPlain},
    {"label in a sidecar", label, isLabelled, kWithSidecar},
    {"type", [](auto &path) { return changeInfo(path, [](auto &info) { info.type = kPassing; }); },
     [](auto &path) { return infoOf(path).type == kPassing; }, kWithSidecar},
    {"creator",
     [](auto &path) { return changeInfo(path, [](auto &info) { info.creator = kPassing; }); },
     [](auto &path) { return infoOf(path).creator == kPassing; }, kPlain},
    {"invisible",
     [](auto &path) {
         return changeInfo(path, [](auto &info) { info.flags.setFlag(kIsInvisible, true); });
     },
     [](auto &path) { return infoOf(path).flags.testFlag(kIsInvisible); }, kWithSidecar},
    {"remove information", [](auto &path) { return removeFinderInfo(path.c_str()); },
     [](auto &path) { return infoOf(path).isNone(); }, kWithSidecar},
    {"lock", lock,
     [](auto &path) {
         return catalogueOf(path, kFSCatInfoNodeFlags).nodeFlags.testFlag(kFSNodeLockedMask);
     },
     kPlain},
    {"date", setDate,
     [](auto &path) { return catalogueOf(path, kFSCatInfoContentMod).contentModDate == kDate; },
     kPlain},
    {"fork", [](auto &path) { return writeResourceFork(path.c_str(), samples::resourceFork()); },
     [](auto &path) { return hasWholeFork(path); }, kPlain},
    {"resource", addResource, hasResource, kWithSidecar},
    {"empty fork",
     [](auto &path) {
         const std::filesystem::path item = path;
         return FSCreateResFile(referenceTo(item.parent_path()), item.filename().c_str(), nullptr);
     },
     hasEmptyFork, kNone},
    {"resource that the attribute has no room for", addLongResource, hasLongResource,
     Change::Item::WithForkAttribute},
    {"icon",
     [](auto &path) {
         return iconOf(kNewColour)->setAsCustomIconForFile(textOf(path)) ? noErr : ioErr;
     },
     [](auto &path) { return hasIcon(path, kNewColour) && hasIconFlag(path); }, kWithSidecar},
    {"no icon",
     [](auto &path) { return IconFamily::removeCustomIconFromFile(textOf(path)) ? noErr : ioErr; },
     [](auto &path) { return !hasIcon(path, kOldColour) && !hasIconFlag(path); }, kWithSidecar},
    {"first icon of a folder", setFolderIcon,
     [](auto &path) {
         return hasIcon(iconFileOf(folderOf(path)), kNewColour) && hasIconFlag(folderOf(path));
     },
     kPlain},
    {"icon of a folder", setFolderIcon,
     [](auto &path) {
         return hasIcon(iconFileOf(folderOf(path)), kNewColour) && hasIconFlag(folderOf(path));
     },
     kInFolderWithIcon},
    {"no icon of a folder",
     [](auto &path) {
         return IconFamily::removeCustomIconFromDirectory(textOf(folderOf(path))) ? noErr : fnfErr;
     },
     [](auto &path) {
         const std::string folder = folderOf(path);
         return !std::filesystem::exists(iconFileOf(folder)) &&
                !std::filesystem::exists(folder + "/._Icon\r") && !hasIconFlag(folder);
     },
     kInFolderWithIcon},
    {"alias", [](auto &path) { return makeAlias(path, AliasFileForm::DesktopEntry); }, leadsToUsr,
     kNone},
    {"alias of the classic form", [](auto &path) { return makeAlias(path, AliasFileForm::Finder); },
     leadsToUsr, kNone},
    {"empty file",
     [](auto &path) {
         FSRef ref;
         const QString text = stringWithFileSystemRepresentation(path.c_str());
         return CarbonFSRefCreation::getFSRef(text, &ref, true) ? noErr : fnfErr;
     },
     [](auto &path) { return std::filesystem::exists(path); }, kNone},
};

} // namespace

std::span<const Change> allChanges() {
    return kChanges;
}

const Change &changeNamed(const std::string &what) {
    return *std::ranges::find(kChanges, what, &Change::what);
}

void makeItem(const std::string &path, Change::Item item) {
    const std::filesystem::path file = path;
    if (item != Change::Item::None)
        raw::write(path, "content");
    if (item == Change::Item::WithSidecar)
        raw::write(file.parent_path() / ("._" + file.filename().string()), samples::sidecar(0));
    if (item == Change::Item::WithForkAttribute)
        raw::setAttribute(path, "user.com.apple.ResourceFork", samples::resourceFork());
    if (item == Change::Item::InFolderWithIcon)
        (void)iconOf(kOldColour)->setAsCustomIconForDirectory(textOf(folderOf(path)));
}

void unlock(const std::string &path) {
    const int item = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    int flags = 0;
    if (ioctl(item, FS_IOC_GETFLAGS, &flags) == 0 && (flags & FS_IMMUTABLE_FL)) {
        flags &= ~FS_IMMUTABLE_FL;
        ioctl(item, FS_IOC_SETFLAGS, &flags);
    }
    close(item);
}

bool hasWholeFork(const std::string &path) {
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(referenceTo(path), fsRdPerm, &status);
    return fork && fork->getResource(samples::kText, 128) == "hello";
}

bool isIntact(const std::string &path, Change::Item item) {
    const std::string iconFile = iconFileOf(folderOf(path));
    switch (item) {
    case Change::Item::WithSidecar: {
        const auto sidecar = raw::content(folderOf(path) + "/" + kSidecarName);
        return hasWholeFork(path) && sidecar && sidecar->contains("keep me");
    }
    case Change::Item::WithForkAttribute:
        return hasWholeFork(path);
    case Change::Item::InFolderWithIcon:
        return hasIcon(iconFile, kOldColour) || hasIcon(iconFile, kNewColour) ||
               !hasIconFlag(folderOf(path));
    default:
        return true;
    }
}

QByteArray listForUser4() {
    return samples::hex("02000000"
                        "01000600ffffffff"
                        "0200060004000000"
                        "04000600ffffffff"
                        "10000600ffffffff"
                        "20000000ffffffff");
}
