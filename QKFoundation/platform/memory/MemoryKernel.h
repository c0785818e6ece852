// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Kernel.h"
#include "QKFoundation/platform/services/ProcessTable.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform::memory {

/// A kernel that knows the facts it was given. Threads: any, at the same time.
class QK_EXPORT MemoryKernel final : public Kernel {
public:
    /// The fact `name` is `text`, kept in UTF-8 with its zero byte behind it.
    void setSysctl(std::string_view name, std::string_view text);

    /// The fact `name` is `number`, as wide as its type.
    template <std::integral T>
    void setSysctl(std::string_view name, T number) {
        setSysctlBytes(name, std::as_bytes(std::span(&number, 1)));
    }

    /// The fact `name` consists of exactly these bytes.
    void setSysctlBytes(std::string_view name, std::span<const std::byte> bytes);

    /// The fact `name` tells its size but cannot be read: reading it answers `error`.
    void failReads(std::string_view name, int error);

    /// There is no fact `name`.
    void removeSysctl(std::string_view name);

    /// The fact at the number path `name` is `text`, with its zero byte behind it.
    void setSysctl(const std::vector<int>& name, std::string_view text);

    /// The fact at the number path `name` consists of exactly these bytes.
    void setSysctlBytes(const std::vector<int>& name, std::span<const std::byte> bytes);

    /// The machine was started at `seconds` since 1970, and so many microseconds.
    void setBootTime(std::int64_t seconds, std::int32_t microseconds = 0);

    /// One answer of the kernel: an error number, or 0 and the fact's bytes.
    struct Answer {
        int error = 0;
        std::vector<std::byte> bytes;
    };

    /// The next requests for the fact at the number path `name`, size queries included, get these answers in turn;
    /// after the last one the fact itself is told again.
    void playSysctl(const std::vector<int>& name, const std::vector<Answer>& answers);

    /// The process table holds `processes`.
    void setProcesses(std::span<const kinfo_proc> processes);

    /// Reading the fact at the number path `name` answers `error`, though its size is told.
    void failReads(const std::vector<int>& name, int error);

    /// How often the fact `name` was asked for, successfully or not, size queries included.
    [[nodiscard]] std::size_t requests(std::string_view name) const;

    int sysctlbyname(const char* name, void* buffer, std::size_t* size) const override;
    int sysctl(std::span<const int> name, void* buffer, std::size_t* size) const override;

private:
    struct Fact {
        std::vector<std::byte> bytes;
        int readError = 0;
    };
    static int answer(const Fact* fact, void* buffer, std::size_t* size);

    mutable std::mutex mutex_;
    std::map<std::string, Fact, std::less<>> named_;
    std::map<std::vector<int>, Fact> numbered_;
    mutable std::map<std::vector<int>, std::deque<Answer>> played_;
    mutable std::map<std::string, std::size_t, std::less<>> requests_;
};

} // namespace qk::platform::memory
