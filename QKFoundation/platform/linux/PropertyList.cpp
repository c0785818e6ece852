// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyList.h"

#include "QKFoundation/platform/linux/PropertyListGuard.h"
#include "QKFoundation/platform/linux/PropertyListNodes.h"

#include <plist/plist.h>

#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

std::optional<Value> integer(plist_t node) {
    std::uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    return isNegative(node, bits) ? Value(static_cast<std::int64_t>(bits)) : Value(bits);
}

std::optional<Value> string(plist_t node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    if (text == nullptr) {
        return Value(NSString());
    }
    const std::optional<NSString> string = NSString::fromUTF8(std::string_view(text, length));
    return string.has_value() ? std::optional<Value>(*string) : std::nullopt;
}

std::optional<Value> data(plist_t node) {
    std::uint64_t length = 0;
    const char* bytes = plist_get_data_ptr(node, &length);
    return Value(bytes != nullptr ? NSData(std::string_view(bytes, length)) : NSData());
}

// The parser hands out whole seconds of 32 bits; only the binary form tells the others.
std::optional<Value> farDate(plist_t node) {
    static constexpr std::size_t kBegin = 9; // behind "bplist00" and the mark of a date
    char* started = nullptr;
    std::uint32_t size = 0;
    plist_to_bin(node, &started, &size);
    const UniqueMemory written(started);
    if (started == nullptr || size < kBegin + sizeof(double)) {
        return std::nullopt;
    }
    std::uint64_t bits = 0;
    for (std::size_t index = 0; index < sizeof bits; ++index) {
        bits = bits << 8U | static_cast<unsigned char>(started[kBegin + index]);
    }
    return Value(NSDate::dateWithTimeIntervalSince1970(std::bit_cast<double>(bits) + kSecondsFrom1970To2001));
}

std::optional<Value> nearDate(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return Value(NSDate::dateWithTimeIntervalSince1970(seconds + kSecondsFrom1970To2001));
}

// Makes values of a list that has been found tame. Calls itself as deep as the guards let a list be.
class Reader {
public:
    explicit Reader(bool hasFarDates) noexcept : hasFarDates_(hasFarDates) {}

    // NOLINTNEXTLINE(misc-no-recursion)
    [[nodiscard]] std::optional<Value> value(plist_t node) const {
        switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t flag = 0;
            plist_get_bool_val(node, &flag);
            return Value(flag != 0);
        }
        case PLIST_REAL: {
            double number = 0;
            plist_get_real_val(node, &number);
            return Value(number);
        }
        case PLIST_UINT: return integer(node);
        case PLIST_STRING: return string(node);
        case PLIST_DATA: return data(node);
        case PLIST_DATE: return hasFarDates_ ? farDate(node) : nearDate(node);
        case PLIST_ARRAY: return array(node);
        case PLIST_DICT: return dictionary(node);
        default: return std::nullopt;
        }
    }

private:
    [[nodiscard]] std::optional<Value> array(plist_t node) const { // NOLINT(misc-no-recursion)
        std::vector<Value> values;
        const std::uint32_t count = plist_array_get_size(node);
        values.reserve(count);
        plist_array_iter started = nullptr;
        plist_array_new_iter(node, &started);
        const UniqueMemory iterator(started);
        for (std::uint32_t index = 0; index < count; ++index) {
            plist_t item = nullptr;
            plist_array_next_item(node, iterator.get(), &item);
            std::optional<Value> element = item != nullptr ? value(item) : std::nullopt;
            if (!element.has_value()) {
                return std::nullopt;
            }
            values.push_back(*std::move(element));
        }
        return Value(NSArray(std::move(values)));
    }

    [[nodiscard]] std::optional<Value> dictionary(plist_t node) const { // NOLINT(misc-no-recursion)
        std::vector<NSDictionary::Entry> entries;
        entries.reserve(plist_dict_get_size(node));
        plist_dict_iter started = nullptr;
        plist_dict_new_iter(node, &started);
        const UniqueMemory iterator(started);
        for (;;) {
            char* text = nullptr;
            plist_t item = nullptr;
            plist_dict_next_item(node, iterator.get(), &text, &item);
            const UniqueMemory owned(text);
            if (item == nullptr) {
                return Value(NSDictionary(std::move(entries)));
            }
            std::optional<NSString> key = text != nullptr ? NSString::fromUTF8(text) : std::nullopt;
            std::optional<Value> element = value(item);
            if (!key.has_value() || !element.has_value()) {
                return std::nullopt;
            }
            entries.emplace_back(*std::move(key), *std::move(element));
        }
    }

    bool hasFarDates_;
};

std::optional<Value> read(std::string_view bytes, Parse* parse, const TamePropertyList& tame) {
    const PlainNumbers plainNumbers;
    const UniquePropertyList root = parsed(tame.corrected.has_value() ? *tame.corrected : bytes, parse);
    return root ? Reader(tame.hasFarDates).value(root.get()) : std::nullopt;
}

} // namespace

std::optional<Value> propertyList(std::string_view bytes) {
    if (bytes.size() > kPropertyListLimit) {
        return std::nullopt;
    }
    if (bytes.starts_with("bplist")) {
        const std::optional<TamePropertyList> tame = tameBinaryPropertyList(bytes);
        return tame.has_value() ? read(bytes, plist_from_bin, *tame) : std::nullopt;
    }
    static constexpr std::string_view kMark = "\xEF\xBB\xBF";
    const std::string_view text = bytes.starts_with(kMark) ? bytes.substr(kMark.size()) : bytes;
    const std::optional<TamePropertyList> tame = tameXMLPropertyList(text);
    return tame.has_value() ? read(text, plist_from_xml, *tame) : std::nullopt;
}

} // namespace qk::platform
