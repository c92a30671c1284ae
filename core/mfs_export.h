// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_EXPORT_H
#define MFS_EXPORT_H

/// Exports a symbol; all others are hidden.
#define MFS_EXPORT __attribute__((visibility("default")))

/// Marks a result that must not be ignored: it owns memory or reports a failure.
#define MFS_MUST_USE __attribute__((warn_unused_result))

#ifdef __cplusplus
#define MFS_BEGIN_DECLS extern "C" {
#define MFS_END_DECLS }
#else
#define MFS_BEGIN_DECLS
#define MFS_END_DECLS
#endif

#endif
