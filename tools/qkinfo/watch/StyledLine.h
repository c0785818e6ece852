// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qk::info {

/// Escape sequences that begin a colour, and the one that ends it.
namespace color {
inline constexpr std::string_view kTitle = "\x1b[1m";
inline constexpr std::string_view kLabel = "\x1b[36m";
inline constexpr std::string_view kFaint = "\x1b[2m";
inline constexpr std::string_view kGood = "\x1b[32m";
inline constexpr std::string_view kHigh = "\x1b[33m";
inline constexpr std::string_view kCritical = "\x1b[31m";
inline constexpr std::string_view kNone;
inline constexpr std::string_view kEnd = "\x1b[0m";
} // namespace color

/// A line of a screen, which never becomes wider than that.
class StyledLine {
public:
    StyledLine(std::size_t width, bool colored) : width_(width), colored_(colored) {}

    /// Appends as much of `utf8` as there is room for. It is made harmless first.
    StyledLine& append(std::string_view utf8, std::string_view color = color::kNone);

    /// Appends `utf8` if there is room for all of it: part of a number would be another one.
    StyledLine& appendWhole(std::string_view utf8, std::string_view color = color::kNone);

    /// Appends `utf8`, with "..." in the place of what there is no room for.
    StyledLine& appendShortened(std::string_view utf8, std::string_view color = color::kNone);

    /// Appends `utf8`, cut or filled up with blanks to `width` columns.
    StyledLine& appendCell(std::string_view utf8, std::size_t width, std::string_view color = color::kNone);

    /// Blanks, as far as there is room.
    StyledLine& skip(std::size_t columns);

    [[nodiscard]] std::size_t columns() const { return columns_; }
    [[nodiscard]] std::size_t room() const { return width_ - columns_; }

    /// In UTF-8, without blanks at the end.
    [[nodiscard]] const std::string& text() const { return text_; }

private:
    StyledLine& appendHarmless(std::wstring_view text, std::string_view color);

    std::size_t width_;
    bool colored_;
    std::string text_;
    std::size_t columns_ = 0;
    std::size_t blanks_ = 0; // at the end, not yet in the text
};

} // namespace qk::info
