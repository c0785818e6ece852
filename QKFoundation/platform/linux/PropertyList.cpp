// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyList.h"

#include "QKFoundation/platform/linux/PropertyListReading.h"

namespace qk::platform {

std::optional<Value> propertyList(std::string_view bytes) {
    if (bytes.size() > kPropertyListLimit) {
        return std::nullopt;
    }
    if (bytes.starts_with("bplist")) {
        return binaryPropertyList(bytes);
    }
    static constexpr std::string_view kMark = "\xEF\xBB\xBF";
    return xmlPropertyList(bytes.starts_with(kMark) ? bytes.substr(kMark.size()) : bytes);
}

} // namespace qk::platform
