// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "commands.h"

#include <functional>

#include <CLI/CLI.hpp>

namespace MWCore::mwfile {

/// Exit statuses of every subcommand.
enum Status { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// Adds the option that all subcommands have that print data.
void addJson(CLI::App &command, Form &form);

/// Parses the command line and runs the subcommand.
class CommandLine {
public:
    CommandLine();

    /// Throws CLI::ParseError if the command line is invalid or asks for help.
    void parse(int count, char **arguments);

    /// Prints the help or the error message for @p error.
    Status explain(const CLI::ParseError &error);

    /// Runs the subcommand. False if it succeeded only in part.
    [[nodiscard]] bool run() const { return work_(); }

private:
    void addList();
    void addInfo();
    void addSize();
    void addPerm();
    void addAttribute(const char *name, const char *what, Attribute which);
    void addAlias();
    void addIcon();
    void addIconFiles(CLI::App &icon);
    void addIconExport(CLI::App &icon);
    void addIconImport(CLI::App &icon);
    void addIconItems(CLI::App &icon);

    /// Makes @p work what run() does for @p command.
    void runs(CLI::App &command, std::function<void()> work);

    CLI::App app_{"Inspects files and folders", "mwfile"};
    ListOptions list_;
    InfoOptions info_;
    SizeOptions size_;
    PermOptions perm_;
    AttributeOptions attribute_;
    AliasOptions alias_;
    IconFilesOptions iconFiles_;
    IconExportOptions iconExport_;
    IconImportOptions iconImport_;
    IconItemOptions iconItem_;
    std::function<bool()> work_;
};

} // namespace MWCore::mwfile
