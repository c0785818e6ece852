// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/RecentlyUsedList.h"

#include "tests/fuzz/linux/Require.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The toolkits' list of used files: what comes out of it are paths that the kernel takes, and moments.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const qk::platform::RecentlyUsedFile& file : qk::platform::recentlyUsedFiles(text)) {
        qk::fuzz::require(file.path.starts_with('/'));
        qk::fuzz::require(file.path.size() == 1 || !file.path.ends_with('/'));
        qk::fuzz::require(file.path.find('\0') == std::string::npos);
        qk::fuzz::require(std::isfinite(file.visited));
    }
    return 0;
}
