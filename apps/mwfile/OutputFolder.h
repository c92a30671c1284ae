// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "commands.h"

#include <string>

#include <QByteArray>

namespace MWCore::mwfile {

/// A folder into which a command writes new files. Every operation throws Failure, with the path as
/// it was given, if it fails.
class OutputFolder {
public:
    /// Opens the folder at @p path, or makes it if nothing is there. With Existing::Keep it has to
    /// be empty.
    OutputFolder(const std::string &path, Existing existing);

    /// Opens the folder that contains the item at @p path. It may contain others.
    [[nodiscard]] static OutputFolder containing(const std::string &path);

    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;
    ~OutputFolder();

    /// The folder @p name in it, which is made if necessary. A link is not followed.
    [[nodiscard]] OutputFolder subfolder(const std::string &name) const;

    /// Writes the file @p name at once, as a whole. A link is not followed. With Existing::Keep,
    /// nothing of this name may be there.
    void write(const std::string &name, const QByteArray &content,
               Existing existing = Existing::Replace) const;

private:
    OutputFolder(std::string path, int descriptor);

    [[nodiscard]] std::string pathOf(const std::string &name) const;
    [[nodiscard]] bool isEmpty() const;

    std::string path_; ///< empty for the working folder
    int descriptor_;
};

} // namespace MWCore::mwfile
