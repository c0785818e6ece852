// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace qk::platform {

/// A number that a child made by fork does not share with its parent: what was learnt about threads under another
/// number is not so here. Any thread.
[[nodiscard]] std::uint64_t forkGeneration() noexcept;

} // namespace qk::platform
