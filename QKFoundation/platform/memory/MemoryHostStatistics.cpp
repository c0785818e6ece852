// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryHostStatistics.h"

#include <cerrno>
#include <numeric>

namespace qk::platform::memory {
namespace {

// Plays the next answer into `result`: 0, or the error number that was written down.
template <typename Result>
int play(std::deque<std::variant<int, Result>>& script, Result& result) {
    if (script.empty()) {
        return ENOENT;
    }
    const std::variant<int, Result> answer = script.front();
    if (script.size() > 1) {
        script.pop_front();
    }
    if (const int* error = std::get_if<int>(&answer)) {
        return *error;
    }
    result = std::get<Result>(answer);
    return 0;
}

} // namespace

void MemoryHostStatistics::addProcessorTicks(const std::vector<Ticks>& processors) {
    std::vector<std::uint32_t> numbers(processors.size());
    std::iota(numbers.begin(), numbers.end(), 0U);
    addProcessorTicks(processors, numbers);
}

void MemoryHostStatistics::addProcessorTicks(const std::vector<Ticks>& processors,
                                             const std::vector<std::uint32_t>& numbers) {
    ProcessorLoadInfo info;
    info.processors = numbers;
    for (const Ticks& ticks : processors) {
        for (const std::uint32_t count : ticks) {
            info.ticks.push_back(static_cast<std::int32_t>(count));
        }
    }
    const std::scoped_lock lock(mutex_);
    ticks_.emplace_back(info);
}

void MemoryHostStatistics::refuseProcessorTicks(int error) {
    const std::scoped_lock lock(mutex_);
    ticks_.emplace_back(error);
}

void MemoryHostStatistics::addMemoryStatistics(const VMStatistics64& statistics) {
    const std::scoped_lock lock(mutex_);
    memory_.emplace_back(statistics);
}

void MemoryHostStatistics::refuseMemoryStatistics(int error) {
    const std::scoped_lock lock(mutex_);
    memory_.emplace_back(error);
}

int MemoryHostStatistics::hostProcessorInfo(ProcessorLoadInfo& info) const {
    const std::scoped_lock lock(mutex_);
    return play(ticks_, info);
}

int MemoryHostStatistics::hostStatistics64(VMStatistics64& statistics) const {
    const std::scoped_lock lock(mutex_);
    return play(memory_, statistics);
}

} // namespace qk::platform::memory
