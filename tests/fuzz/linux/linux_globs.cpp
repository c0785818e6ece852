// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/DynamicTypes.h"
#include "QKFoundation/platform/linux/parse/Globs.h"

#include "tests/fuzz/linux/Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Patterns of the MIME database, and extensions in dynamic identifiers: the first line is an extension, the rest are
/// patterns.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qk::platform;
    using qk::fuzz::require;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string_view extension = text.substr(0, text.find('\n'));
    const auto type = parse::typeForExtension(text.substr(std::min(extension.size() + 1, text.size())), extension);
    require(!type.has_value() || (!type->empty() && !extension.empty()));
    const std::string identifier = types::dynamicIdentifier("public.text", extension);
    require(types::dynamicText(identifier) == "?0=7:1=" + std::string(extension));
    return 0;
}
