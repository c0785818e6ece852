// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/MemorySubject.h"

namespace qk::tests {

std::vector<Adapter> adapters() {
    return {{"Memory", makeMemorySubject}};
}

} // namespace qk::tests
