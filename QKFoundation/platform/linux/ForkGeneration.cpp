// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ForkGeneration.h"

#include <pthread.h>

#include <atomic>

namespace qk::platform {
namespace {

std::atomic<std::uint64_t> generation{0};

void onForkInChild() {
    generation.fetch_add(1, std::memory_order_relaxed);
}

} // namespace

std::uint64_t forkGeneration() noexcept {
    [[maybe_unused]] static const int registered = ::pthread_atfork(nullptr, nullptr, onForkInChild);
    return generation.load(std::memory_order_relaxed);
}

} // namespace qk::platform
