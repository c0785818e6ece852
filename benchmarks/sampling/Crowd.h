// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

namespace qk::bench {

/// Sleeping children, so that the system has a certain number of processes.
class Crowd {
public:
    Crowd() = default;
    Crowd(const Crowd&) = delete;
    Crowd& operator=(const Crowd&) = delete;
    ~Crowd();

    /// Starts or ends children until the system has about `processes` of them.
    void growTo(std::size_t processes);

private:
    std::vector<pid_t> children_;
};

/// File systems in memory in a mount name space of this program's own, so that the table of mounts is long.
class Mounts {
public:
    Mounts();
    Mounts(const Mounts&) = delete;
    Mounts& operator=(const Mounts&) = delete;
    ~Mounts();

    /// Whether this program may mount at all.
    [[nodiscard]] bool areAllowed() const noexcept { return areAllowed_; }

    void growTo(std::size_t mounts);

private:
    bool areAllowed_ = false;
    std::string folder_;
    std::vector<std::string> paths_;
};

} // namespace qk::bench
