// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/model/SpecialItems.h"

#include "platform/aliases/Aliases.h"
#include "platform/metadata/MetadataStore.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace MWCore;

namespace {

constexpr uint32_t kApplicationType = 0x4150504C; // 'APPL'
constexpr char kAppImage[] = "\x7F"
                             "ELF\2\1\1\0AI\2 and more";

void check(bool done) {
    if (!done)
        throw std::runtime_error("a special item cannot be made");
}

void setFinderInfo(const std::string &path, uint32_t type, FinderFlags flags) {
    FinderInfo info;
    info.type = type;
    info.flags = flags;
    check(writeFinderInfo(QByteArray::fromStdString(path), info) == noErr);
}

void makeSocket(const std::string &path) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int number = socket(AF_UNIX, SOCK_STREAM, 0);
    check(bind(number, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0);
    close(number);
}

} // namespace

const std::vector<SpecialItems::Row> &SpecialItems::rows() {
    static const std::vector<Row> rows = {
        {"folder", MXItemKindFolder, -1, false},
        {"file", MXItemKindFile, -1, false},
        {"fifo", MXItemKindUnknown, -1, false},
        {"socket", MXItemKindUnknown, -1, false},
        {"name \xFF\xFE", MXItemKindFile, -1, false},
        {".hidden", MXItemKindFile, -1, false},
        // links
        {"link to folder", MXItemKindLink, MXItemKindFolder, false},
        {"link to file", MXItemKindLink, MXItemKindFile, false},
        {"link to fifo", MXItemKindLink, MXItemKindUnknown, false},
        {"link to link", MXItemKindLink, MXItemKindFolder, false},
        {"link to application", MXItemKindLink, MXItemKindFolder, false},
        {"link to nothing", MXItemKindUnknown, -1, false},
        {"link in a circle", MXItemKindUnknown, -1, false},
        {"link through a file", MXItemKindUnknown, -1, false},
        // folders of other kinds
        {"Bundle.app", MXItemKindApplication, -1, true},
        {"Empty.app", MXItemKindPackage, -1, false},
        {"AppDir", MXItemKindApplication, -1, true},
        {"AppRun alone", MXItemKindFolder, -1, false},
        {"Some.framework", MXItemKindPackage, -1, false},
        {"bundle bit", MXItemKindPackage, -1, false},
        {"type of a folder", MXItemKindFolder, -1, false},
        // applications in one file
        {"typed APPL", MXItemKindApplication, -1, false},
        {"typed TEXT.AppImage", MXItemKindFile, -1, false},
        {"labelled.AppImage", MXItemKindApplication, -1, false},
        {"executable image", MXItemKindApplication, -1, false},
        {"image for its owner", MXItemKindApplication, -1, false},
        {"image for a group", MXItemKindApplication, -1, false},
        {"image for nobody.bin", MXItemKindFile, -1, false},
        {"script", MXItemKindFile, -1, false},
        {"starts.desktop", MXItemKindApplication, -1, false},
        {"folder.desktop", MXItemKindFolder, -1, false},
        {"damaged.desktop", MXItemKindFile, -1, false},
        {"sidecar says APPL", MXItemKindApplication, -1, false},
        {"._sidecar says APPL", MXItemKindFile, -1, false},
        // aliases
        {"to folder.desktop", MXItemKindAlias, MXItemKindFolder, false},
        {"to file.desktop", MXItemKindAlias, MXItemKindFile, false},
        {"to package.desktop", MXItemKindAlias, MXItemKindFolder, false},
        {"finder alias", MXItemKindAlias, MXItemKindFile, false},
        {"to alias.desktop", MXItemKindAlias, MXItemKindFile, false},
        {"to application.desktop", MXItemKindApplication, -1, false},
        {"to image.desktop", MXItemKindApplication, -1, false},
        {"to sidecar.desktop", MXItemKindApplication, -1, false},
        {"to web.desktop", MXItemKindFile, -1, false},
        {"to other host.desktop", MXItemKindFile, -1, false},
        {"to nothing.desktop", MXItemKindFile, -1, false},
        {"flag alone", MXItemKindFile, -1, false},
    };
    return rows;
}

