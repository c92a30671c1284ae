// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string>
#include <vector>

/// The subcommands. Each does its work and prints to standard output; a failure is thrown as
/// Failure.
namespace MWCore::mwfile {

/// Whether data is printed for people or as JSON.
enum class Form { Text, Json };

enum class Order { Name, Date, Size, Access };

struct ListOptions {
    std::string folder;
    Order order = Order::Name;
    bool reverse = false;
    bool all = false; ///< also names that file browsers hide
    Form form = Form::Text;
};
void list(const ListOptions &options);

struct InfoOptions {
    std::vector<std::string> paths;
    Form form = Form::Text;
};
/// Paths that fail are reported on standard error and left out; false when there was one.
[[nodiscard]] bool info(const InfoOptions &options);

struct SizeOptions {
    std::string path;
    bool linksOnce = false;     ///< of a file with several names the size counts once
    bool sidecarsOnce = false;  ///< a fork in a sidecar counts once
    bool oneFileSystem = false; ///< leaves out what is mounted below
    bool walk = false;          ///< of a volume, too, measures what is in it
    bool errors = false;        ///< lists what could not be read
    Form form = Form::Text;
};
/// Prints the item's size and, of a folder, what is in it; meanwhile, on a terminal, how far it has
/// come. Ctrl-C ends it with what is known by then. False when something is missing in the sums.
[[nodiscard]] bool size(const SizeOptions &options);

/// What a desktop keeps of an item beside its contents, one subcommand each.
enum class Attribute { Label, Type, Creator, Invisible, Lock };

struct AttributeOptions {
    Attribute attribute = Attribute::Label;
    std::string path;
    std::optional<std::string> value; ///< nothing: print it; may be the path, and the path this
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

struct PermOptions {
    std::string value;
    Form form = Form::Text;
};
void perm(const PermOptions &options);

} // namespace MWCore::mwfile
