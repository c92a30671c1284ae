// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"

#include <span>
#include <string>

#include <QByteArray>

/// An operation of the library that changes or creates an item.
struct Change {
    const char *what;
    MWCore::OSStatus (*make)(const std::string &path);
    bool (*isMade)(const std::string &path);

    /// What exists before: nothing, a file, a file with a sidecar that holds Finder information, an
    /// attribute and a fork, a file with a fork in an attribute, or a file in a folder with an
    /// icon.
    enum class Item { None, Plain, WithSidecar, WithForkAttribute, InFolderWithIcon } item;
};

/// All operations, so that the tests leave none out.
std::span<const Change> allChanges();

const Change &changeNamed(const std::string &what);

/// A name that every kind of item can have, and that of its sidecar.
constexpr const char *kItemName = "item.desktop";
constexpr const char *kSidecarName = "._item.desktop";

/// Creates the item that a change needs at @p path.
void makeItem(const std::string &path, Change::Item item);

/// Unlocks an item, so that it can be changed and removed again.
void unlock(const std::string &path);

/// Whether the item's fork still contains the resource that makeItem() wrote.
bool hasWholeFork(const std::string &path);

/// Whether everything that the item had before and that no change may lose is whole.
bool isIntact(const std::string &path, Change::Item item);

/// An access control list in the kernel's form: user::rw- user:4:rw- group::rw- mask::rw-
/// other::---
QByteArray listForUser4();
