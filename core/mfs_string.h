// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_STRING_H
#define MFS_STRING_H

#include "mfs_export.h"

#include <stdint.h>

MFS_BEGIN_DECLS

/// The number of trailing blanks, carriage returns (13) and line feeds (10); 0 for null.
MFS_EXPORT int32_t mfs_string_back_spaces(const char *text);

/// The extension of @p name without its dot: the part after the last dot, without trailing blanks,
/// carriage returns and line feeds. A leading dot does not start an extension. Null if there is no
/// extension; the empty text if the name ends with a dot.
MFS_EXPORT MFS_MUST_USE char *mfs_string_get_extension(const char *name);

/// Copies an extension of known length. If the last @p length - 1 characters of @p name (ignoring
/// trailing blanks, carriage returns and line feeds) follow a dot, copies them and a NUL into the
/// buffer @p *out, which has room for @p length bytes, and returns 1. Otherwise returns 0 and
/// writes nothing.
MFS_EXPORT MFS_MUST_USE int mfs_string_get_extension_with_known_length(const char *name, char **out,
                                                                       int32_t length);

MFS_END_DECLS

#endif
