/* SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include "QKFoundation/platform/Export.h"

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Who runs this process and who is at the console, for callers in C. The process owner is its real user, read once and
/// kept for the life of the process: switching the effective user does not change it. Threads: any, at the same time.

/// `QKUserUtils_UnknownUID`. A mark for callers that do not know a user: 4294967295. No function here returns it.
QK_EXPORT extern const uint32_t QKUserUtils_UnknownUID;

/// `getProcessOwnerUID`. The real user id of the process.
QK_EXPORT uint32_t getProcessOwnerUID(void);

/// `getConsoleUID`. The id of the user who is logged in at the console now; 0 when nobody is, or it cannot be told.
/// Linux: the active session of seat0 (logind, elogind), the log-in screen apart; without them the owner of the
/// terminal in front.
QK_EXPORT uint32_t getConsoleUID(void);

/// `isProcessOwnerRootUser`. Whether the process belongs to root.
QK_EXPORT bool isProcessOwnerRootUser(void);

/// `isProcessOwnerConsoleUser`. Whether the process belongs to the user of `getConsoleUID`, who is asked for by every
/// call. Deliberate: nobody at the console is 0 as well, so a process of root answers true then.
QK_EXPORT bool isProcessOwnerConsoleUser(void);

#ifdef __cplusplus
} // extern "C"
#endif
