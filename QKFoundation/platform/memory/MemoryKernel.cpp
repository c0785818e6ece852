// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryKernel.h"

#include <cerrno>
#include <cstring>

namespace qk::platform::memory {
namespace {

std::vector<std::byte> zeroTerminated(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    std::vector<std::byte> copy(bytes.begin(), bytes.end());
    copy.push_back(std::byte{0});
    return copy;
}

} // namespace

void MemoryKernel::setSysctl(std::string_view name, std::string_view text) {
    setSysctlBytes(name, zeroTerminated(text));
}

void MemoryKernel::setSysctlBytes(std::string_view name, std::span<const std::byte> bytes) {
    const std::scoped_lock lock(mutex_);
    named_[std::string(name)] = {{bytes.begin(), bytes.end()}, 0};
}

void MemoryKernel::failReads(std::string_view name, int error) {
    const std::scoped_lock lock(mutex_);
    named_[std::string(name)].readError = error;
}

void MemoryKernel::removeSysctl(std::string_view name) {
    const std::scoped_lock lock(mutex_);
    named_.erase(std::string(name));
}

void MemoryKernel::setSysctl(const std::vector<int>& name, std::string_view text) {
    setSysctlBytes(name, zeroTerminated(text));
}

void MemoryKernel::setSysctlBytes(const std::vector<int>& name, std::span<const std::byte> bytes) {
    const std::scoped_lock lock(mutex_);
    numbered_[name] = {{bytes.begin(), bytes.end()}, 0};
}

void MemoryKernel::setBootTime(std::int64_t seconds, std::int32_t microseconds) {
    const TimeValue time{seconds, microseconds, 0};
    setSysctlBytes({kCtlKern, kKernBootTime}, std::as_bytes(std::span(&time, 1)));
}

void MemoryKernel::playSysctl(const std::vector<int>& name, const std::vector<Answer>& answers) {
    const std::scoped_lock lock(mutex_);
    played_[name] = {answers.begin(), answers.end()};
}

void MemoryKernel::setProcesses(std::span<const kinfo_proc> processes) {
    setSysctlBytes({kCtlKern, kKernProc, kKernProcAll}, std::as_bytes(processes));
}

void MemoryKernel::failReads(const std::vector<int>& name, int error) {
    const std::scoped_lock lock(mutex_);
    numbered_[name].readError = error;
}

std::size_t MemoryKernel::requests(std::string_view name) const {
    const std::scoped_lock lock(mutex_);
    const auto found = requests_.find(name);
    return found != requests_.end() ? found->second : 0;
}

int MemoryKernel::sysctlbyname(const char* name, void* buffer, std::size_t* size) const {
    const std::scoped_lock lock(mutex_);
    ++requests_[name];
    const auto found = named_.find(std::string_view(name));
    return answer(found != named_.end() ? &found->second : nullptr, buffer, size);
}

int MemoryKernel::sysctl(std::span<const int> name, void* buffer, std::size_t* size) const {
    const std::scoped_lock lock(mutex_);
    const std::vector<int> path(name.begin(), name.end());
    if (auto& script = played_[path]; !script.empty()) {
        const Answer next = std::move(script.front());
        script.pop_front();
        const Fact fact{next.bytes, 0};
        return next.error != 0 ? next.error : answer(&fact, buffer, size);
    }
    const auto found = numbered_.find(path);
    return answer(found != numbered_.end() ? &found->second : nullptr, buffer, size);
}

int MemoryKernel::answer(const Fact* fact, void* buffer, std::size_t* size) {
    if (fact == nullptr) {
        return ENOENT;
    }
    if (buffer != nullptr) {
        if (fact->readError != 0) {
            return fact->readError;
        }
        if (*size < fact->bytes.size()) {
            return ENOMEM;
        }
        if (!fact->bytes.empty()) {
            std::memcpy(buffer, fact->bytes.data(), fact->bytes.size());
        }
    }
    *size = fact->bytes.size();
    return 0;
}

} // namespace qk::platform::memory
