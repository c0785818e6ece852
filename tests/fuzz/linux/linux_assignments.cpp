// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Assignments.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Texts such as /etc/os-release. What is read, written again with every special unit escaped, reads the same.
namespace {

using qk::fuzz::require;
using qk::platform::parse::Assignments;

std::string written(const Assignments& assignments) {
    std::string text;
    for (const auto& [name, value] : assignments) {
        text += name + "=\"";
        for (const char unit : value) {
            if (unit == '"' || unit == '\\' || unit == '$' || unit == '`') {
                text += '\\';
            }
            text += unit;
        }
        text += "\"\n";
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Assignments assignments = qk::platform::parse::assignments(text);
    require(qk::platform::parse::assignments(written(assignments)) == assignments);
    const auto version = qk::platform::parse::versionTriple(text);
    require(version.majorVersion >= 0 && version.minorVersion >= 0 && version.patchVersion >= 0);
    return 0;
}
