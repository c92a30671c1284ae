// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/themes/IconTheme.h"

#include <memory>

namespace MWCore {

/// Identifies a theme, or none, in the key of a cache, which must not keep the theme in memory. No
/// later theme has the same tag. A plain value.
class ThemeTag {
public:
    ThemeTag() = default;
    explicit ThemeTag(const std::shared_ptr<const IconTheme> &theme)
        : theme_(theme), isNone_(!theme) {}

    /// Whether nobody uses the theme any more, so that its images are of no use either.
    [[nodiscard]] bool isObsolete() const { return !isNone_ && theme_.expired(); }

    [[nodiscard]] bool operator==(const ThemeTag &other) const {
        return !theme_.owner_before(other.theme_) && !other.theme_.owner_before(theme_);
    }

private:
    std::weak_ptr<const IconTheme> theme_;
    bool isNone_ = true;
};

} // namespace MWCore
