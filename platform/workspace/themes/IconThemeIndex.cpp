// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/IconThemeIndex.h"

#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntryLines.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include <QHash>
#include <QSet>

namespace MWCore {
namespace {

struct NumberRow {
    const char *key;
    int IconFolder::*field;
};
constexpr NumberRow kNumberRows[] = {
    {"Size", &IconFolder::size},           {"Scale", &IconFolder::scale},
    {"MinSize", &IconFolder::minSize},     {"MaxSize", &IconFolder::maxSize},
    {"Threshold", &IconFolder::threshold},
};

struct TypeRow {
    const char *text;
    IconFolder::Type type;
};
constexpr TypeRow kTypeRows[] = {
    {"Fixed", IconFolder::Type::Fixed},
    {"Scalable", IconFolder::Type::Scalable},
    {"Threshold", IconFolder::Type::Threshold},
};

/// The values of the group "Icon Theme", which are lists of names.
struct Lists {
    QByteArrayView parents;
    QByteArrayView folders;
    QByteArrayView scaledFolders;
};

struct ListRow {
    const char *key;
    QByteArrayView Lists::*list;
};
constexpr ListRow kListRows[] = {
    {"Inherits", &Lists::parents},
    {"Directories", &Lists::folders},
    {"ScaledDirectories", &Lists::scaledFolders},
};

void setField(IconFolder &folder, QByteArrayView key, QByteArrayView value) {
    if (key == "Type") {
        const auto *const row = std::ranges::find(kTypeRows, value, &TypeRow::text);
        folder.type = row == std::end(kTypeRows) ? IconFolder::Type::Threshold : row->type;
        return;
    }
    const auto *const row = std::ranges::find(kNumberRows, key, &NumberRow::key);
    bool isNumber = false;
    const int number = row == std::end(kNumberRows) ? -1 : value.toInt(&isNumber);
    if (isNumber && number >= 0)
        folder.*row->field = number;
}

void setList(Lists &lists, QByteArrayView key, QByteArrayView value) {
    const auto *const row = std::ranges::find(kListRows, key, &ListRow::key);
    if (row != std::end(kListRows))
        lists.*row->list = value;
}

/// What the lines say, in one pass over them.
struct Description {
    Lists lists;
    QHash<QByteArrayView, IconFolder> folders;
};

Description read(QByteArrayView bytes) {
    Description description;
    DesktopEntryLines lines(bytes);
    for (DesktopEntryLine line; lines.next(&line);) {
        if (line.kind != DesktopEntryLine::Key)
            continue;
        const QByteArrayView value =
            bytes.sliced(line.valueBegin, line.end - line.valueBegin).trimmed();
        if (line.group == "Icon Theme")
            setList(description.lists, line.key, value);
        else
            setField(description.folders[line.group], line.key, value);
    }
    return description;
}

IconFolder completed(IconFolder folder, QByteArrayView name) {
    folder.name = name.toByteArray();
    folder.minSize = folder.minSize < 0 ? folder.size : folder.minSize;
    folder.maxSize = folder.maxSize < 0 ? folder.size : folder.maxSize;
    return folder;
}

/// The names in the lists, each once.
std::vector<QByteArrayView> namesIn(std::initializer_list<QByteArrayView> lists) {
    std::vector<QByteArrayView> names;
    QSet<QByteArrayView> known;
    for (QByteArrayView rest : lists) {
        while (!rest.isEmpty()) {
            const qsizetype comma = rest.indexOf(',');
            const QByteArrayView name = rest.first(comma < 0 ? rest.size() : comma).trimmed();
            rest = rest.sliced(comma < 0 ? rest.size() : comma + 1);
            const auto count = known.size();
            known.insert(name);
            if (!name.isEmpty() && known.size() > count)
                names.push_back(name);
        }
    }
    return names;
}

bool isInside(const QByteArray &path) {
    return !path.startsWith('/') && !path.contains('\0') && !namesOf(path).contains("..");
}

} // namespace

bool IconFolder::matches(int iconSize, int iconScale) const {
    if (scale != iconScale)
        return false;
    switch (type) {
    case Type::Fixed:
        return size == iconSize;
    case Type::Scalable:
        return minSize <= iconSize && iconSize <= maxSize;
    case Type::Threshold:
        return std::abs(int64_t(size) - iconSize) <= threshold;
    }
    return false;
}

int64_t IconFolder::distance(int iconSize, int iconScale) const {
    const int64_t wanted = int64_t(iconSize) * iconScale;
    const auto pixels = [this](int64_t points) { return points * scale; };
    if (type == Type::Fixed)
        return std::abs(pixels(size) - wanted);
    const bool isScalable = type == Type::Scalable;
    if (wanted < pixels(isScalable ? minSize : int64_t(size) - threshold))
        return pixels(minSize) - wanted;
    if (wanted > pixels(isScalable ? maxSize : int64_t(size) + threshold))
        return wanted - pixels(maxSize);
    return 0;
}

IconThemeIndex IconThemeIndex::parse(QByteArrayView bytes) {
    const Description description = read(bytes);
    IconThemeIndex index;
    for (const QByteArrayView parent : namesIn({description.lists.parents}))
        if (isPlainName(parent))
            index.parents.push_back(parent.toByteArray());
    const Lists &lists = description.lists;
    for (const QByteArrayView name : namesIn({lists.folders, lists.scaledFolders})) {
        const IconFolder folder = completed(description.folders.value(name), name);
        if (folder.size > 0 && isInside(folder.name) && index.folders.size() < kMostFolders)
            index.folders.push_back(folder);
    }
    return index;
}

bool isPlainName(QByteArrayView name) {
    return !name.isEmpty() && !isDots(name) && !name.contains('/') && !name.contains('\0');
}

} // namespace MWCore
