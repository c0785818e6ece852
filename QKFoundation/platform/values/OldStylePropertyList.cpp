// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/OldStylePropertyList.h"

#include "QKFoundation/platform/values/NextStepLatin.h"
#include "QKFoundation/platform/values/TextEncodings.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qk::internal {
namespace {

constexpr bool isWordByte(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '-' && byte <= ':') ||
           byte == '_' || byte == '$'; // "-" to ":" are - . / 0 to 9 :
}

constexpr int hexadecimal(char byte) {
    return byte >= '0' && byte <= '9'   ? byte - '0'
           : byte >= 'a' && byte <= 'f' ? byte - 'a' + 10
           : byte >= 'A' && byte <= 'F' ? byte - 'A' + 10
                                        : -1;
}

// Reads UTF-8 that is known to be well-formed.
class Parser {
public:
    explicit Parser(std::string_view text) : text_(text) {}

    std::optional<Value> run() {
        skipBlanks();
        if (isAtEnd()) {
            return Value(NSDictionary());
        }
        const std::size_t begin = at_;
        std::optional<Value> first = value(0);
        skipBlanks();
        if (!first.has_value() || isAtEnd()) {
            return first;
        }
        if (first->as<NSString>() == nullptr) {
            return std::nullopt;
        }
        at_ = begin; // it was the first key of a dictionary without braces
        std::optional<Value> table = entries(0);
        return isAtEnd() ? table : std::nullopt;
    }

private:
    [[nodiscard]] bool isAtEnd() const { return at_ == text_.size(); }
    [[nodiscard]] char byte() const { return text_[at_]; }
    [[nodiscard]] bool startsWith(std::string_view start) const { return text_.substr(at_, start.size()) == start; }

    bool take(char expected) {
        const bool isHere = !isAtEnd() && byte() == expected;
        at_ += isHere ? 1 : 0;
        return isHere;
    }

    bool skipBlank() {
        if ((byte() >= '\t' && byte() <= '\r') || byte() == ' ') {
            ++at_;
            return true;
        }
        static constexpr std::string_view kLineSeparator = "\u2028";
        static constexpr std::string_view kParagraphSeparator = "\u2029";
        if (byte() == kLineSeparator.front() && (startsWith(kLineSeparator) || startsWith(kParagraphSeparator))) {
            at_ += kLineSeparator.size();
            return true;
        }
        return false;
    }

    // White space and comments. One that is not closed goes on to the end.
    void skipBlanks() {
        while (!isAtEnd()) {
            if (skipBlank()) {
                continue;
            }
            if (startsWith("//")) {
                at_ = std::min(text_.find_first_of("\n\r", at_), text_.size());
            } else if (startsWith("/*")) {
                const std::size_t end = text_.find("*/", at_ + 2);
                at_ = end == std::string_view::npos ? text_.size() : end + 2;
            } else {
                return;
            }
        }
    }

    std::optional<Value> value(std::size_t depth) { // NOLINT(misc-no-recursion): as deep as is allowed
        if (isAtEnd() || depth > kDeepestOldStylePropertyList) {
            return std::nullopt;
        }
        switch (byte()) {
        case '{': {
            ++at_;
            std::optional<Value> dictionary = entries(depth + 1);
            return take('}') ? dictionary : std::nullopt;
        }
        case '(': ++at_; return array(depth + 1);
        case '<': ++at_; return data();
        default: {
            std::optional<NSString> text = string();
            return text.has_value() ? std::optional<Value>(*std::move(text)) : std::nullopt;
        }
        }
    }

    // Entries up to the end of the text or to the "}" that ends them.
    std::optional<Value> entries(std::size_t depth) { // NOLINT(misc-no-recursion)
        std::vector<NSDictionary::Entry> result;
        for (;;) {
            skipBlanks();
            if (isAtEnd() || byte() == '}') {
                return Value(NSDictionary(std::move(result)));
            }
            std::optional<NSString> key = string();
            if (!key.has_value()) {
                return std::nullopt;
            }
            skipBlanks();
            if (take(';')) {
                result.emplace_back(*key, *key);
                continue;
            }
            if (!take('=')) {
                return std::nullopt;
            }
            skipBlanks();
            std::optional<Value> object = value(depth);
            skipBlanks();
            if (!object.has_value() || !take(';')) {
                return std::nullopt;
            }
            result.emplace_back(*std::move(key), *std::move(object));
        }
    }

