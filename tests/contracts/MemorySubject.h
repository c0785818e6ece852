// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/contracts/Subject.h"

namespace qk::tests {

[[nodiscard]] std::unique_ptr<Subject> makeMemorySubject();

} // namespace qk::tests
