// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/network/Register.h"

#include <ifaddrs.h>

namespace qk::bench {
namespace {

const bool kGetifaddrs = compete("getifaddrs", [](std::size_t) {
    ifaddrs* all = nullptr;
    if (::getifaddrs(&all) == 0) {
        benchmark::DoNotOptimize(all);
        ::freeifaddrs(all);
    }
});

} // namespace
} // namespace qk::bench
