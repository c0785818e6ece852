// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInfo.h"

#include "benchmarks/network/Register.h"

#include <cstdio>
#include <cstdlib>

namespace qk::bench {
namespace {

void readInterfaces(std::size_t interfaces) {
    const auto all = QKNetworkInfo::networkInterfaces();
    if (all.size() != interfaces || all.front()->configuration()->ipv4Config()->adresses().count() != 1) {
        std::fprintf(stderr, "ours: %zu interfaces instead of %zu\n", all.size(), interfaces);
        std::exit(1);
    }
}

const bool kOurs = compete("ours", readInterfaces);

} // namespace
} // namespace qk::bench
