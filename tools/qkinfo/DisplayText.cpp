// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/DisplayText.h"

#include "tools/qkinfo/DisplayWidthTable.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>

namespace qk::info {

namespace {

constexpr wchar_t kZeroWidthNonJoiner = 0x200C;
constexpr wchar_t kZeroWidthJoiner = 0x200D;
constexpr wchar_t kEmojiPresentation = 0xFE0F;
constexpr wchar_t kReplacement = 0xFFFD;

bool isIn(std::span<const CharacterRange> ranges, wchar_t character) {
    const auto code = std::bit_cast<std::uint32_t>(character);
    const auto behind = std::ranges::upper_bound(ranges, code, {}, &CharacterRange::first);
    return behind != ranges.begin() && code <= std::prev(behind)->last;
}

bool isBlank(wchar_t character) {
    return character == L' ' || (character >= L'\t' && character <= L'\r');
}

// Joiners steer nothing, and names in Persian or of emoji families need them.
bool isUnseen(wchar_t character) {
    return character != kZeroWidthNonJoiner && character != kZeroWidthJoiner && isIn(unseenRanges(), character);
}

void appendSpelledOut(std::wstring& text, wchar_t character) {
    char digits[16];
    const int length = std::snprintf(digits, sizeof digits, character <= 0xFF ? "\\x%02X" : "\\u%04X",
                                     static_cast<unsigned>(character));
    text.append(digits, digits + length);
}

void appendShown(std::wstring& text, wchar_t character) {
    if (isUnseen(character)) {
        appendSpelledOut(text, character);
    } else {
        text.push_back(character);
    }
}

// Columns of one character behind `before`, 0 for none.
std::size_t columnsOf(wchar_t character, wchar_t before) {
    if (character == kEmojiPresentation) {
        // Asks for the two columns of a picture where the character alone is a narrow sign.
        return before != 0 && !isIn(wideRanges(), before) && !isIn(emptyRanges(), before) ? 1 : 0;
    }
    if (isIn(emptyRanges(), character)) {
        return 0;
    }
    return isIn(wideRanges(), character) ? 2 : 1;
}

// How many characters of `text` go into `width` columns.
std::size_t fitting(std::wstring_view text, std::size_t width) {
    std::size_t columns = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        columns += columnsOf(text[index], index > 0 ? text[index - 1] : L'\0');
        if (columns > width) {
            return index;
        }
    }
    return text.size();
}

// What follows a character without taking a column of its own belongs to it.
std::size_t atLeastOne(std::wstring_view text, std::size_t count) {
    std::size_t end = std::max<std::size_t>(count, 1);
    while (count == 0 && end < text.size() && columnsOf(text[end], text[end - 1]) == 0) {
        ++end;
    }
    return end;
}

// Where to break `text`, of which `end` characters go into the line: before the last blank, else behind a mark that
// parts words.
std::size_t goodBreak(std::wstring_view text, std::size_t end) {
    // The blank may stand right behind the last column.
    const std::size_t blank = text.substr(0, end + 1).find_last_of(L' ');
    if (blank != std::wstring_view::npos && blank > 0) {
        return blank;
    }
    const std::size_t mark = text.substr(0, end).find_last_of(L"-/_,");
    return mark != std::wstring_view::npos && mark >= end / 2 ? mark + 1 : end;
}

// Where the end of `text` begins that goes into `width` columns, with a character that has a column of its own.
std::size_t startOfEnd(std::wstring_view text, std::size_t width) {
    std::size_t start = text.size();
    std::size_t columns = 0;
    for (std::size_t index = text.size(); index-- > 0;) {
        const std::size_t own = columnsOf(text[index], index > 0 ? text[index - 1] : L'\0');
        columns += own;
        if (columns > width) {
            break;
        }
        start = own > 0 ? index : start;
    }
    return start;
}

std::wstring_view withoutBlanksAtEnd(std::wstring_view text) {
    return text.substr(0, text.find_last_not_of(L' ') + 1);
}

} // namespace

std::string wellFormedUTF8(const NSString& text) {
    if (auto bytes = text.utf8()) {
        return *std::move(bytes);
    }
    std::u16string units(text.units());
    for (std::size_t index = 0; index < units.size(); ++index) {
        const bool leads = units[index] >= 0xD800 && units[index] <= 0xDBFF;
        const bool trails = units[index] >= 0xDC00 && units[index] <= 0xDFFF;
        if (leads && index + 1 < units.size() && units[index + 1] >= 0xDC00 && units[index + 1] <= 0xDFFF) {
            ++index;
        } else if (leads || trails) {
            units[index] = kReplacement;
        }
    }
    return NSString(units).utf8Lossy();
}

std::wstring displayText(std::string_view utf8) {
    std::wstring text;
    for (const wchar_t character : NSString::fromUTF8Lossy(utf8).utf32Lossy()) {
        if (text.size() >= kLongestDisplayText) {
            text.resize(kLongestDisplayText - 3);
            return text.append(L"...");
        }
        if (isBlank(character)) {
            if (!text.empty() && text.back() != L' ') {
                text.push_back(L' ');
            }
        } else {
            appendShown(text, character);
        }
    }
    return std::wstring(withoutBlanksAtEnd(text));
}

std::wstring displayCharacter(wchar_t character) {
    std::wstring text;
    appendShown(text, character);
    return text;
}

std::wstring displayExact(std::string_view utf8) {
    std::wstring text;
    for (const wchar_t character : NSString::fromUTF8Lossy(utf8).utf32Lossy()) {
        appendShown(text, character);
    }
    return text;
}

std::size_t displayWidth(std::wstring_view text) {
    std::size_t columns = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        columns += columnsOf(text[index], index > 0 ? text[index - 1] : L'\0');
    }
    return columns;
}

std::vector<std::wstring> wrapped(std::wstring_view text, std::size_t width) {
    std::vector<std::wstring> lines;
    for (;;) {
        std::size_t end = text.empty() ? 0 : atLeastOne(text, fitting(text, width));
        if (end == text.size()) {
            lines.emplace_back(text);
            return lines;
        }
        end = goodBreak(text, end);
        lines.emplace_back(withoutBlanksAtEnd(text.substr(0, end)));
        text.remove_prefix(std::min(text.find_first_not_of(L' ', end), text.size()));
    }
}

std::wstring_view clipped(std::wstring_view text, std::size_t width) {
    return text.substr(0, fitting(text, width));
}

std::wstring elided(std::wstring_view text, std::size_t width) {
    constexpr std::wstring_view kMark = L"...";
    if (displayWidth(text) <= width) {
        return std::wstring(text);
    }
    if (width <= kMark.size()) {
        return std::wstring(clipped(text, width));
    }
    std::wstring result(clipped(text, (width - kMark.size()) / 2));
    const std::size_t room = width - kMark.size() - displayWidth(result);
    return result.append(kMark).append(text.substr(startOfEnd(text, room)));
}

std::string displayBytes(std::wstring_view text) {
    const auto string = NSString::fromUTF32(text);
    return string.has_value() ? wellFormedUTF8(*string) : std::string();
}

std::string displayLine(std::string_view utf8) {
    return displayBytes(displayText(utf8));
}

std::string displayLines(std::string_view utf8) {
    std::wstring text;
    for (const wchar_t character : NSString::fromUTF8Lossy(utf8).utf32Lossy()) {
        const bool isKept = character == L'\n' || character == L'\t' || character == L' ';
        if (!isKept && (isBlank(character) || isUnseen(character))) {
            appendSpelledOut(text, character);
        } else {
            text.push_back(character);
        }
    }
    return displayBytes(text);
}

} // namespace qk::info
