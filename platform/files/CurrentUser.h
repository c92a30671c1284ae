// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QString>

namespace MWCore {

/// The login name of the process's real user, looked up once; null for a user without an account.
/// Any thread.
[[nodiscard]] QString currentUserName();

} // namespace MWCore
