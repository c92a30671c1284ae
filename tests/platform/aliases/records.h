// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/aliases/Aliases.h"

#include <gtest/gtest.h>

#include <string>

/// The record of a new alias to the item at @p path.
inline QByteArray aliasOf(const std::string &path) {
    MWCore::FSRef target;
    QByteArray alias;
    EXPECT_EQ(MWCore::FSPathMakeRef(path.c_str(), &target), MWCore::noErr);
    EXPECT_EQ(MWCore::FSNewAlias(target, &alias), MWCore::noErr);
    return alias;
}
