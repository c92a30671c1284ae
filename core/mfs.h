// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_H
#define MFS_H

/// The file item core: records of file system entries, the listing of a folder into records,
/// the permission codec, and the texts that go with them. Plain C; needs nothing but libc.
///
/// What holds for every operation:
/// - A returned text is a fresh allocation that the caller frees with `free`, except the shared
///   `mfs_path_root`. Null instead of a text means that memory ran out or that the argument was
///   null, unless the operation says more.
/// - Arguments are not null unless the operation says what null means.
/// - Texts are NUL-terminated bytes; a path or name may hold any bytes that the system allows.
/// - Nothing takes a lock. Any number of threads may work at once, each on records of its own; the
///   records of one tree belong to one thread at a time.
/// - Trace lines go to the stream of `mfs_set_trace_stream`.

#include "mfs_array.h"
#include "mfs_date.h"
#include "mfs_fso.h"
#include "mfs_path.h"
#include "mfs_permissions.h"
#include "mfs_string.h"
#include "mfs_utility.h"

#endif
