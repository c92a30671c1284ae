// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_STRING_H
#define MFS_STRING_H

#include "mfs_export.h"

#include <stdint.h>

MFS_BEGIN_DECLS

/// The number of blanks, carriage returns (13) and line feeds (10) at the end; 0 for null.
MFS_EXPORT int32_t mfs_string_back_spaces(const char *text);

/// The extension of @p name without its dot, as a fresh text: what follows the last dot once the
/// blanks, carriage returns and line feeds at the end are gone. A dot in the first place starts no
/// extension. Null when there is none; the empty text when the name ends with a dot.
MFS_EXPORT MFS_MUST_USE char *mfs_string_get_extension(const char *name);

/// Copies the last @p length - 1 characters of @p name (without blanks, carriage returns and line
/// feeds at its end) and a NUL into the buffer @p *out, which has room for @p length bytes, when
/// the character before them is a dot. Returns 1 then, else 0 with nothing written.
MFS_EXPORT MFS_MUST_USE int mfs_string_get_extension_with_known_length(const char *name, char **out,
                                                                       int32_t length);

MFS_END_DECLS

#endif
