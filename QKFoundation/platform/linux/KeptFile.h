// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <sys/types.h>

#include <cstddef>
#include <span>
#include <string>

namespace qk::platform {

/// A file of the kernel that is read again and again: kept open, since opening and closing cost a third of a reading.
/// Every read asks the kernel afresh. Threads: any, at the same time.
class KeptFile {
public:
    /// Opens the file now; a file that is not there cannot be read later either.
    explicit KeptFile(const std::string& path);

    /// Reads from `offset` on, as much as the kernel hands out at once. The number of bytes, 0 at the end, or -1 with
    /// the reason in errno.
    [[nodiscard]] ssize_t read(std::span<char> buffer, std::size_t offset = 0) const;

    /// Whether the kernel says that what the file tells has changed since this was asked the last time. It says so for
    /// the tables of mounts and of swap, each time to one of several that ask. A captured file never changes.
    [[nodiscard]] bool hasChanged() const;

private:
    UniqueFD file_;
};

} // namespace qk::platform
