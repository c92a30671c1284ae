// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QByteArray>
#include <QByteArrayView>

struct dirent64;

namespace MWCore {

/// The names of the icon files in several folders; themes have up to 100,000 of them. Each name is
/// stored once, and a file takes four bytes. Fill it from one thread; then any thread may read it.
class IconFileList {
public:
    static constexpr int kMostNames = 400'000; ///< that are read, of icons or not
    static constexpr uint32_t kMostFolders = UINT16_MAX;
    static constexpr QByteArrayView kExtensions[] = {".png", ".svg", ".xpm"};

    /// A link may lead nowhere, or to something else, until it has been followed.
    enum class Kind : uint8_t { File, Link, Useless };

    struct File {
        uint16_t folder;   ///< the number of its folder
        uint8_t extension; ///< the index in kExtensions
        Kind kind;         ///< setKind() may change it while other threads read it
    };

    /// Adds the icon files in the open folder @p descriptor, whose number is @p folder. A read
    /// error ends the folder: a theme in part is better than none.
    void addFolder(int descriptor, uint16_t folder);

    /// To be called after the last folder.
    void finish();

    /// The files of an icon, by the number of the folder, then by extension.
    [[nodiscard]] std::span<File> filesNamed(QByteArrayView icon);

    [[nodiscard]] static Kind kindOf(File &file) {
        return std::atomic_ref(file.kind).load(std::memory_order_relaxed);
    }
    static void setKind(File &file, Kind kind) {
        std::atomic_ref(file.kind).store(kind, std::memory_order_relaxed);
    }

private:
    struct NamedFile {
        uint32_t icon;
        File file;
    };

    void add(const dirent64 &entry, uint16_t folder);
    [[nodiscard]] uint32_t iconNamed(QByteArrayView name);
    [[nodiscard]] std::size_t slotOf(QByteArrayView name) const;
    void enlargeTable();
    [[nodiscard]] uint32_t iconCount() const { return static_cast<uint32_t>(nameEnds_.size()); }
    [[nodiscard]] QByteArrayView nameOf(uint32_t icon) const;

    QByteArray names_;                 ///< of all icons, one after another
    std::vector<uint32_t> nameEnds_;   ///< of each icon, in names_
    std::vector<uint32_t> slots_;      ///< hash table: the icon's number + 1, or 0
    std::vector<NamedFile> added_;     ///< until finish()
    std::vector<File> files_;          ///< those of an icon follow one another
    std::vector<uint32_t> firstFiles_; ///< of each icon, in files_, and where the last one ends
    int namesLeft_ = kMostNames;
};

} // namespace MWCore
