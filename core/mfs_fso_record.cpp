// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_fso.h"
#include "core/records.h"
#include "core/text_views.h"

#include <cerrno>
#include <new>

using MWCore::isAbsolute;
using MWCore::RecordDraft;
using MWCore::Text;

namespace {

struct FreeArray {
    void operator()(mfs_array *array) const { mfs_array_free(array); }
};
using Array = std::unique_ptr<mfs_array, FreeArray>;

Text pathIn(std::string_view folder, std::string_view item) {
    const bool needsSlash = !folder.empty() && folder != "/";
    return MWCore::joined({folder, needsSlash ? "/" : "", item}, "mfs_fso path");
}

/// The texts of a record that are derived from its draft.
struct DerivedTexts {
    Text name;
    Text completePath;
    Text extension;
    Text trimmedAlias; ///< null unless the draft's alias location has leading blanks
    Text completeAlias;
};

/// Returns false if memory runs out.
bool deriveName(const RecordDraft &draft, DerivedTexts &texts) {
    const bool isPath = isAbsolute(draft.nameOrPath);
    const auto name = isPath ? MWCore::lastComponent(draft.nameOrPath) : draft.nameOrPath;
    const auto parent =
        isPath ? std::optional(MWCore::containingFolder(draft.nameOrPath)) : draft.parentPath;

    texts.name = MWCore::copied(name, "mfs_fso name");
    if (parent)
        texts.completePath =
            name.empty() ? MWCore::copied(*parent, "mfs_fso path") : pathIn(*parent, name);
    const auto extension = MWCore::extensionOf(name);
    if (extension)
        texts.extension = MWCore::copied(*extension, "mfs_fso extension");
    return texts.name && (texts.completePath || !parent) && (texts.extension || !extension);
}

/// Returns false if memory runs out.
bool deriveAlias(const RecordDraft &draft, DerivedTexts &texts) {
    const std::string_view given = draft.aliasLocation ? draft.aliasLocation.get() : "";
    if (given.empty())
        return true;
    const std::string_view target = MWCore::withoutFrontSpaces(given);
    const bool needsTrim = target.size() < given.size();
    if (needsTrim)
        texts.trimmedAlias = MWCore::copied(target, "mfs_fso alias");
    texts.completeAlias = isAbsolute(target) ? MWCore::copied(target, "mfs_fso complete alias")
                                             : pathIn(draft.parentPath.value_or(""), target);
    return texts.completeAlias && (texts.trimmedAlias || !needsTrim);
}

/// The record's alias location: the draft's own text unless it had to be trimmed.
Text takeAlias(RecordDraft &draft, DerivedTexts &texts) {
    Text given = std::move(draft.aliasLocation);
    if (!texts.completeAlias)
        return nullptr;
    return texts.trimmedAlias ? std::move(texts.trimmedAlias) : std::move(given);
}

void fill(mfs_fso &record, RecordDraft &draft, DerivedTexts &texts) {
    record.location = draft.location;
    record.type = draft.type;
    record.target_type = draft.targetType;
    record.alias_location = takeAlias(draft, texts).release();
    record.complete_alias_path = texts.completeAlias.release();
    record.permissions = static_cast<uint16_t>(draft.permissions);
    record.mode = draft.mode;
    record.date_modified = draft.dateModified.release();
    record.extension = texts.extension.release();
    record.mod_time = draft.modificationTime;
    record.name = texts.name.release();
    record.owner = draft.owner.release();
    record.group = draft.group.release();
    record.links = draft.links;
    record.size = static_cast<int32_t>(draft.size);
    record.size_high = static_cast<int32_t>(draft.size >> 32);
    record.complete_path = texts.completePath.release();
}

void freeTexts(const mfs_fso &record) {
    for (char *const text :
         {record.alias_location, record.complete_alias_path, record.date_modified, record.extension,
          record.name, record.owner, record.group, record.complete_path})
        std::free(text);
}

/// Releases the record with its texts and arrays, but not its children.
void destroyWithoutChildren(mfs_fso *record) {
    if (!record)
        return;
    freeTexts(*record);
    mfs_array_free(record->files);
    mfs_array_free(record->subdirectories);
    mfs_fso_destroy(record);
}

mfs_fso *takeLast(mfs_array *array) {
    const int32_t last = mfs_array_count(array) - 1;
    auto *const record = static_cast<mfs_fso *>(mfs_array_value_at_index(array, last));
    mfs_array_remove_value_at_index(array, last);
    return record;
}

void removeFrom(mfs_array *array, const mfs_fso *record) {
    mfs_array_remove_value_at_index(array, _findIndexInCFArray(array, record));
}

} // namespace

mfs_fso *MWCore::makeRecord(RecordDraft &draft) {
    DerivedTexts texts;
    if (!deriveName(draft, texts) || !deriveAlias(draft, texts))
        return nullptr;
    Array files;
    Array subdirectories;
    if (draft.type == MFS_TYPE_DIRECTORY) {
        files.reset(mfs_array_new());
        subdirectories.reset(mfs_array_new());
        if (!files || !subdirectories)
            return nullptr;
    }
    void *const block = allocate(sizeof(mfs_fso), "mfs_fso_new");
    if (!block)
        return nullptr;
    auto *const record = new (block) mfs_fso{};
    fill(*record, draft, texts);
    record->files = files.release();
    record->subdirectories = subdirectories.release();
    return record;
}

mfs_fso *mfs_fso_new(int32_t type, int32_t location, int32_t permissions, char *date_modified,
                     const char *name_or_path, char *owner, char *group, int32_t links,
                     int32_t size, char *alias_location, const char *parent_path) {
    if (!name_or_path) {
        errno = EINVAL;
        return nullptr;
    }
    RecordDraft draft;
    draft.type = type;
    draft.location = location;
    draft.permissions = permissions;
    draft.links = links;
    draft.size = size;
    draft.nameOrPath = name_or_path;
    if (parent_path)
        draft.parentPath = parent_path;
    draft.dateModified.reset(date_modified);
    draft.owner.reset(owner);
    draft.group.reset(group);
    draft.aliasLocation.reset(alias_location);

    mfs_fso *const record = MWCore::makeRecord(draft);
    if (!record) // the caller keeps the texts
        for (Text *const adopted :
             {&draft.dateModified, &draft.owner, &draft.group, &draft.aliasLocation})
            static_cast<void>(adopted->release());
    return record;
}

void mfs_fso_destroy(mfs_fso *record) {
    std::free(record);
}

/// Does not recurse: removes the last child of each folder and continues there, so that a tree of
/// any depth needs no further memory.
void mfs_fso_destroy_tree(mfs_fso *record) {
    if (!record)
        return;
    if (mfs_fso *const folder = record->parent) {
        removeFrom(folder->files, record);
        removeFrom(folder->subdirectories, record);
        record->parent = nullptr;
    }
    for (mfs_fso *current = record; current;) {
        while (mfs_fso_file_count(current) > 0)
            destroyWithoutChildren(takeLast(current->files));
        if (mfs_fso_subdirectory_count(current) == 0) {
            mfs_fso *const parent = current->parent;
            destroyWithoutChildren(current);
            current = parent;
        } else if (mfs_fso *const folder = takeLast(current->subdirectories)) {
            folder->parent = current;
            current = folder;
        }
    }
}
