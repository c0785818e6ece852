// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/ChangingFiles.h"

namespace qk::tests {

std::vector<ChangingFilesAdapter> changingFilesAdapters() {
    return {{"Memory", makeFilesInMemory}};
}

} // namespace qk::tests
