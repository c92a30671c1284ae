// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

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
    bool all = false; ///< also names that begin with a dot
    Form form = Form::Text;
};
void list(const ListOptions &options);

struct InfoOptions {
    std::vector<std::string> paths;
    Form form = Form::Text;
};
/// Paths that fail are reported on standard error and left out; false when there was one.
[[nodiscard]] bool info(const InfoOptions &options);

struct PermOptions {
    std::string value;
    Form form = Form::Text;
};
void perm(const PermOptions &options);

} // namespace MWCore::mwfile
