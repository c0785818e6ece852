// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace qk::bench {

/// Leaves this system's network, its bus and its network managers: what follows sees none of them. False where that is
/// not allowed.
bool leaveThisSystem();

/// A network namespace with so many interfaces beside the loopback one: ends of cables that are up, with an address of
/// each kind, the first of them with the default route.
class Machine {
public:
    explicit Machine(std::size_t interfaces);
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    ~Machine();

    /// False when the kernel or ip refused.
    [[nodiscard]] bool isThere() const noexcept { return isThere_; }

    /// From now on this thread, and what it starts, is on this machine.
    void enter() const;

    [[nodiscard]] std::size_t interfaces() const noexcept { return interfaces_; }

private:
    std::size_t interfaces_;
    int network_ = -1;
    bool isThere_ = false;
};

} // namespace qk::bench
