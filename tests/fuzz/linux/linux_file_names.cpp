// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileSystemRepresentation.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Names of files. Bytes become a string and the same bytes again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto back = qk::platform::fileSystemRepresentation(qk::platform::stringWithFileSystemRepresentation(bytes));
    if (bytes.find('\0') == std::string_view::npos) {
        qk::fuzz::require(back == bytes);
    } else {
        qk::fuzz::require(!back.has_value());
    }
    return 0;
}
