// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/MetadataStore.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

/// The attribute that holds the 32 bytes of Finder information and nothing else.
constexpr const char *kBare = "user.com.apple.FinderInfo";

// The flags of labels.
constexpr uint16_t kRed = 6 << 1;
constexpr uint16_t kGreen = 2 << 1;

inline MWCore::FinderInfo infoOf(const std::string &path) {
    MWCore::FinderInfo info;
    EXPECT_EQ(MWCore::readFinderInfo(path.c_str(), &info), MWCore::noErr);
    return info;
}

inline MWCore::OSStatus writeLabel(const std::string &path, int number) {
    MWCore::FinderInfo info = infoOf(path);
    info.setLabelNumber(number);
    return MWCore::writeFinderInfo(path.c_str(), info);
}
