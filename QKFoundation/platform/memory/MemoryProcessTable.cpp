// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryProcessTable.h"

#include <algorithm>

namespace qk::platform::memory {

kinfo_proc makeProcess(std::int32_t pid, char state, std::string_view command) {
    kinfo_proc process{};
    process.kp_proc.p_pid = pid;
    process.kp_proc.p_stat = state;
    std::ranges::copy(command.substr(0, MAXCOMLEN), process.kp_proc.p_comm);
    return process;
}

void MemoryProcessTable::setPath(std::int32_t pid, std::string_view path) {
    const std::scoped_lock lock(mutex_);
    paths_[pid] = std::string(path);
}

std::optional<std::string> MemoryProcessTable::pidPath(std::int32_t pid) const {
    const std::scoped_lock lock(mutex_);
    const auto found = paths_.find(pid);
    return found != paths_.end() ? std::optional(found->second) : std::nullopt;
}

} // namespace qk::platform::memory
