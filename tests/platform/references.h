// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/aliases/Aliases.h"

#include <gtest/gtest.h>

#include <string>

/// A reference to the item at @p path.
inline MWCore::FSRef refTo(const std::string &path) {
    MWCore::FSRef ref;
    EXPECT_EQ(MWCore::FSPathMakeRef(path.c_str(), &ref), MWCore::noErr) << path;
    return ref;
}

/// The record of a new alias to the item at @p path.
inline QByteArray aliasOf(const std::string &path) {
    QByteArray alias;
    EXPECT_EQ(MWCore::FSNewAlias(refTo(path), &alias), MWCore::noErr) << path;
    return alias;
}

/// The path of the alias's target, or the text of the status.
inline std::string resolved(const QByteArray &alias) {
    MWCore::FSRef target;
    const MWCore::OSStatus status = MWCore::FSResolveAlias(alias, &target);
    return status == MWCore::noErr ? target.path.toStdString() : MWCore::statusText(status);
}
