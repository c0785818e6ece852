// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace qk::internal {

/// A text in UTF-8: a part of the bytes that it was read from, which stay the caller's, or a conversion of them.
class UTF8Text {
public:
    explicit UTF8Text(std::string_view original) : original_(original) {}
    explicit UTF8Text(std::string converted) : converted_(std::move(converted)) {}

    [[nodiscard]] std::string_view view() const { return converted_.has_value() ? *converted_ : original_; }

private:
    std::string_view original_;
    std::optional<std::string> converted_;
};

/// The text of a file whose encoding only the file itself tells: by a mark of UTF-32, UTF-16 or UTF-8 at the beginning,
/// which is no part of the text; without one UTF-16 when one of the first two bytes is 0; else UTF-8. Nothing when the
/// bytes are malformed in that encoding. Threads: any.
[[nodiscard]] std::optional<UTF8Text> utf8Text(std::string_view bytes);

} // namespace qk::internal
