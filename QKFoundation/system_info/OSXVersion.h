/* SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include "QKFoundation/platform/Export.h"

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The version of the running operating system, for callers in C. Versions are compared by (major, minor), the major
/// number first; the patch level never takes part. A number that the system does not tell counts as 0. Threads: any, at
/// the same time. Every call asks the system afresh.

/// `OSXVersionIs`. Whether both numbers are the running version's.
QK_EXPORT bool OSXVersionIs(int64_t majorVersion, int64_t minorVersion);

/// `OSXVersionGreaterThan`. Whether the running version is strictly greater.
QK_EXPORT bool OSXVersionGreaterThan(int64_t majorVersion, int64_t minorVersion);

/// `OSXVersionLessThan`. Whether the running version is strictly less.
QK_EXPORT bool OSXVersionLessThan(int64_t majorVersion, int64_t minorVersion);

/// `OSVersion`. Major and minor number, "12.0". Never null; valid until the calling thread calls `OSVersion` again or
/// ends.
QK_EXPORT const char* OSVersion(void);

/// `OSVersionLong`. Major, minor and patch number, "12.0.0". Never null; valid until the calling thread calls
/// `OSVersionLong` again or ends.
QK_EXPORT const char* OSVersionLong(void);

#ifdef __cplusplus
} // extern "C"
#endif
