// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListWriting.h"

#include "QKFoundation/platform/linux/PropertyListNodes.h"
#include "QKFoundation/platform/linux/PropertyListReading.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

constexpr double kYear0 = -62167219200; // seconds from 1970 on
constexpr double kYear1000 = -30610224000;
constexpr double kYear10000 = 253402300800;

// A node can be made only of whole seconds in 32 bits; all others are read from a list in the binary form.
UniquePropertyList dateNode(double seconds) {
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    if (std::fabs(seconds) < most && std::trunc(seconds) == seconds) {
        return UniquePropertyList(plist_new_date(static_cast<std::int32_t>(seconds), 0));
    }
    static constexpr std::size_t kDate = 9; // behind the header and the mark of a date
    std::string list("bplist00\x33"
                     "--------"
                     "\x08" // the only offset
                     "\0\0\0\0\0\0\1\1"
                     "\0\0\0\0\0\0\0\1"
                     "\0\0\0\0\0\0\0\0"
                     "\0\0\0\0\0\0\0\x11",
                     50);
    auto bits = std::bit_cast<std::uint64_t>(seconds);
    for (std::size_t index = sizeof bits; index > 0; --index, bits >>= 8U) {
        list[kDate + index - 1] = static_cast<char>(bits & 0xFFU);
    }
    return parsed(list, plist_from_bin);
}

// Makes nodes of values. Nothing for what cannot be written.
class Writer {
public:
    explicit Writer(NSPropertyListFormat format) noexcept : isBinary_(format == NSPropertyListFormat::Binary_v1_0) {}

    // NOLINTNEXTLINE(misc-no-recursion): as deep as is read
    [[nodiscard]] UniquePropertyList node(const Value& value, std::size_t depth) {
        return value.visit([this, depth](const auto& held) { return nodeOf(held, depth); });
    }

    // Whether a date before the year 1000 has been written in XML.
    [[nodiscard]] bool hasEarlyDates() const noexcept { return hasEarlyDates_; }

private:
    template <typename Other>
    [[nodiscard]] UniquePropertyList nodeOf(const Other& /*held*/, std::size_t /*depth*/) {
        return {};
    }

    [[nodiscard]] UniquePropertyList nodeOf(const NSString& held, std::size_t /*depth*/) {
        const char* utf8 = text(held);
        return UniquePropertyList(utf8 != nullptr ? plist_new_string(utf8) : nullptr);
    }

    [[nodiscard]] UniquePropertyList nodeOf(const NSNumber& held, std::size_t /*depth*/) {
        switch (held.kind()) {
        case NSNumber::Kind::Boolean: return UniquePropertyList(plist_new_bool(held.boolValue() ? 1 : 0));
        case NSNumber::Kind::Floating: return UniquePropertyList(plist_new_real(held.doubleValue()));
        case NSNumber::Kind::Integer: return integerNode(held.unsignedIntegerValue(), true);
        case NSNumber::Kind::UnsignedInteger: return integerNode(held.unsignedIntegerValue(), false);
        }
        return {};
    }

    [[nodiscard]] UniquePropertyList nodeOf(const NSData& held, std::size_t /*depth*/) {
        const char* bytes = held.isEmpty() ? "" : held.view().data();
        return UniquePropertyList(plist_new_data(bytes, held.length()));
    }

    [[nodiscard]] UniquePropertyList nodeOf(const NSDate& held, std::size_t /*depth*/) {
        const double seconds = held.timeIntervalSince1970();
        if (isBinary_) {
            const bool isKept = std::fabs(seconds - kSecondsFrom1970To2001) < kMostPropertyListSeconds;
            return isKept ? dateNode(seconds - kSecondsFrom1970To2001) : UniquePropertyList();
        }
        hasEarlyDates_ = hasEarlyDates_ || seconds < kYear1000;
        const bool hasYear = seconds >= kYear0 && seconds < kYear10000;
        return hasYear ? dateNode(std::floor(seconds) - kSecondsFrom1970To2001) : UniquePropertyList();
    }

    // NOLINTNEXTLINE(misc-no-recursion)
    [[nodiscard]] UniquePropertyList nodeOf(const NSArray& held, std::size_t depth) {
        UniquePropertyList array(depth < kDeepestPropertyList ? plist_new_array() : nullptr);
        for (const Value& element : held) {
            UniquePropertyList item = array ? node(element, depth + 1) : UniquePropertyList();
            if (!item) {
                return {};
            }
            plist_array_append_item(array.get(), item.release());
        }
        return array;
    }

    // NOLINTNEXTLINE(misc-no-recursion)
    [[nodiscard]] UniquePropertyList nodeOf(const NSDictionary& held, std::size_t depth) {
        UniquePropertyList dictionary(depth < kDeepestPropertyList ? plist_new_dict() : nullptr);
        for (const auto& [key, value] : held) {
            UniquePropertyList item = dictionary ? node(value, depth + 1) : UniquePropertyList();
            const char* utf8 = item ? text(key) : nullptr;
            if (utf8 == nullptr) {
                return {};
            }
            plist_dict_set_item(dictionary.get(), utf8, item.release());
        }
        return dictionary;
    }

    // The string as the functions for nodes take it, which end at U+0000; null for what they cannot. Valid until the
    // next one.
    [[nodiscard]] const char* text(const NSString& string) {
        const std::u16string_view units = string.units();
        text_.resize(std::max(text_.size(), 3 * units.size() + 1));
        const std::optional<std::size_t> length = unicode::utf16ToUTF8(units, text_.data());
        if (!length.has_value() || std::memchr(text_.data(), 0, *length) != nullptr) {
            return nullptr;
        }
        text_[*length] = '\0';
        return text_.data();
    }

    bool isBinary_;
    bool hasEarlyDates_ = false;
    std::vector<char> text_;
};

// Years are written without the zeros in front of them, and then are not read.
std::string withFourDigitsOfYears(std::string_view xml) {
    static constexpr std::string_view kTag = "<date>"; // which no text holds: "<" is escaped
    static constexpr std::size_t kDateLength = 20;
    std::string result;
    for (std::size_t at = xml.find(kTag); at != std::string_view::npos; at = xml.find(kTag)) {
        const std::size_t begin = at + kTag.size();
        const std::size_t length = xml.find('<', begin) - begin;
        result.append(xml.substr(0, begin)).append(kDateLength - std::min(length, kDateLength), '0');
        xml.remove_prefix(begin);
    }
    return result.append(xml);
}

} // namespace

std::optional<NSData> dataOfPropertyList(const Value& value, NSPropertyListFormat format) {
    const bool isBinary = format == NSPropertyListFormat::Binary_v1_0;
    if (!isBinary && format != NSPropertyListFormat::XML_v1_0) {
        return std::nullopt;
    }
    const PlainNumbers plainNumbers;
    Writer writer(format);
    const UniquePropertyList root = writer.node(value, 0);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    if (root) {
        (isBinary ? plist_to_bin : plist_to_xml)(root.get(), &bytes, &length);
    }
    if (bytes == nullptr) {
        return std::nullopt;
    }
    if (writer.hasEarlyDates()) {
        const UniqueMemory written(bytes);
        return NSData(withFourDigitsOfYears({bytes, length}));
    }
    return NSData::adoptingMalloc(bytes, length);
}

} // namespace qk::platform
