// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/icon_sheet/SheetItems.h"

#include "icons/IconFamilyBuilder.h"
#include "model/item/MXFileSystemObject.h"
#include "platform/aliases/Aliases.h"
#include "platform/catalogue/FileCatalogue.h"
#include "platform/foundation/FileSystemText.h"

#include <MWCore/IconElements.h>
#include <MWCore/IconServices.h>

#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace MWCore;

namespace {

using RemoteTree = std::unique_ptr<mfs_fso, decltype(&mfs_fso_destroy_tree)>;

struct FileRow {
    const char *name;
    std::string_view content = {};
};
constexpr std::string_view kProgram("\x7F"
                                    "ELF\2\1\1\0\0\0\0\0\0\0\0\0\2\0\x3E\0\1\0\0\0",
                                    24);
/// Regular files that are recognised by their name or content.
constexpr FileRow kFiles[] = {
    {"text.txt", "text"},
    {"page.html"},
    {"script.sh", "#!/bin/sh\n"},
    {"image.jpeg"},
    {"song.ogg"},
    {"film.mp4"},
    {"archive.tar.gz"},
    {"paper.pdf"},
    {"letter.odt"},
    {"table.ods"},
    {"slides.odp"},
    {"drawing.odg"},
    {"template.ott"},
    {"font.ttf"},
    {"model.stl"},
    {"program", kProgram},
    {"library.so"},
    {"key.crt"},
    {"card.vcf"},
    {"date.ics"},
    {"mail.eml"},
    {"data.bin", "\1\2\3"},
    {"custom icon", "text"},
    {"Start.desktop", "[Desktop Entry]\nType=Application\nName=a\nExec=a\n"},
    {"web.desktop", "[Desktop Entry]\nType=Link\nName=a\nURL=https://example.org/\n"},
};
constexpr const char *kFolders[] = {
    "folder",    "Some.framework", "Bundle.app", "AppDir", "Desktop",   "Documents",
    "Downloads", "Music",          "Pictures",   "Public", "Templates", "Videos",
};
/// Other items, and two of the system's.
constexpr const char *kOthers[] = {
    "alias.desktop", "alias", "link to file", "link to folder", "link to nothing", "fifo", "socket",
    "/dev/null",     "/",
};
constexpr const char kUserFolders[] = R"(XDG_DESKTOP_DIR="$HOME/Desktop"
XDG_DOCUMENTS_DIR="$HOME/Documents"
XDG_DOWNLOAD_DIR="$HOME/Downloads"
XDG_MUSIC_DIR="$HOME/Music"
XDG_PICTURES_DIR="$HOME/Pictures"
XDG_PUBLICSHARE_DIR="$HOME/Public"
XDG_TEMPLATES_DIR="$HOME/Templates"
XDG_VIDEOS_DIR="$HOME/Videos"
)";
constexpr const char kInfo[] = "<plist><dict><key>CFBundlePackageType</key><string>APPL</string>"
                               "<key>CFBundleIconFile</key><string>icon</string></dict></plist>";
struct SystemRow {
    const char *label;
    uint32_t type;
};
/// Icons of places and devices that only some machines have.
constexpr SystemRow kSystemIcons[] = {
    {"trash", fourCharCode("trsh")},      {"full trash", fourCharCode("ftrh")},
    {"removable", fourCharCode("flpy")},  {"optical", fourCharCode("cddr")},
    {"flash card", fourCharCode("pcmc")}, {"server", fourCharCode("srvr")},
    {"network", fourCharCode("gnet")},    {"computer", fourCharCode("root")},
    {"mounted", fourCharCode("mntd")},
};

void check(bool isDone, const char *what) {
    if (!isDone)
        throw std::runtime_error(std::string("cannot make ") + what);
}

void makeSocket(const std::string &path) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    check(bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0, "socket");
    close(descriptor);
}

/// A red disc in all sizes.
IconFamily::Ptr discFamily() {
    QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor(0xC8, 0x3C, 0x50));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(image.rect().adjusted(16, 16, -16, -16));
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    check(image.save(&buffer, "PNG"), "picture");
    OSStatus status = noErr;
    const auto picture = Picture::fromBytes(png, &status);
    check(picture.has_value(), "picture");
    IconFamilyBuilder builder;
    builder.addPicture(*picture);
    return builder.build();
}

