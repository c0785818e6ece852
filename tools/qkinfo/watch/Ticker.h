// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace qk::info {

/// A descriptor that becomes readable in equal intervals.
class Ticker {
public:
    /// The first time after `first`, then every `interval`. Both are positive.
    Ticker(std::chrono::milliseconds first, std::chrono::milliseconds interval);
    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;
    ~Ticker();

    [[nodiscard]] int fd() const { return fd_; }

    /// Takes the ticks that have come as one; waits for one.
    void take() const;

private:
    int fd_;
};

} // namespace qk::info
