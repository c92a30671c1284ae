// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "CommandLine.h"

#include "HelpFormatter.h"
#include "Output.h"

#include <MWCore/mfs_utility.h>

#include <cstdio>
#include <map>
#include <memory>
#include <sstream>
#include <vector>

#include <QLoggingCategory>

namespace MWCore::mwfile {
namespace {

Order orderNamed(const std::string &word) {
    static const std::map<std::string, Order> orders = {{"name", Order::Name},
                                                        {"date", Order::Date},
                                                        {"size", Order::Size},
                                                        {"access", Order::Access}};
    const auto found = orders.find(word);
    if (found == orders.end())
        throw CLI::ValidationError("--sort " + word, "not one of name, date, size and access");
    return found->second;
}

/// CLI11 interprets "[a,b]" and "++", so paths of that form are prefixed with "./".
std::string asPath(const std::string &argument) {
    const bool isList = argument.starts_with('[') && argument.ends_with(']');
    return isList || argument == "++" ? "./" + argument : argument;
}

} // namespace

void addJson(CLI::App &command, Form &form) {
    command.add_flag_callback(
        "--json", [&form] { form = Form::Json; }, "Print JSON");
}

CommandLine::CommandLine() {
    app_.set_version_flag("--version", "mwfile " MWCORE_VERSION);
    app_.add_flag_callback(
        "--trace",
        [] {
            mfs_set_trace_stream(stderr);
            QLoggingCategory::setFilterRules({});
        },
        "Show the library's log and trace lines on standard error");
    app_.require_subcommand(1);
    app_.formatter(std::make_shared<HelpFormatter>());
    addList();
    addInfo();
    addSize();
    addPerm();
    addAttribute("label", "a label: red, ... none, or its number", Attribute::Label);
    addAttribute("type", "a file type: four characters or none", Attribute::Type);
    addAttribute("creator", "a creator: four characters or none", Attribute::Creator);
    addAttribute("invisible", "whether an item is hidden: on or off", Attribute::Invisible);
    addAttribute("lock", "whether an item is locked: on or off", Attribute::Lock);
    addAlias();
    addIcon();
}

void CommandLine::runs(CLI::App &command, std::function<void()> work) {
    command.final_callback([this, work = std::move(work)] {
        work_ = [work] {
            work();
            return true;
        };
    });
}

void CommandLine::addList() {
    CLI::App &command = *app_.add_subcommand("list", "List the contents of a folder");
    command.add_option("FOLDER", list_.folder, "The folder")->required();
    command.add_flag("--all", list_.all,
                     "Include what file browsers hide: names that begin with a "
                     "dot and names of system folders and files such as bin, "
                     "dev, etc, tmp, usr, var and Trash");
    command
        .add_option_function<std::string>(
            "--sort", [this](const std::string &word) { list_.order = orderNamed(word); },
            "Sort by name from A to Z (default), or by date, size or access, with "
            "the oldest, smallest or least accessible first")
        ->option_text("name|date|size|access");
    command.add_flag("--reverse", list_.reverse, "Reverse the order");
    addJson(command, list_.form);
    runs(command, [this] { list(list_); });
}

void CommandLine::addInfo() {
    CLI::App &command = *app_.add_subcommand("info", "Print the properties of items");
    command.add_option("PATH", info_.paths, "The items; links are not followed")->required();
    addJson(command, info_.form);
    command.add_flag("--icon", info_.icon,
                     "Show the icon that a file browser shows, on terminals with pictures (kitty "
                     "graphics, iTerm2 inline images or sixel); on others a note says why it is "
                     "missing. Not with --json");
    command.final_callback([this] {
        if (info_.icon && info_.form == Form::Json)
            throw CLI::ExcludesError("--icon", "--json");
        work_ = [this] { return info(info_); };
    });
}

void CommandLine::addSize() {
    CLI::App &command = *app_.add_subcommand("size", "Measure an item and its contents");
    command.add_option("PATH", size_.path, "The item; a link is not followed")->required();
    command.add_flag("--links-once", size_.linksOnce,
                     "Count the size of a file with several names only once");
    command.add_flag("--sidecars-once", size_.sidecarsOnce,
                     "Count a resource fork in a sidecar (._name) only once");
    command.add_flag("--one-file-system", size_.oneFileSystem,
                     "Skip file systems that are mounted below it");
    command.add_flag("--walk", size_.walk, "Measure the contents even of a volume");
    command.add_flag("--errors", size_.errors, "List the items that could not be read");
    addJson(command, size_.form);
    command.final_callback([this] { work_ = [this] { return size(size_); }; });
}

void CommandLine::addPerm() {
    CLI::App &command = *app_.add_subcommand("perm", "Convert permissions to all forms");
    command.add_option("VALUE", perm_.value,
                       "A number (755; a single digit is the owner's, two are the group's and "
                       "the others'), a text (rwxr-xr-x, -rwxr-xr-x) or a mode (0755, 04755)");
    // A listing's text begins with "-" like an option.
    command.allow_extras();
    addJson(command, perm_.form);
    command.final_callback([this, &command] {
        std::vector<std::string> values = command.remaining();
        if (!perm_.value.empty())
            values.insert(values.begin(), perm_.value);
        std::erase(values, "--");
        if (values.empty())
            throw CLI::RequiredError("VALUE");
        for (const std::string &value : values)
            if (value.starts_with("--") && value.find_first_not_of("-rwx") != std::string::npos)
                throw CLI::ValidationError(value, "unknown option");
        if (values.size() > 1)
            throw CLI::ValidationError(values.back(), "only one value is allowed");
        perm_.value = values.front();
        work_ = [this] {
            perm(perm_);
            return true;
        };
    });
}

void CommandLine::addAttribute(const char *name, const char *what, Attribute which) {
    CLI::App &command = *app_.add_subcommand(name, std::string("Print or set ") + what);
    command.add_option("PATH", attribute_.path, "The item")->required();
    command.add_option("VALUE", attribute_.value,
                       "The new value, before or after the item; without it the current value "
                       "is printed");
    addJson(command, attribute_.form);
    runs(command, [this, which] {
        attribute_.attribute = which;
        attribute(attribute_);
    });
}

void CommandLine::addAlias() {
    CLI::App &command = *app_.add_subcommand("alias", "Make and resolve alias files");
    command.require_subcommand(1);
    CLI::App &make = *command.add_subcommand("make", "Make an alias file");
    make.add_option("TARGET", alias_.target, "The target")->required();
    make.add_option("FILE", alias_.file, "The alias file; its name ends with .desktop")->required();
    make.add_flag("--finder", alias_.finderForm,
                  "Make an empty file with metadata, with any name, not a desktop entry");
    runs(make, [this] { aliasMake(alias_); });
    CLI::App &resolve = *command.add_subcommand("resolve", "Print the target of an alias file");
    resolve.add_option("FILE", alias_.file, "The alias file")->required();
    addJson(resolve, alias_.form);
    runs(resolve, [this] { aliasResolve(alias_); });
    CLI::App &show = *command.add_subcommand("show", "Print the record in an alias file");
    show.add_option("FILE", alias_.file, "The alias file")->required();
    addJson(show, alias_.form);
    runs(show, [this] { aliasShow(alias_); });
}

void CommandLine::parse(int count, char **arguments) {
    std::vector<std::string> texts; // CLI11 expects them in reverse order
    for (int index = count - 1; index > 0; --index)
        texts.push_back(asPath(arguments[index]));
    app_.parse(std::move(texts));
}

Status CommandLine::explain(const CLI::ParseError &error) {
    std::ostringstream answer;
    answer.exceptions(std::ios::badbit);
    std::ostringstream complaint;
    if (app_.exit(error, answer, complaint) == 0) {
        print(answer.str());
        return kDone;
    }
    // A missing word is often only misspelt; then report the misspelt word.
    constexpr bool kWithSubcommands = true;
    const std::vector<std::string> unknown = app_.remaining(kWithSubcommands);
    const bool isAboutAValue = error.get_name() == "ValidationError";
    printError(isAboutAValue || unknown.empty()
                   ? error.what()
                   : unknown.front() + ": unknown argument (see mwfile --help)");
    return kWrongUsage;
}

} // namespace MWCore::mwfile
