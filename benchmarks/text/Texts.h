// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qk::bench {

enum class Script { ascii, latin, cjk, emoji };

/// One text in all forms, of `bytes` in UTF-8 or a little less, so that no character is cut. The same in every run.
struct Text {
    std::string utf8;
    std::u16string utf16;
    std::u32string utf32;
    std::u16string decomposed;
};

[[nodiscard]] const char* nameOf(Script script);
[[nodiscard]] Text makeText(Script script, std::size_t bytes);

/// Each registers its implementation for `text` under "<job>/<script>/<size>/<implementation>".
void registerOurs(const std::string& scriptAndSize, const Text& text);
void registerICU(const std::string& scriptAndSize, const Text& text);
void registerQt(const std::string& scriptAndSize, const Text& text);
void registerGLib(const std::string& scriptAndSize, const Text& text);
void registerIconv(const std::string& scriptAndSize, const Text& text);

} // namespace qk::bench
