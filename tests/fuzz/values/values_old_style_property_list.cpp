// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/OldStylePropertyList.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Property lists of the older text form in any encoding: no input crashes, runs away or exhausts the stack.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = qk::internal::oldStylePropertyList(std::string_view(reinterpret_cast<const char*>(data), size));
    if (list.has_value()) {
        static_cast<void>(list->description());
    }
    return 0;
}
