// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/ChildProcess.h"

#include <sys/types.h>

#include <cstddef>
#include <memory>

namespace qk::platform {

/// Grows a block of `malloc` memory and reads into it directly: no byte is copied or cleared on the way. Growth
/// doubles; blocks of this size are moved by remapping their pages. Threads: one at a time.
class OutputCollector {
public:
    /// Reads what `descriptor` has, as read(2) does: the number of bytes, 0 at the end, -1 with `errno`.
    /// Throws `std::bad_alloc` when the memory is exhausted.
    [[nodiscard]] ssize_t readFrom(int descriptor);

    /// Everything read so far, in memory of just that size.
    [[nodiscard]] MallocBytes take();

private:
    void grow();

    std::unique_ptr<char, MallocBytes::Free> bytes_;
    std::size_t length_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace qk::platform
