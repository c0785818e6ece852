// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyList.h"
#include "QKFoundation/platform/linux/PropertyListWriting.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace {

using qk::Value;
using qk::platform::NSPropertyListFormat;

std::optional<Value> writtenAndRead(const Value& value, NSPropertyListFormat format) {
    const std::optional<qk::NSData> data = qk::platform::dataOfPropertyList(value, format);
    if (!data.has_value()) {
        return std::nullopt;
    }
    std::optional<Value> list = qk::platform::propertyList(data->view());
    qk::fuzz::require(list.has_value());
    return list;
}

} // namespace

/// Property lists of both forms: no input crashes, runs away or exhausts the stack, and what has been read can be
/// written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = qk::platform::propertyList(std::string_view(reinterpret_cast<const char*>(data), size));
    if (list.has_value()) {
        qk::fuzz::require(writtenAndRead(*list, NSPropertyListFormat::Binary_v1_0) == list);
        // XML drops fractions of seconds, once, and has no form for dates of other years.
        if (const auto inXML = writtenAndRead(*list, NSPropertyListFormat::XML_v1_0)) {
            qk::fuzz::require(writtenAndRead(*inXML, NSPropertyListFormat::XML_v1_0) == inXML);
        }
    }
    return 0;
}
