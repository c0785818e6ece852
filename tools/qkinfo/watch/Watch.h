// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Terminal.h"
#include "tools/qkinfo/watch/WatchLoop.h"

namespace qk::info {

/// Shows the machine under load on standard output until `options` or the user ends it. 0, else the number of the
/// error when it could not be shown.
[[nodiscard]] int watch(const WatchOptions& options, bool json, ColorChoice color, const Clock& clock);

/// Whether texts of the environment's language may hold the block characters of Unicode: whether the first one of
/// LC_ALL, LC_CTYPE and LANG that is set and not empty names UTF-8. Each may be null.
[[nodiscard]] bool showsBlocks(const char* all, const char* characters, const char* language);

} // namespace qk::info
