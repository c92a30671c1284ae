// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"

#include <span>
#include <string>

#include <QByteArray>

/// An operation of the library that changes an item, or makes one.
struct Change {
    const char *what;
    MWCore::OSStatus (*make)(const std::string &path);
    bool (*isMade)(const std::string &path);

    /// What the item is before: none, a file, or a file with a sidecar that keeps information, an
    /// attribute and a fork.
    enum class Item { None, Plain, WithSidecar } item;
};

/// All of them, so that none is left out of an attack.
std::span<const Change> allChanges();

/// A name that every kind of item can have, and that of its sidecar.
constexpr const char *kItemName = "item.desktop";
constexpr const char *kSidecarName = "._item.desktop";

/// Makes the item that @p change wants at @p path.
void makeItem(const std::string &path, Change::Item item);

/// Lets an item that was locked be changed and removed again.
void unlock(const std::string &path);

/// The fork of the item is whole: as makeItem() made it, perhaps with other resources.
bool hasWholeFork(const std::string &path);

/// An access control list in the kernel's form: user::rw- user:4:rw- group::rw- mask::rw-
/// other::---
QByteArray listForUser4();
