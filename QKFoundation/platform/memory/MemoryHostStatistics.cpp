// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryHostStatistics.h"

#include <cerrno>
#include <numeric>
#include <utility>

namespace qk::platform::memory {

// The next answer's result, or the last one's again: 0, or the error number that was written down.
template <typename Result>
int MemoryHostStatistics::Script<Result>::play(Result& result) {
    if (!next.empty()) {
        last = std::move(next.front());
        next.pop_front();
    }
    if (const int* error = std::get_if<int>(&last)) {
        return *error;
    }
    result = std::get<Result>(last);
    return 0;
}

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
    ticks_.next.emplace_back(info);
}

void MemoryHostStatistics::refuseProcessorTicks(int error) {
    const std::scoped_lock lock(mutex_);
    ticks_.next.emplace_back(error);
}

void MemoryHostStatistics::addMemoryStatistics(const VMStatistics64& statistics) {
    const std::scoped_lock lock(mutex_);
    memory_.next.emplace_back(statistics);
}

void MemoryHostStatistics::refuseMemoryStatistics(int error) {
    const std::scoped_lock lock(mutex_);
    memory_.next.emplace_back(error);
}

int MemoryHostStatistics::hostProcessorInfo(ProcessorLoadInfo& info) const {
    const std::scoped_lock lock(mutex_);
    return ticks_.play(info);
}

int MemoryHostStatistics::hostStatistics64(VMStatistics64& statistics) const {
    const std::scoped_lock lock(mutex_);
    return memory_.play(statistics);
}

} // namespace qk::platform::memory
