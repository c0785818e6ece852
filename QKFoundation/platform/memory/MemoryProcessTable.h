// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/ProcessTable.h"

#include <map>
#include <mutex>
#include <string_view>
#include <vector>

namespace qk::platform::memory {

/// A record of the process table.
[[nodiscard]] QK_EXPORT kinfo_proc makeProcess(std::int32_t pid, char state, std::string_view command);

/// The paths of processes that it was given. Threads: any, at the same time.
class QK_EXPORT MemoryProcessTable final : public ProcessTable {
public:
    /// Process `pid` runs the executable at `path`, any bytes.
    void setPath(std::int32_t pid, std::string_view path);

    [[nodiscard]] std::optional<std::string> pidPath(std::int32_t pid) const override;

private:
    mutable std::mutex mutex_;
    std::map<std::int32_t, std::string> paths_;
};

} // namespace qk::platform::memory
