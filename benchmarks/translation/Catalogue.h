// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qk::bench {

/// The texts of an application, as many as `kCount`, and keys that none of them has. The keys look like those of an
/// application, of 15 to 40 letters, and lie in an order that has nothing to do with that of the texts.
struct Catalogue {
    static constexpr std::size_t kCount = 5000;

    std::vector<std::string> keys;
    std::vector<std::string> texts; ///< each is for the key at the same place
    std::vector<std::string> missing;
};

[[nodiscard]] Catalogue makeCatalogue();

} // namespace qk::bench
