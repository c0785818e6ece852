/* SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include "QKFoundation/platform/Export.h"

#ifdef __cplusplus
extern "C" {
#endif

/// `qk_getDownloadPath`. The user's folder for downloads in UTF-8, for callers in C; see
/// `NSFileManager(DownloadPath)`. Never null; valid until the calling thread calls it again or ends. The caller does
/// not free it. Threads: any, at the same time.
QK_EXPORT const char* qk_getDownloadPath(void);

#ifdef __cplusplus
} // extern "C"
#endif
