// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <QByteArray>
#include <QImage>

/// Another program or library that reads icon families.
struct IconReader {
    enum class Shows : uint8_t { EveryImage, OneImage };

    const char *name;
    /// All images that it shows of the file @p family.
    std::vector<QImage> (*read)(const std::string &family, const TemporaryFolder &scratch);
    bool (*isInstalled)();
    Shows shows;
    int largestWidth; ///< of its images of a complete family, pixels
};

inline constexpr int kIconReaderCount = 4;
extern const IconReader kIconReaders[kIconReaderCount];

/// An element that the library can write, and which readers show it, in the order of kIconReaders.
struct ShownElement {
    enum Shown : bool { No, Yes };

    const char *type;
    Shown shown[kIconReaderCount];
};
std::span<const ShownElement> shownElements();

bool isInstalled(const std::string &program);
bool isPillowInstalled();
bool hasQtPlugin();

/// Runs pillow.py, which is beside this file.
bool runPillow(const std::vector<std::string> &arguments);

/// Tests with each reader, by its index.
class IconReaders : public testing::TestWithParam<int> {
protected:
    void SetUp() override;

    [[nodiscard]] static const IconReader &reader() { return kIconReaders[GetParam()]; }

    /// Expects the reader to show, of the elements that it reads, the same images as the library,
    /// and no others. Returns the largest width.
    static int expectSameImages(const QByteArray &family);

    /// Whether the reader shows elements of @p type.
    [[nodiscard]] static bool isShown(uint32_t type);

    /// @p type and the types of the masks that it is shown with.
    [[nodiscard]] static std::vector<uint32_t> withMask(uint32_t type);
};
