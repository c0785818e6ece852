// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyList.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Property lists of both forms: no input crashes, runs away or exhausts the stack.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = qk::platform::propertyList(std::string_view(reinterpret_cast<const char*>(data), size));
    if (list.has_value()) {
        static_cast<void>(list->hash());
    }
    return 0;
}
