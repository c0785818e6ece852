// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/FieldCells.h"

#include "tools/qkinfo/DisplayText.h"

#include <string_view>

namespace qk::info {

namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr wchar_t kZeroWidthJoiner = 0x200D;

struct Character {
    wchar_t code = 0;
    std::size_t units = 1;
};

Character characterAt(std::u16string_view text, std::size_t index) {
    constexpr char16_t kFirstLead = 0xD800;
    constexpr char16_t kFirstTrail = 0xDC00;
    constexpr char16_t kBehindTrails = 0xE000;
    const char16_t unit = text[index];
    if (unit < kFirstLead || unit >= kBehindTrails) {
        return {static_cast<wchar_t>(unit), 1};
    }
    const char16_t next = index + 1 < text.size() ? text[index + 1] : u'\0';
    if (unit >= kFirstTrail || next < kFirstTrail || next >= kBehindTrails) {
        return {kReplacement, 1};
    }
    constexpr int kBitsOfTrail = 10;
    constexpr wchar_t kFirstBeyond = 0x10000;
    return {kFirstBeyond + ((unit - kFirstLead) << kBitsOfTrail) + (next - kFirstTrail), 2};
}

// Whether `shown`, a character, is drawn together with the one before it, which ends with `before`.
bool isJoined(std::wstring_view shown, wchar_t before) {
    return before == kZeroWidthJoiner || displayWidth(shown) == 0;
}

} // namespace

std::vector<FieldCell> fieldCells(const NSString& text) {
    std::vector<FieldCell> cells;
    const std::u16string_view units = text.units();
    wchar_t before = 0;
    for (std::size_t index = 0; index < units.size();) {
        const Character character = characterAt(units, index);
        std::wstring shown = displayCharacter(character.code);
        if (shown.size() == 1 && before != 0 && isJoined(shown, before)) {
            cells.back().units.length += character.units;
            cells.back().shown.append(shown);
        } else {
            // A mark that has nothing to stand on would be drawn onto what is beside the field.
            const bool isLoneMark = displayWidth(shown) == 0;
            cells.push_back({{index, character.units}, (isLoneMark ? L" " : L"") + shown});
        }
        // What is spelled out takes no marks.
        before = shown.size() == 1 ? character.code : L'\0';
        index += character.units;
    }
    for (FieldCell& cell : cells) {
        cell.columns = displayWidth(cell.shown);
    }
    return cells;
}

std::string shownInField(const NSString& text) {
    std::wstring shown;
    for (const FieldCell& cell : fieldCells(text)) {
        shown.append(cell.shown);
    }
    return displayBytes(shown);
}

} // namespace qk::info
