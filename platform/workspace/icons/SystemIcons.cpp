// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/icons/IconServices.h"

#include <MWCore/IconElements.h>

#include <algorithm>
#include <iterator>

namespace MWCore {
namespace {

struct SystemIconRow {
    uint32_t type;
    const char *names; ///< in themes, separated by blanks
    const char *drawing = kFileDrawing;
};

// clang-format off
constexpr SystemIconRow kSystemIconRows[] = {
    // Documents
    {fourCharCode("docu"), "text-x-generic"},
    {fourCharCode("APPL"), "application-x-executable"},
    {fourCharCode("APPC"), "preferences-system preferences-other"},
    {fourCharCode("APPE"), "application-x-addon application-x-sharedlib"},
    {fourCharCode("FNDR"), "system-file-manager folder", kFolderDrawing},
    {fourCharCode("pref"), "preferences-system text-x-generic"},
    {fourCharCode("edtp"), "text-x-generic-template x-office-document-template text-x-generic"},
    {fourCharCode("ffil"), "font-x-generic"},
    {fourCharCode("tfil"), "font-x-generic"},
    {fourCharCode("clpt"), "text-x-generic"},
    {fourCharCode("clpp"), "image-x-generic"},
    {fourCharCode("clps"), "audio-x-generic"},
    {fourCharCode("clpu"), "edit-paste text-x-generic"},
    {fourCharCode("CLIP"), "edit-paste text-x-generic"},
    {fourCharCode("ilht"), "text-html"},
    {fourCharCode("ilge"), "text-html"},
    {fourCharCode("ilma"), "mail-unread text-html"},
    // Folders
    {fourCharCode("fldr"), "folder",                               kFolderDrawing},
    {fourCharCode("ofld"), "folder-open folder",                   kFolderDrawing},
    {fourCharCode("dbox"), "folder-drag-accept folder",            kFolderDrawing},
    {fourCharCode("shfl"), "folder-publicshare folder",            kFolderDrawing},
    {fourCharCode("mntd"), "folder-remote folder",                 kFolderDrawing},
    {fourCharCode("ownd"), "user-home folder",                     kFolderDrawing},
    {fourCharCode("prvf"), "folder-locked folder",                 kFolderDrawing},
    {fourCharCode("apps"), "folder-applications applications-other folder", kFolderDrawing},
    {fourCharCode("docs"), "folder-documents folder",              kFolderDrawing},
    {fourCharCode("down"), "folder-download folder-downloads folder", kFolderDrawing},
    {fourCharCode("pics"), "folder-pictures folder",               kFolderDrawing},
    {fourCharCode("musi"), "folder-music folder",                  kFolderDrawing},
    {fourCharCode("movi"), "folder-videos folder-video folder",    kFolderDrawing},
    {fourCharCode("pubf"), "folder-publicshare folder",            kFolderDrawing},
    {fourCharCode("tmpl"), "folder-templates folder",              kFolderDrawing},
    {fourCharCode("font"), "folder-fonts preferences-desktop-font folder", kFolderDrawing},
    {fourCharCode("macs"), "folder-system preferences-system folder", kFolderDrawing},
    {fourCharCode("favs"), "folder-favorites user-bookmarks folder", kFolderDrawing},
    {fourCharCode("rapp"), "folder-recent document-open-recent folder", kFolderDrawing},
    {fourCharCode("rdoc"), "folder-recent document-open-recent folder", kFolderDrawing},
    {fourCharCode("rsrv"), "folder-recent document-open-recent folder", kFolderDrawing},
    {fourCharCode("hom "), "user-home folder",                     kFolderDrawing},
    {fourCharCode("desk"), "user-desktop folder",                  kFolderDrawing},
    {fourCharCode("trsh"), "user-trash",                           kFolderDrawing},
    {fourCharCode("ftrh"), "user-trash-full user-trash",           kFolderDrawing},
    // Volumes and networks
    {fourCharCode("hdsk"), "drive-harddisk",                       kFolderDrawing},
    {fourCharCode("flpy"), "drive-removable-media media-floppy",   kFolderDrawing},
    {fourCharCode("cddr"), "media-optical drive-optical",          kFolderDrawing},
    {fourCharCode("ramd"), "media-flash drive-harddisk",           kFolderDrawing},
    {fourCharCode("pcmc"), "media-flash drive-removable-media",    kFolderDrawing},
    {fourCharCode("srvr"), "network-server folder-remote",         kFolderDrawing},
    {fourCharCode("gnet"), "network-workgroup network-server",     kFolderDrawing},
    {fourCharCode("root"), "computer drive-harddisk",              kFolderDrawing},
    // People
    {fourCharCode("user"), "avatar-default user-info"},
    {fourCharCode("ownr"), "avatar-default user-info"},
    {fourCharCode("gusr"), "avatar-default user-info"},
    {fourCharCode("grup"), "system-users"},
    // Alerts, badges and buttons
    {fourCharCode("note"), "dialog-information"},
    {fourCharCode("caut"), "dialog-warning"},
    {fourCharCode("stop"), "dialog-error"},
    {fourCharCode("ques"), "dialog-question help-browser"},
    {fourCharCode("help"), "help-browser help-contents"},
    {fourCharCode("lock"), "changes-prevent emblem-readonly"},
    {fourCharCode("ulck"), "changes-allow"},
    {fourCharCode("lbdg"), "emblem-readonly changes-prevent"},
    {fourCharCode("abdg"), "emblem-symbolic-link"},
    {fourCharCode("alis"), "emblem-symbolic-link"},
    {fourCharCode("sbdg"), "emblem-shared"},
    {fourCharCode("mbdg"), "emblem-mounted emblem-default"},
    {fourCharCode("baro"), "go-previous"},
    {fourCharCode("faro"), "go-next"},
    {fourCharCode("ejec"), "media-eject"},
    {fourCharCode("burn"), "media-optical-recordable media-optical"},
};
// clang-format on

} // namespace

OSStatus GetIconRef(int16_t vRefNum, uint32_t creator, uint32_t iconType, IconRef *iconRef) {
    const auto *const row = std::ranges::find(kSystemIconRows, iconType, &SystemIconRow::type);
    if (vRefNum != kOnSystemDisk || creator != kSystemIconsCreator ||
        row == std::end(kSystemIconRows))
        return fnfErr;
    *iconRef = themeIcon(row->names, row->drawing);
    return noErr;
}

} // namespace MWCore