    // Values up to the ")". A comma may stand behind the last one.
    std::optional<Value> array(std::size_t depth) { // NOLINT(misc-no-recursion)
        std::vector<Value> result;
        for (;;) {
            skipBlanks();
            if (take(')')) {
                return Value(NSArray(std::move(result)));
            }
            std::optional<Value> element = value(depth);
            if (!element.has_value()) {
                return std::nullopt;
            }
            result.push_back(*std::move(element));
            skipBlanks();
            if (!take(',') && (isAtEnd() || byte() != ')')) {
                return std::nullopt;
            }
        }
    }

    // Pairs of digits up to the ">".
    std::optional<Value> data() {
        std::string bytes;
        while (!isAtEnd()) {
            if (skipBlank()) {
                continue;
            }
            if (take('>')) {
                return Value(NSData(bytes));
            }
            const int upper = hexadecimal(byte());
            const int lower = at_ + 1 < text_.size() ? hexadecimal(text_[at_ + 1]) : -1;
            if (upper < 0 || lower < 0) {
                return std::nullopt;
            }
            bytes.push_back(static_cast<char>(upper * 16 + lower));
            at_ += 2;
        }
        return std::nullopt;
    }

    std::optional<NSString> string() {
        if (byte() == '"' || byte() == '\'') {
            return quoted(text_[at_++]);
        }
        const std::size_t begin = at_;
        while (!isAtEnd() && isWordByte(byte())) {
            ++at_;
        }
        return at_ > begin ? NSString::fromUTF8(text_.substr(begin, at_ - begin)) : std::nullopt;
    }

    std::optional<NSString> quoted(char quote) {
        const std::array<char, 2> stops = {quote, '\\'};
        const std::string_view anyStop(stops.data(), stops.size());
        std::size_t begin = at_;
        units_.clear();
        bool hasEscapes = false;
        for (;;) {
            at_ = findStop(anyStop);
            if (isAtEnd()) {
                return std::nullopt;
            }
            const std::string_view plain = text_.substr(begin, at_ - begin);
            const bool isEnd = text_[at_++] == quote;
            if (isEnd && !hasEscapes) {
                return NSString::fromUTF8(plain);
            }
            append(plain);
            if (isEnd) {
                return NSString(units_);
            }
            if (isAtEnd()) {
                return std::nullopt;
            }
            hasEscapes = true;
            begin = escape();
        }
    }

    // The next one of two bytes, or the end. Texts are short: no call pays.
    [[nodiscard]] std::size_t findStop(std::string_view stops) const {
        std::size_t at = at_;
        while (at < text_.size() && text_[at] != stops[0] && text_[at] != stops[1]) {
            ++at;
        }
        return at;
    }

    void append(std::string_view utf8) {
        const std::size_t length = units_.size();
        units_.resize(length + utf8.size());
        units_.resize(length + unicode::utf8ToUTF16(utf8, units_.data() + length).value_or(0));
    }

    // Reads what stands behind a backslash. Returns where the plain text goes on: at once when the character stands for
    // itself.
    std::size_t escape() {
        const std::size_t begin = at_;
        const char escaped = text_[at_++];
        if (escaped >= '0' && escaped <= '7') {
            at_ = begin;
            units_.push_back(octal());
            return at_;
        }
        if (escaped == 'U' && !isAtEnd() && hexadecimal(byte()) >= 0) {
            units_.push_back(unit());
            return at_;
        }
        static constexpr std::string_view kNames = "abfnrtv";
        static constexpr std::u16string_view kMeanings = u"\a\b\f\n\r\t\v";
        const std::size_t known = kNames.find(escaped);
        if (known == std::string_view::npos) {
            return begin;
        }
        units_.push_back(kMeanings[known]);
        return at_;
    }

    char16_t octal() {
        unsigned value = 0;
        for (int count = 0; count < 3 && !isAtEnd() && byte() >= '0' && byte() <= '7'; ++count) {
            value = value * 8 + static_cast<unsigned>(byte() - '0');
            ++at_;
        }
        value &= 0xFFU;
        return value < 0x80 ? static_cast<char16_t>(value) : kNextStepLatin[value - 0x80];
    }

    char16_t unit() {
        unsigned value = 0;
        for (int count = 0; count < 4 && !isAtEnd() && hexadecimal(byte()) >= 0; ++count) {
            value = value * 16 + static_cast<unsigned>(hexadecimal(byte()));
            ++at_;
        }
        return static_cast<char16_t>(value);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::u16string units_; // of the text that is being read
};

} // namespace

std::optional<Value> oldStylePropertyList(std::string_view bytes) {
    if (bytes.empty()) {
        return std::nullopt;
    }
    const std::optional<UTF8Text> text = utf8Text(bytes);
    return text.has_value() ? Parser(text->view()).run() : std::nullopt;
}

} // namespace qk::internal
