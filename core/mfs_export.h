// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_EXPORT_H
#define MFS_EXPORT_H

/// Marks a symbol of the library's interface; everything else is hidden.
#define MFS_EXPORT __attribute__((visibility("default")))

/// Marks a result that has to be looked at: it owns memory or tells of a failure.
#define MFS_MUST_USE __attribute__((warn_unused_result))

#ifdef __cplusplus
#define MFS_BEGIN_DECLS extern "C" {
#define MFS_END_DECLS }
#else
#define MFS_BEGIN_DECLS
#define MFS_END_DECLS
#endif

#endif
