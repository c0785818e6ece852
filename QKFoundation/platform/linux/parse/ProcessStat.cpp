// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/ProcessStat.h"

#include "QKFoundation/platform/linux/parse/Text.h"

#include <string.h>

#include <algorithm>

namespace qk::platform::parse {
namespace {

constexpr std::uint32_t kKernelThreadFlag = 0x200000; // PF_KTHREAD
constexpr int kColumnsBeforeFlags = 5;                // behind the state

std::optional<char> tableState(char letter) {
    switch (letter) {
    case 'R': return SRUN;
    case 'S':
    case 'D':
    case 'I': return SSLEEP;
    case 'T':
    case 't': return SSTOP;
    case 'Z': return SZOMB;
    default: return std::nullopt;
    }
}

} // namespace

std::optional<ProcessStat> processStat(std::string_view stat) {
    const std::size_t open = stat.find('(');
    const void* last = !stat.empty() ? ::memrchr(stat.data(), ')', stat.size()) : nullptr; // rfind takes single steps
    if (open == std::string_view::npos || last == nullptr) {
        return std::nullopt;
    }
    const auto close = static_cast<std::size_t>(static_cast<const char*>(last) - stat.data());
    if (close < open || stat.size() < close + 3 || stat[close + 1] != ' ') {
        return std::nullopt;
    }
    const auto state = tableState(stat[close + 2]);
    if (!state.has_value()) {
        return std::nullopt;
    }
    std::string_view rest = stat.substr(close + 3);
    for (int column = 0; column < kColumnsBeforeFlags; ++column) {
        rest.remove_prefix(rest.empty() ? 0 : 1);
        rest.remove_prefix(std::min(rest.find(' '), rest.size()));
    }
    rest.remove_prefix(rest.empty() ? 0 : 1);
    const auto flags = number<std::uint32_t>(rest.substr(0, rest.find(' ')));
    if (!flags.has_value()) {
        return std::nullopt;
    }
    return ProcessStat{*state, (*flags & kKernelThreadFlag) != 0, stat.substr(open + 1, close - open - 1)};
}

std::optional<std::uint64_t> taskCount(std::string_view loadAverage) {
    const std::size_t slash = loadAverage.find('/');
    if (slash == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view rest = loadAverage.substr(slash + 1);
    return number<std::uint64_t>(rest.substr(0, rest.find(' ')));
}

} // namespace qk::platform::parse
