// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_H
#define MFS_H

/// The file item core: records of file system entries, folder listings, the permission codec, and
/// path, name, size and date texts. Plain C that depends on libc alone.
///
/// These rules hold for every operation:
/// - A returned text is newly allocated and the caller frees it with `free`, except for the shared
///   `mfs_path_root`. Unless an operation says more, a null text means that memory ran out or that
///   an argument was null.
/// - Arguments must not be null unless the operation says what null means.
/// - Texts are NUL-terminated bytes; a path or name may hold any bytes that the system allows.
/// - There are no locks. Any number of threads may work at once on different trees; the records of
///   one tree belong to one thread at a time.
/// - Trace lines go to the stream set with `mfs_set_trace_stream`.

#include "mfs_array.h"
#include "mfs_date.h"
#include "mfs_fso.h"
#include "mfs_path.h"
#include "mfs_permissions.h"
#include "mfs_string.h"
#include "mfs_utility.h"

#endif
