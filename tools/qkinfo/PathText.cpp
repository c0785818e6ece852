// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/PathText.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace qk::info {

NSString pathString(std::string_view bytes) {
    constexpr std::size_t kLongestCharacter = 4;
    constexpr char16_t kByteSurrogates = 0xDC00;
    NSMutableString path;
    while (!bytes.empty()) {
        std::size_t length = 1;
        std::optional<NSString> character = NSString::fromUTF8(bytes.substr(0, length));
        while (!character.has_value() && length < std::min(bytes.size(), kLongestCharacter)) {
            character = NSString::fromUTF8(bytes.substr(0, ++length));
        }
        if (character.has_value()) {
            path.append(*character);
            bytes.remove_prefix(length);
        } else {
            path.append(static_cast<char16_t>(kByteSurrogates + static_cast<unsigned char>(bytes.front())));
            bytes.remove_prefix(1);
        }
    }
    return path.copy();
}

NSString absolutePathString(std::string_view bytes) {
    return pathString(bytes.empty() ? std::string() : std::filesystem::absolute(bytes).string());
}

} // namespace qk::info
