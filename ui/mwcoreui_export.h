// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

/// Marks a symbol of the library's interface; everything else is hidden.
#define MWCOREUI_EXPORT __attribute__((visibility("default")))
