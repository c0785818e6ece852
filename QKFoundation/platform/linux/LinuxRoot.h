// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace qk::platform {

/// The folder under which the system's files are looked up: "/" for this host, a folder of captured files in tests.
/// Links below it are followed as the kernel follows them. Threads: a plain value.
class LinuxRoot {
public:
    LinuxRoot() = default;
    explicit LinuxRoot(std::string_view folder) : prefix_(folder) {
        while (prefix_.ends_with('/')) {
            prefix_.pop_back();
        }
    }

    /// Whether this is the running system itself, so that system calls answer for the same machine as files do.
    [[nodiscard]] bool isHost() const noexcept { return prefix_.empty(); }

    /// Where the file that the system calls `path` lies. A relative path stays as it is.
    [[nodiscard]] std::string path(std::string_view path) const {
        return path.starts_with('/') ? prefix_ + std::string(path) : std::string(path);
    }

private:
    std::string prefix_; // without a trailing "/": empty for the host
};

} // namespace qk::platform
