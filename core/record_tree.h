// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"

#include <memory>

namespace MWCore {

struct DestroyTree {
    void operator()(mfs_fso *record) const { mfs_fso_destroy_tree(record); }
};

/// A record that owns everything below it.
using RecordTree = std::unique_ptr<mfs_fso, DestroyTree>;

} // namespace MWCore
