// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Kernels.h"

#include <array>

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
#if defined(__x86_64__)
    // Static initialisers may come here before the run-time library's own has run.
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi") &&
        __builtin_cpu_supports("avx512vbmi2") && __builtin_cpu_supports("bmi2")) {
        found.add(kAVX512Kernels);
    }
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") &&
        __builtin_cpu_supports("popcnt")) {
        found.add(kAVX2Kernels);
    }
    if (__builtin_cpu_supports("sse4.1") && __builtin_cpu_supports("popcnt")) {
        found.add(kSSE41Kernels);
    }
#endif
    found.add(kScalarKernels);
    return found;
}

} // namespace

constinit std::atomic<const Kernels*> internal::gBestKernels{nullptr};

const Kernels& internal::resolveKernels() {
    const Kernels* best = detect().list.front();
    gBestKernels.store(best, std::memory_order_relaxed);
    return *best;
}

std::span<const Kernels* const> supportedKernels() {
    static const Supported found = detect();
    return {found.list.data(), found.count};
}

} // namespace qk::unicode
