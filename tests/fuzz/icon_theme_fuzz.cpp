// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/IconThemeIndex.h"
#include "tests/fuzz/fuzz.h"

#include <QList>

using namespace MWCore;

/// No index names more folders than are searched, or one outside the theme's own folder, and every
/// folder can be compared with any size.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    const IconThemeIndex index = IconThemeIndex::parse(inputBytes(data, size));
    require(index.folders.size() <= IconThemeIndex::kMostFolders);
    for (const IconFolder &folder : index.folders) {
        require(folder.size > 0 && !folder.name.isEmpty() && !folder.name.startsWith('/'));
        require(!folder.name.split('/').contains(".."));
        for (const int wanted : {1, 16, 512})
            require(!folder.matches(wanted, 2) || folder.distance(wanted, 2) >= 0);
    }
    for (const QByteArray &parent : index.parents)
        require(!parent.contains('/') && parent != "..");
    return 0;
}
