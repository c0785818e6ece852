// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Description.h"

#include "QKFoundation/platform/values/UnitClasses.h"

#include <algorithm>
#include <span>
#include <vector>

namespace qk::internal {

namespace {

constexpr std::u16string_view kHexDigits = u"0123456789abcdef";

/// The letter behind the backslash for the control characters that have one, else 0.
constexpr char16_t escapeLetter(char16_t unit) {
    constexpr std::u16string_view kControls = u"\a\b\t\n\v\f\r";
    constexpr std::u16string_view kLetters = u"abtnvfr";
    const std::size_t index = kControls.find(unit);
    return index == std::u16string_view::npos ? u'\0' : kLetters[index];
}

void appendEscaped(char16_t unit, std::u16string& out) {
    const auto digit = [unit](unsigned shift, unsigned mask) { return kHexDigits[(unit >> shift) & mask]; };
    if (unit == u'"' || unit == u'\\') {
        out.append({u'\\', unit});
    } else if (unit >= 0x80) {
        out.append({u'\\', u'U', digit(12, 15), digit(8, 15), digit(4, 15), digit(0, 15)});
    } else if (unit >= u' ' && unit != 0x7F) {
        out.push_back(unit);
    } else if (const char16_t letter = escapeLetter(unit); letter != 0) {
        out.append({u'\\', letter});
    } else {
        out.append({u'\\', digit(6, 7), digit(3, 7), digit(0, 7)});
    }
}

/// "<0a0b0c0d 0e>": a blank after every four bytes.
void appendData(const NSData& data, std::u16string& out) {
    out.push_back(u'<');
    for (std::size_t index = 0; index < data.length(); ++index) {
        const auto byte = std::to_integer<unsigned>(data.bytes()[index]);
        if (index > 0 && index % 4 == 0) {
            out.push_back(u' ');
        }
        out.append({kHexDigits[byte >> 4U], kHexDigits[byte & 15U]});
    }
    out.push_back(u'>');
}

NSString plainText(NSNull /*null*/) {
    return "<null>";
}
NSString plainText(const NSString& string) {
    return string;
}
NSString plainText(const NSNumber& number) {
    return number.stringValue();
}
NSString plainText(const NSDate& date) {
    return date.description();
}
NSString plainText(const NSURL& url) {
    return url.absoluteString();
}
NSString plainText(const Value::Object& object) {
    return object->description();
}

template <typename T>
concept Collection = std::same_as<T, NSArray> || std::same_as<T, NSDictionary>;

/// Writes a value and what it holds, keeping the collections that are not yet closed on a stack of its own.
class Writer {
public:
    NSString write(const Value& value) {
        value.visit([this](const auto& held) { begin(held); });
        while (!open_.empty()) {
            advance();
        }
        return NSString(out_);
    }

private:
    /// What is still to be written of an open collection.
    struct Frame {
        bool isDictionary;
        std::span<const Value> values;
        std::span<const NSDictionary::Entry> entries;
    };

    /// The top level: texts stand bare.
    template <typename T>
    void begin(const T& held) {
        if constexpr (Collection<T>) {
            open(held);
        } else if constexpr (std::same_as<T, NSData>) {
            appendData(held, out_);
        } else {
            out_.append(plainText(held).units());
        }
    }

    void open(const NSArray& array) {
        out_.append(u"(\n");
        open_.push_back({false, array.values(), {}});
    }
    void open(const NSDictionary& dictionary) {
        out_.append(u"{\n");
        open_.push_back({true, {}, dictionary.entries()});
    }

    /// Writes the next element of the innermost collection, or that collection's end.
    void advance() {
        const Value* next = takeNext();
        if (next == nullptr) {
            close();
        } else {
            next->visit([this](const auto& held) { element(held); });
        }
    }

    /// The next element of the innermost collection, its indentation and key written; null at the end.
    const Value* takeNext() {
        Frame& frame = open_.back();
        if (!frame.values.empty()) {
            const Value* next = frame.values.data();
            frame.values = frame.values.subspan(1);
            indent();
            return next;
        }
        if (!frame.entries.empty()) {
            const NSDictionary::Entry& next = frame.entries.front();
            frame.entries = frame.entries.subspan(1);
            indent();
            appendQuoted(next.first.units(), out_);
            out_.append(u" = ");
            return &next.second;
        }
        return nullptr;
    }

    /// An element that is a collection begins with an indentation of its own, on top of the element's.
    template <typename T>
    void element(const T& held) {
        if constexpr (Collection<T>) {
            indent();
            open(held);
        } else if constexpr (std::same_as<T, NSData>) {
            appendData(held, out_);
            endElement();
        } else {
            appendQuoted(plainText(held).units(), out_);
            endElement();
        }
    }

    void endElement() {
        if (open_.back().isDictionary) {
            out_.append(u";\n");
        } else {
            out_.append(open_.back().values.empty() ? u"\n" : u",\n");
        }
    }

    void close() {
        const char16_t bracket = open_.back().isDictionary ? u'}' : u')';
        open_.pop_back();
        indent();
        out_.push_back(bracket);
        if (!open_.empty()) {
            endElement();
        }
    }

    void indent() { out_.append(4 * std::min(open_.size(), kDeepestIndentation), u' '); }

    std::u16string out_;
    std::vector<Frame> open_;
};

} // namespace

void appendQuoted(std::u16string_view text, std::u16string& out) {
    const auto isBare = [](char16_t unit) { return isASCIILetter(unit) || isASCIIDigit(unit); };
    if (!text.empty() && std::all_of(text.begin(), text.end(), isBare)) {
        out.append(text);
        return;
    }
    out.push_back(u'"');
    for (const char16_t unit : text) {
        appendEscaped(unit, out);
    }
    out.push_back(u'"');
}

NSString describe(const Value& value) {
    return Writer().write(value);
}

} // namespace qk::internal
