// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSData.h"
#include "QKFoundation/platform/values/NSString.h"

#include <vector>

/// `NSTask(SyncRunShell)`: runs any program to its end and hands back what it printed. No shell is involved: the
/// arguments reach the program as they are.
namespace qk::NSTask_SyncRunShell {

/// `runCommandAtPath:arguments:`. Everything that the program at `path` wrote to its standard output, once it has
/// ended; empty data when it wrote nothing. Standard error is discarded and the exit status is not examined.
///
/// The output is drained while the program runs, whatever its size. The child starts with default signal dispositions,
/// an empty signal mask and no descriptors but its standard streams. Raises `NSInvalidArgumentException`, which says
/// why, when the program cannot be launched. Threads: any, at the same time. Blocks the caller until the child has
/// ended and its output is closed.
[[nodiscard]] QK_EXPORT NSData runCommandAtPath(const NSString& path, const std::vector<NSString>& arguments);

} // namespace qk::NSTask_SyncRunShell
