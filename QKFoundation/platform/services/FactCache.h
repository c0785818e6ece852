// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

namespace qk {
class NSBundle;
}

namespace qk::platform {

/// A fact that is read once: by whoever asks first, while the others wait. A read that raises is done again by the
/// next one. Threads: any, at the same time.
template <typename T>
class OnceFact {
public:
    /// What `read` answered when it was called first.
    template <typename Read>
    [[nodiscard]] const T& get(Read read) {
        std::call_once(guard_, [&] { value_ = read(); });
        return value_;
    }

private:
    std::once_flag guard_;
    T value_{};
};

/// Facts that cannot change while a process runs, kept once read. 0 in a plain number: not read yet; a race repeats
/// that read. One cache belongs to one set of services, so a new machine starts without any. Threads: any, at the same
/// time.
struct FactCache {
    std::atomic<std::uint32_t> physicalProcessors{0};
    std::atomic<std::uint32_t> logicalProcessors{0};
    std::atomic<std::uint32_t> maximumFrequency{0}; ///< MHz
    std::atomic<std::uint64_t> physicalMemory{0};   ///< bytes
    std::atomic<std::uint64_t> pageSize{0};         ///< bytes

    OnceFact<std::uint32_t> processOwnerID;
    OnceFact<bool> isProcessOwnerRoot;
    OnceFact<bool> isProcessOwnerXcodeServer;
    OnceFact<bool> isProcessOwnerAdmin;
    OnceFact<std::shared_ptr<NSBundle>> mainBundle;
};

} // namespace qk::platform
