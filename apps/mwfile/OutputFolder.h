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
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;
    ~OutputFolder();

    /// The folder @p name in it, which is made if necessary. A link is not followed.
    [[nodiscard]] OutputFolder subfolder(const std::string &name) const;

    /// Writes the file @p name, replacing one of this name at once. A link is not followed.
    void write(const std::string &name, const QByteArray &content) const;

private:
    OutputFolder(std::string path, int descriptor);

    [[nodiscard]] bool isEmpty() const;

    std::string path_;
    int descriptor_;
};

} // namespace MWCore::mwfile
