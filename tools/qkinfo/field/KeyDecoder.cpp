// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/KeyDecoder.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>
#include <utility>

namespace qk::info {

namespace {

constexpr char kEscape = '\x1b';
constexpr char kRubout = '\x7f';
constexpr std::string_view kReplacement = "\uFFFD";
constexpr std::string_view kEndOfPaste = "\x1b[201~";
constexpr std::size_t kLongestParameters = 32;

constexpr char control(char letter) {
    return static_cast<char>(letter - '@');
}

bool isControl(char byte) {
    return (byte >= 0 && byte < ' ') || byte == kRubout;
}

bool isASCII(char byte) {
    return byte >= 0;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The bytes of a character that begins with `byte`; 0 when none does.
std::size_t lengthOfCharacter(char byte) {
    const auto lead = static_cast<unsigned char>(byte);
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

// "3;2" is the number 3 with Shift; what is left out is 1, and nothing of a modifier.
struct Parameters {
    unsigned number = 1;
    unsigned modifiers = 0; // 1 for Shift
};

std::optional<unsigned> numberOf(std::string_view text) {
    unsigned number = 1;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    const bool isNumber = text.empty() || (error == std::errc() && rest == end && number > 0);
    return isNumber ? std::optional(number) : std::nullopt;
}

// Nothing for what no key here has.
std::optional<Parameters> parsed(std::string_view text) {
    const std::size_t mark = std::min(text.find(';'), text.size());
    const auto number = numberOf(text.substr(0, mark));
    const auto modifier = numberOf(text.substr(std::min(mark + 1, text.size())));
    if (text.size() > kLongestParameters || !number.has_value() || !modifier.has_value()) {
        return std::nullopt;
    }
    return Parameters{*number, *modifier - 1};
}

} // namespace

std::vector<Key> KeyDecoder::decode(std::string_view bytes) {
    for (const char byte : bytes) {
        decode(byte);
    }
    return std::exchange(keys_, {});
}

bool KeyDecoder::isInsideSequence() const {
    return state_ != State::Text && state_ != State::Paste;
}

std::vector<Key> KeyDecoder::giveUp() {
    if (isInsideSequence()) {
        if (state_ == State::Escape) {
            add({KeyKind::Cancel});
        }
        state_ = State::Text;
    }
    return std::exchange(keys_, {});
}

void KeyDecoder::decode(char byte) {
    switch (state_) {
    case State::Text: decodeText(byte); break;
    case State::Escape: decodeBehindEscape(byte); break;
    case State::Sequence:
    case State::SingleShift:
    case State::Console: decodeSequence(byte); break;
    case State::Paste: decodePaste(byte); break;
    }
}

void KeyDecoder::decodeText(char byte) {
    if (!character_.empty() && isContinuation(byte)) {
        character_ += byte;
        if (character_.size() == lengthOfCharacter(character_.front())) {
            addText(std::exchange(character_, {}));
        }
        return;
    }
    if (!character_.empty()) {
        character_.clear();
        addText(kReplacement);
    }
    if (byte == kEscape) {
        state_ = State::Escape;
    } else if (isControl(byte)) {
        decodeControl(byte);
    } else if (isASCII(byte)) {
        addText({&byte, 1});
    } else if (lengthOfCharacter(byte) > 0) {
        character_ = byte;
    } else {
        addText(kReplacement);
    }
}

void KeyDecoder::decodeControl(char byte) {
    if (std::exchange(isWithAlt_, false)) {
        return;
    }
    switch (byte) {
    case control('A'): add({KeyKind::Move, {}, Motion::Start}); break;
    case control('C'): add({KeyKind::Cancel}); break;
    case control('D'): add({KeyKind::DeleteHere, {}, Motion::Right}); break;
    case control('E'): add({KeyKind::Move, {}, Motion::End}); break;
    case control('K'): add({KeyKind::Delete, {}, Motion::End}); break;
    case control('U'): add({KeyKind::Delete, {}, Motion::Start}); break;
    case control('H'):
    case kRubout: add({KeyKind::Delete, {}, Motion::Left}); break;
    case '\r':
    case '\n': add({KeyKind::Enter}); break;
    default: break;
    }
}

void KeyDecoder::decodeBehindEscape(char byte) {
    parameters_.clear();
    switch (byte) {
    case '[': state_ = State::Sequence; break;
    case 'O': state_ = State::SingleShift; break;
    case kEscape: add({KeyKind::Cancel}); break;
    default:
        state_ = State::Text;
        isWithAlt_ = true;
        decodeText(byte);
    }
}

void KeyDecoder::decodeSequence(char byte) {
    if (isControl(byte) || !isASCII(byte)) {
        // Broken off; this is something else.
        state_ = State::Text;
        decodeText(byte);
    } else if (state_ == State::Console) {
        state_ = State::Text;
    } else if (byte < '@') {
        // One more than the longest tells that there were too many.
        parameters_.append(parameters_.size() <= kLongestParameters ? 1 : 0, byte);
    } else if (state_ == State::Sequence && byte == '[' && parameters_.empty()) {
        state_ = State::Console;
    } else {
        state_ = State::Text;
        endSequence(byte);
    }
}

void KeyDecoder::endSequence(char final) {
    const auto parameters = parsed(parameters_);
    if (!parameters.has_value()) {
        return;
    }
    const Selecting selecting = (parameters->modifiers & 1U) != 0 ? Selecting::Yes : Selecting::No;
    const auto addMove = [&](Motion motion) { add({KeyKind::Move, {}, motion, selecting}); };
    switch (final) {
    case 'C': addMove(Motion::Right); return;
    case 'D': addMove(Motion::Left); return;
    case 'F': addMove(Motion::End); return;
    case 'H': addMove(Motion::Start); return;
    case '~': break;
    default: return;
    }
    constexpr unsigned kBeginOfPaste = 200;
    switch (parameters->number) {
    case 1:
    case 7: addMove(Motion::Start); break;
    case 3: add({KeyKind::Delete, {}, Motion::Right}); break;
    case 4:
    case 8: addMove(Motion::End); break;
    case kBeginOfPaste: state_ = State::Paste; break;
    default: break;
    }
}

void KeyDecoder::decodePaste(char byte) {
    paste_ += byte;
    if (paste_.ends_with(kEndOfPaste)) {
        state_ = State::Text;
        const std::string text = std::exchange(paste_, {});
        const std::string_view pasted = std::string_view(text).substr(0, text.size() - kEndOfPaste.size());
        add({KeyKind::Paste, NSString::fromUTF8Lossy(pasted)});
    }
}

void KeyDecoder::addText(std::string_view utf8) {
    if (!std::exchange(isWithAlt_, false)) {
        add({KeyKind::Text, NSString::fromUTF8Lossy(utf8)});
    }
}

void KeyDecoder::add(Key key) {
    keys_.push_back(std::move(key));
}

} // namespace qk::info