SpecialItems::SpecialItems() {
    for (const char *const name :
         {"folder", "Bundle.app/Contents", "Empty.app", "AppDir", "AppRun alone", "Some.framework",
          "bundle bit", "type of a folder", "folder.desktop"})
        fs::create_directories(at(name));
    for (const char *const name :
         {"file", "name \xFF\xFE", ".hidden", "Bundle.app/Contents/Info.plist", "AppDir/AppRun",
          "AppDir/a.desktop", "AppRun alone/AppRun", "typed APPL", "flag alone",
          "sidecar says APPL"})
        write(name, "");
    (void)folder_.fifo("fifo");
    makeSocket(at("socket"));

    (void)folder_.link("link to folder", "folder");
    (void)folder_.link("link to file", at("file"));
    (void)folder_.link("link to fifo", "./fifo");
    (void)folder_.link("link to link", "link to folder");
    (void)folder_.link("link to application", "Bundle.app");
    (void)folder_.link("link to nothing", "nothing");
    (void)folder_.link("link in a circle", "link in a circle");
    (void)folder_.link("link through a file", "file/x");

    const std::string image(kAppImage, sizeof kAppImage - 1);
    for (const char *const name :
         {"typed TEXT.AppImage", "labelled.AppImage", "executable image", "image for its owner",
          "image for a group", "image for nobody.bin"})
        write(name, image);
    check(chmod(at("image for its owner").c_str(), 0744) == 0);
    check(chmod(at("image for a group").c_str(), 0654) == 0);
    check(chmod(at("executable image").c_str(), 0711) == 0);
    write("script", "#!/bin/sh\n");
    check(chmod(at("script").c_str(), 0755) == 0);
    write("starts.desktop", "[Desktop Entry]\nType=Application\nName=a\nExec=a\n");
    write("damaged.desktop", std::string("[Desktop\0Entry", 14));
    setFinderInfo(at("typed APPL"), kApplicationType, {});
    setFinderInfo(at("typed TEXT.AppImage"), 0x54455854, {});
    setFinderInfo(at("labelled.AppImage"), 0, FinderFlags::fromInt(6 << 1));
    setFinderInfo(at("type of a folder"), kApplicationType, {});
    setFinderInfo(at("bundle bit"), 0, kHasBundle);
    setFinderInfo(at("flag alone"), 0, kIsAlias);
    // RFC 1740: magic, version, filler, one entry of type 9 at byte 38, 32 bytes of Finder info.
    std::string sidecar("\0\5\x16\7\0\2\0\0", 8);
    sidecar += std::string(16, '\0') + std::string("\0\1\0\0\0\x09\0\0\0\x26\0\0\0\x20", 14);
    write("._sidecar says APPL", sidecar + "APPL????" + std::string(24, '\0'));

    alias("to folder.desktop", "folder");
    alias("to file.desktop", "file");
    alias("to package.desktop", "Some.framework");
    alias("finder alias", "file");
    alias("to alias.desktop", "to file.desktop");
    alias("to application.desktop", "typed APPL");
    alias("to image.desktop", "executable image");
    alias("to sidecar.desktop", "sidecar says APPL");
    write("to web.desktop", "[Desktop Entry]\nType=Link\nName=a\nURL=https://example.org/\n");
    write("to other host.desktop",
          "[Desktop Entry]\nType=Link\nName=a\nURL=file://otherhost/tmp\n");
    write("to nothing.desktop",
          "[Desktop Entry]\nType=Link\nName=a\nURL=file:///nothing/is/here\n");
}

void SpecialItems::write(const std::string &name, const std::string &content) const {
    std::ofstream(at(name), std::ios::binary) << content;
}

void SpecialItems::alias(const std::string &name, const std::string &target) const {
    const bool isEntry = name.ends_with(".desktop");
    FSRef ref;
    check(FSPathMakeRef(QByteArray::fromStdString(at(target)), &ref) == noErr);
    check(FSCreateAliasFile(ref, QByteArray::fromStdString(at(name)),
                            isEntry ? AliasFileForm::DesktopEntry : AliasFileForm::Finder) ==
          noErr);
}
