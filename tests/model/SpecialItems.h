// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/values/MXItemKind.h"
#include "tests/support/TemporaryFolder.h"

#include <vector>

/// A folder with an item for every kind and every way to recognise it.
class SpecialItems {
public:
    struct Row {
        const char *name;
        MWCore::MXItemKind kind;
        int targetKind; ///< -1 if none is reported
        bool isPackaged;
    };

    SpecialItems();

    [[nodiscard]] static const std::vector<Row> &rows();
    [[nodiscard]] const std::string &path() const { return folder_.path(); }
    [[nodiscard]] std::string at(const std::string &name) const { return folder_.at(name); }

private:
    void write(const std::string &name, const std::string &content) const;
    void alias(const std::string &name, const std::string &target) const;

    TemporaryFolder folder_;
};
