// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace qk {

/// `NSSearchPathDirectory`. A standard folder, by purpose; the base library's other values may be given too.
enum class NSSearchPathDirectory : std::uint64_t {
    NSCachesDirectory = 13,             ///< what can be made again
    NSApplicationSupportDirectory = 14, ///< what applications keep
    NSDownloadsDirectory = 15,          ///< what the user fetched
};

/// `NSSearchPathDomainMask`. For whom a standard folder is.
enum class NSSearchPathDomainMask : std::uint64_t {
    NSUserDomainMask = 1,   ///< one user
    NSSystemDomainMask = 8, ///< everybody on this computer
};

} // namespace qk
