// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/HardwareDatabase.h"

#include "tests/fuzz/linux/Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// A list of hardware that comes in parts, of sizes that the input's first bytes say: the parts give what the whole
/// gives. Also udev's records.
namespace {

using qk::fuzz::require;
using namespace qk::platform;

void checkNames(const HardwareNames& names) {
    require(names.vendor != "" && names.model != "");
}

HardwareNames searchInParts(std::string_view list, std::size_t size, std::uint16_t vendor, std::uint16_t device) {
    parse::HardwareSearch search(vendor, device);
    for (bool goesOn = true; goesOn && !list.empty();) {
        const std::size_t length = std::min(size, list.size());
        goesOn = search.feed(list.substr(0, length));
        list.remove_prefix(length);
    }
    return search.finish();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkNames(parse::databaseNames(text));
    if (size == 0) {
        return 0;
    }
    const std::string_view list = text.substr(1);
    for (const int device : {0x15F3, 0x1041, 0}) {
        const HardwareNames whole = searchInParts(list, list.size() + 1, 0x8086, static_cast<std::uint16_t>(device));
        checkNames(whole);
        require(whole.vendor.has_value() || !whole.model.has_value());
        require(searchInParts(list, std::size_t{data[0]} + 1, 0x8086, static_cast<std::uint16_t>(device)) == whole);
    }
    return 0;
}
