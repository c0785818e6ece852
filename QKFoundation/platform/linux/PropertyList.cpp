// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyList.h"

#include "QKFoundation/platform/linux/PropertyListGuard.h"
#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

constexpr double kUSecondsInSecond = 1e6;
constexpr double kSecondsFrom1970To2001 = 978307200;

struct PropertyListPolicy {
    using Handle = plist_t;
    static constexpr plist_t none() noexcept { return nullptr; }
    static void close(plist_t node) noexcept { plist_free(node); }
};
using UniquePropertyList = UniqueHandle<PropertyListPolicy>;

struct Free {
    void operator()(void* memory) const noexcept { std::free(memory); }
};
using UniqueMemory = std::unique_ptr<void, Free>;

UniquePropertyList parsed(std::string_view bytes, void (*parse)(const char*, std::uint32_t, plist_t*)) {
    plist_t root = nullptr;
    parse(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    return UniquePropertyList(root);
}

bool equalsUnsigned(plist_t node, std::uint64_t bits) {
    const UniquePropertyList other(plist_new_uint(bits));
    return plist_compare_node_value(node, other.get()) != 0;
}

// The parser keeps an integer's bits and whether it is unsigned, but hands out the bits alone. Comparing with an
// integer of the same bits shows the difference; which way round depends on the library's version.
bool isNegative(plist_t node, std::uint64_t bits) {
    static const bool equalMeansNegative = [] {
        const UniquePropertyList minusOne =
            parsed("<plist version=\"1.0\"><integer>-1</integer></plist>", plist_from_xml);
        return equalsUnsigned(minusOne.get(), ~std::uint64_t{0});
    }();
    return (bits >> 63U) != 0 && equalsUnsigned(node, bits) == equalMeansNegative;
}

std::optional<Value> value(plist_t node);

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

std::optional<Value> date(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return Value(
        NSDate::dateWithTimeIntervalSince1970(seconds + kSecondsFrom1970To2001 + microseconds / kUSecondsInSecond));
}

std::optional<Value> array(plist_t node) {
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

std::optional<Value> dictionary(plist_t node) {
    std::vector<NSDictionary::Entry> entries;
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
        const std::optional<NSString> key = text != nullptr ? NSString::fromUTF8(text) : std::nullopt;
        std::optional<Value> element = value(item);
        if (!key.has_value() || !element.has_value()) {
            return std::nullopt;
        }
        entries.emplace_back(*key, *std::move(element));
    }
}

// As deep as the guards let a list be.
std::optional<Value> value(plist_t node) { // NOLINT(misc-no-recursion)
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
    case PLIST_DATE: return date(node);
    case PLIST_ARRAY: return array(node);
    case PLIST_DICT: return dictionary(node);
    default: return std::nullopt; // a reference of a keyed archive is no property-list value
    }
}

} // namespace

std::optional<Value> propertyList(std::string_view bytes) {
    if (bytes.size() > kPropertyListLimit) {
        return std::nullopt;
    }
    const bool binary = bytes.starts_with("bplist00");
    if (binary ? !isTameBinaryPropertyList(bytes) : !isTameXMLPropertyList(bytes)) {
        return std::nullopt;
    }
    const UniquePropertyList root = parsed(bytes, binary ? plist_from_bin : plist_from_xml);
    return root ? value(root.get()) : std::nullopt;
}

} // namespace qk::platform
