// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/PackageExtensions.h"

#include "platform/files/PathParts.h"

#include <algorithm>
#include <iterator>

#include <QByteArrayView>

namespace MWCore {
namespace {

/// Extensions of folders that are shown as a single item.
constexpr QByteArrayView kPackageExtensions[] = {
    "app",          // application
    "appex",        // extension of an application
    "bundle",       // loadable code and its resources
    "component",    // audio or image component
    "download",     // incomplete download
    "dsym",         // debug symbols
    "framework",    // library, its headers and resources
    "kext",         // kernel extension
    "mdimporter",   // search importer
    "mpkg",         // set of installation packages
    "nib",          // interface file
    "pkg",          // installation package
    "playground",   // interactive code
    "plugin",       // loadable code
    "prefpane",     // settings panel
    "qlgenerator",  // preview generator
    "rtfd",         // rich text with attachments
    "saver",        // screen saver
    "scptd",        // script with resources
    "sparsebundle", // growing disk image
    "wdgt",         // widget
    "xcdatamodel",  // data model
    "xcodeproj",    // source project
    "xcworkspace",  // set of source projects
    "xpc",          // service of an application
};

} // namespace

bool hasPackageExtension(const QByteArray &name) {
    const QByteArray extension = lowerExtensionOf(name);
    return std::ranges::find(kPackageExtensions, QByteArrayView(extension)) !=
           std::end(kPackageExtensions);
}

} // namespace MWCore
