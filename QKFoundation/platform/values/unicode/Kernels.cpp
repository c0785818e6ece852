// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Kernels.h"

#include <array>
#include <atomic>

namespace qk::unicode {
namespace {

constexpr std::size_t kLevels = 4;

/// The runnable kernels, the best first.
struct Supported {
    std::array<const Kernels*, kLevels> list{};
    std::size_t count = 0;

    void add(const Kernels& level) { list[count++] = &level; }
};

Supported detect() {
    Supported found;
    found.add(kScalarKernels);
    return found;
}

/// Not a function-local static: this is read for every conversion of a short string, and all threads that find it empty
/// compute the same answer.
constinit std::atomic<const Kernels*> gBest{nullptr};

const Kernels& resolve() {
    const Kernels* best = detect().list.front();
    gBest.store(best, std::memory_order_relaxed);
    return *best;
}

} // namespace

const Kernels& kernels() {
    const Kernels* best = gBest.load(std::memory_order_relaxed);
    return best != nullptr ? *best : resolve();
}

std::span<const Kernels* const> supportedKernels() {
    static const Supported found = detect();
    return {found.list.data(), found.count};
}

} // namespace qk::unicode