void makeAlias(const TemporaryFolder &home, const char *name, AliasFileForm form) {
    FSRef target;
    check(FSPathMakeRef(home.at("text.txt").c_str(), &target) == noErr &&
              FSCreateAliasFile(target, home.at(name).c_str(), form) == noErr,
          name);
}

MXFileSystemObject::Ptr itemAt(const std::string &path) {
    auto item = MXFileSystemObject::newFSOForLocalItem(stringWithFileSystemRepresentation(path));
    check(bool(item), path.c_str());
    item->identify();
    return item;
}

ItemIcon::Ptr iconOf(const std::string &path) {
    return itemAt(path)->iconForFSOUsingCached(false);
}

/// Whether the file could be locked or unlocked, which only some users and file systems can.
bool setLocked(const FSRef &file, FSNodeFlags flags) {
    FSCatalogInfo info;
    info.nodeFlags = flags;
    return FSSetCatalogInfo(file, kFSCatInfoNodeFlags, info) == noErr;
}

/// The icon of a file while it is locked.
SheetItem lockedItem(const TemporaryFolder &home) {
    const std::string path = home.write("locked.txt", "text");
    FSRef file;
    check(FSPathMakeRef(path.c_str(), &file) == noErr, path.c_str());
    const bool isLocked = setLocked(file, kFSNodeLockedMask);
    const auto item = itemAt(path);
    const auto icon = isLocked ? item->iconForFSOUsingCached(false) : item->fileIconWithLock();
    check(!isLocked || setLocked(file, {}), "unlocked file");
    return {"locked.txt", icon};
}

SheetItem remoteItem(const char *label, int32_t type) {
    const auto text = [](const char *value) { return strdup(value); };
    const RemoteTree record(mfs_fso_new(type, MFS_LOCATION_REMOTE, 755, text("Mar  4 17:45"), label,
                                        text("ann"), text("staff"), 2, 7, nullptr, "/"),
                            mfs_fso_destroy_tree);
    return {label,
            MXFileSystemObject::newFSOWithCStruct(record.get())->iconForFSOUsingCached(false)};
}

} // namespace

void makeItems(const TemporaryFolder &home) {
    for (const char *const folder : kFolders)
        (void)home.folder(folder);
    for (const FileRow &file : kFiles)
        (void)home.write(file.name, std::string(file.content));
    (void)home.write("user-dirs.dirs", kUserFolders);
    (void)home.write("AppDir/AppRun", "");
    (void)home.write("AppDir/a.desktop", "[Desktop Entry]\nType=Application\nName=a\nExec=a\n");
    (void)home.write("Bundle.app/Contents/Info.plist", kInfo);
    (void)home.folder("Bundle.app/Contents/Resources");
    (void)home.link("link to file", "text.txt");
    (void)home.link("link to folder", "folder");
    (void)home.link("link to nothing", "nothing");
    (void)home.fifo("fifo");
    makeSocket(home.at("socket"));
    makeAlias(home, "alias.desktop", AliasFileForm::DesktopEntry);
    makeAlias(home, "alias", AliasFileForm::Finder);
    const IconFamily::Ptr family = discFamily();
    const auto path = [&home](const char *name) { return QString::fromStdString(home.at(name)); };
    check(family && family->setAsCustomIconForFile(path("custom icon")) &&
              family->writeToFile(path("Bundle.app/Contents/Resources/icon.icns")),
          "icon family");
}

std::vector<SheetItem> sheetItems(const TemporaryFolder &home) {
    std::vector<SheetItem> items;
    for (const char *const name : kFolders)
        items.push_back({name, iconOf(home.at(name))});
    items.push_back({"home", iconOf(home.path())});
    for (const FileRow &file : kFiles)
        items.push_back({file.name, iconOf(home.at(file.name))});
    for (const char *const name : kOthers)
        items.push_back({name, iconOf(*name == '/' ? name : home.at(name))});
    items.push_back(lockedItem(home));
    items.push_back(remoteItem("remote file", MFS_TYPE_FILE));
    items.push_back(remoteItem("remote folder", MFS_TYPE_DIRECTORY));
    items.push_back(remoteItem("remote link", MFS_TYPE_LINK));
    for (const SystemRow &row : kSystemIcons) {
        IconRef icon;
        check(GetIconRef(kOnSystemDisk, kSystemIconsCreator, row.type, &icon) == noErr, row.label);
        items.push_back({row.label, ItemIcon::init(std::move(icon))});
    }
    return items;
}
