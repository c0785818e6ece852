// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/StyledLine.h"

#include "tools/qkinfo/DisplayText.h"

#include <algorithm>

namespace qk::info {

StyledLine& StyledLine::append(std::string_view utf8, std::string_view color) {
    return appendHarmless(displayText(utf8), color);
}

StyledLine& StyledLine::appendWhole(std::string_view utf8, std::string_view color) {
    const std::wstring text = displayText(utf8);
    return displayWidth(text) <= room() ? appendHarmless(text, color) : *this;
}

StyledLine& StyledLine::appendShortened(std::string_view utf8, std::string_view color) {
    constexpr std::wstring_view kMark = L"...";
    const std::wstring text = displayText(utf8);
    if (displayWidth(text) <= room() || room() <= kMark.size()) {
        return appendHarmless(text, color);
    }
    return appendHarmless(std::wstring(clipped(text, room() - kMark.size())).append(kMark), color);
}

StyledLine& StyledLine::appendCell(std::string_view utf8, std::size_t width, std::string_view color) {
    const std::wstring text = displayText(utf8);
    const std::wstring_view shown = clipped(text, width);
    appendHarmless(shown, color);
    return skip(width - displayWidth(shown));
}

StyledLine& StyledLine::skip(std::size_t columns) {
    const std::size_t possible = std::min(columns, room());
    blanks_ += possible;
    columns_ += possible;
    return *this;
}

StyledLine& StyledLine::appendHarmless(std::wstring_view text, std::string_view color) {
    const std::wstring_view fitting = clipped(text, room());
    const std::wstring_view shown = fitting.substr(0, fitting.find_last_not_of(L' ') + 1);
    if (shown.empty()) {
        return skip(displayWidth(fitting));
    }
    text_.append(blanks_, ' ');
    blanks_ = 0;
    const bool colored = colored_ && !color.empty();
    text_.append(colored ? color : std::string_view()).append(displayBytes(shown));
    text_.append(colored ? color::kEnd : std::string_view());
    columns_ += displayWidth(shown);
    return skip(displayWidth(fitting) - displayWidth(shown));
}

} // namespace qk::info
