// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <QByteArray>
#include <QByteArrayView>

struct dirent64;

namespace MWCore {

/// The names of the icon files in several folders, in one block of memory; themes have up to
/// 100,000 of them. Fill it from one thread; then any thread may read it.
class IconFileList {
public:
    /// How many names are read, of icons or not.
    static constexpr int kMostNames = 400'000;

    struct File {
        uint32_t name;      ///< where its name begins in the block, without extension
        uint32_t folder;    ///< the number of its folder
        uint8_t nameLength; ///< bytes
        uint8_t extension;  ///< the index in kExtensions
        bool isCertain;     ///< false for a link, which may lead nowhere
    };
    static constexpr QByteArrayView kExtensions[] = {".png", ".svg", ".xpm"};

    /// Adds the icon files in the open folder @p descriptor, whose number is @p folder. A read
    /// error ends the folder: a theme in part is better than none.
    void addFolder(int descriptor, uint32_t folder);

    /// To be called after the last folder.
    void sort();

    /// The files of an icon, by the number of the folder, then by extension.
    [[nodiscard]] std::span<const File> filesNamed(QByteArrayView icon) const;

private:
    void add(const dirent64 &entry, uint32_t folder);
    [[nodiscard]] QByteArrayView nameOf(const File &file) const {
        return QByteArrayView(names_).sliced(file.name, file.nameLength);
    }

    QByteArray names_;
    std::vector<File> files_;
    int namesLeft_ = kMostNames;
};

} // namespace MWCore
