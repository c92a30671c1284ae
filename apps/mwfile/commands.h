// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string>
#include <vector>

/// The subcommands. Each prints to standard output and throws Failure on failure.
namespace MWCore::mwfile {

/// The form of the output.
enum class Form { Text, Json };

/// What happens to something that is in the way of the output.
enum class Existing { Keep, Replace };

enum class Order { Name, Date, Size, Access };

struct ListOptions {
    std::string folder;
    Order order = Order::Name;
    bool reverse = false;
    bool all = false; ///< includes names that file browsers hide
    Form form = Form::Text;
};
void list(const ListOptions &options);

struct InfoOptions {
    std::vector<std::string> paths;
    bool icon = false; ///< shows the icons of the items, if the terminal can
    Form form = Form::Text;
};
/// Reports paths that fail on standard error and omits them; then returns false.
[[nodiscard]] bool info(const InfoOptions &options);

struct SizeOptions {
    std::string path;
    bool linksOnce = false;     ///< counts the size of a file with several names once
    bool sidecarsOnce = false;  ///< counts a fork in a sidecar once
    bool oneFileSystem = false; ///< skips file systems that are mounted below
    bool walk = false;          ///< measures the contents even of a volume
    bool errors = false;        ///< lists the items that could not be read
    Form form = Form::Text;
};
/// Prints the item's size and, for a folder, counts of its contents; shows progress on a terminal.
/// Ctrl-C stops it and prints the partial sums. False if anything is missing from the sums.
[[nodiscard]] bool size(const SizeOptions &options);

/// Attributes of an item for desktops, one subcommand each.
enum class Attribute { Label, Type, Creator, Invisible, Lock };

struct AttributeOptions {
    Attribute attribute = Attribute::Label;
    std::string path;
    std::optional<std::string> value; ///< nullopt: print; may be swapped with `path`
    Form form = Form::Text;
};
/// Prints the attribute, or sets it.
void attribute(const AttributeOptions &options);

struct AliasOptions {
    std::string target;
    std::string file;
    bool finderForm = false;
    Form form = Form::Text;
};
void aliasMake(const AliasOptions &options);
void aliasResolve(const AliasOptions &options);
void aliasShow(const AliasOptions &options);

struct IconFilesOptions {
    std::vector<std::string> files;
    Form form = Form::Text;
};
/// Describes the family of a file or item.
void iconInfo(const IconFilesOptions &options);

/// Reports what is wrong with families on standard error. False if anything is.
[[nodiscard]] bool iconVerify(const IconFilesOptions &options);

struct IconExportOptions {
    std::string file;
    std::string out;
    std::optional<int> size; ///< of one picture, in pixels
    Existing existing = Existing::Keep;
};
/// Writes one picture, PNG files, an iconset or an .icns file. False if elements were damaged.
[[nodiscard]] bool iconExport(const IconExportOptions &options);

struct IconImportOptions {
    std::vector<std::string> inputs;
    std::string out;
    std::string dark; ///< empty for none
    bool modern = false;
    std::optional<int> effort;
    Existing existing = Existing::Keep;
};
void iconImport(const IconImportOptions &options);

struct IconItemOptions {
    std::string item;
    std::string icon;
    bool compatible = false;
};
void iconSet(const IconItemOptions &options);
void iconRemove(const IconItemOptions &options);

struct PermOptions {
    std::string value;
    Form form = Form::Text;
};
void perm(const PermOptions &options);

} // namespace MWCore::mwfile
