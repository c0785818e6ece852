// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace qk::platform {

/// The kernel's information tree, asked by name or by number path.
///
/// Every call answers 0 for success, else an error number of <cerrno>: `ENOENT` for a fact that this system does not
/// have, `ENOMEM` for a buffer that is too small. The protocol of both calls:
/// - without `buffer`, `*size` becomes the number of bytes that the fact takes now (the process table: at least as
/// many);
/// - with `buffer`, `*size` says how many bytes it has and becomes the number of bytes written; a buffer that is too
/// small is left as it is. Texts are UTF-8 and end with a zero byte that is part of their size. Integers have the width
/// that the fact has in the kernel, which may be less than the buffer's; the rest of the buffer is left as it is.
/// Threads: any, at the same time.
class QK_EXPORT Kernel {
public:
    Kernel() = default;
    Kernel(const Kernel&) = delete;
    Kernel& operator=(const Kernel&) = delete;
    virtual ~Kernel();

    /// The fact `name`, such as "hw.memsize". `name` and `size` are not null.
    virtual int sysctlbyname(const char* name, void* buffer, std::size_t* size) const = 0;

    /// The fact at the number path `name`, such as {`kCtlKern`, `kKernBootTime`}. `size` is not null.
    virtual int sysctl(std::span<const int> name, void* buffer, std::size_t* size) const = 0;
};

/// The first number of the kernel's own facts (`CTL_KERN`).
inline constexpr int kCtlKern = 1;
/// Behind `kCtlKern`: the kernel's version, a text (`KERN_VERSION`).
inline constexpr int kKernVersion = 2;
/// Behind `kCtlKern`: the moment of the start, a `TimeValue` (`KERN_BOOTTIME`).
inline constexpr int kKernBootTime = 21;

/// A moment as the kernel hands it out.
struct TimeValue {
    std::int64_t seconds; ///< whole seconds since 1970-01-01 00:00:00 UTC
    std::int32_t microseconds;
    std::int32_t padding;
};
static_assert(sizeof(TimeValue) == 16);

} // namespace qk::platform
