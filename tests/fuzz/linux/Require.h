// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>

namespace qk::fuzz {

/// Ends the process when a law is broken, so that the fuzzer keeps the input.
inline void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace qk::fuzz
