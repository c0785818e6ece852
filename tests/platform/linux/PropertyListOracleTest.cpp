// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyList.h"
#include "QKFoundation/platform/linux/PropertyListNodes.h"
#include "QKFoundation/platform/linux/PropertyListReading.h"
#include "QKFoundation/platform/linux/PropertyListWriting.h"

#include <gtest/gtest.h>
#include <plist/plist.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What is read, beside what libplist reads.
namespace qk::platform {
namespace {

constexpr auto kXML = NSPropertyListFormat::XML_v1_0;
constexpr auto kBinary = NSPropertyListFormat::Binary_v1_0;

Value valueOf(plist_t node);

Value textOf(plist_t node) {
    char* started = nullptr;
    (plist_get_node_type(node) == PLIST_KEY ? plist_get_key_val : plist_get_string_val)(node, &started);
    const UniqueMemory text(started);
    return started != nullptr ? NSString::fromUTF8(started).value() : NSString();
}

Value numberOf(plist_t node) {
    std::uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    return static_cast<std::int64_t>(bits); // libplist does not tell its sign: none here needs the 64th bit otherwise
}

Value dataOf(plist_t node) {
    std::uint64_t length = 0;
    const char* bytes = plist_get_data_ptr(node, &length);
    return bytes != nullptr ? NSData(std::string_view(bytes, length)) : NSData();
}

Value dateOf(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return NSDate::dateWithTimeIntervalSince1970(seconds + kSecondsFrom1970To2001);
}

Value arrayOf(plist_t node) {
    std::vector<Value> values;
    for (std::uint32_t index = 0; index < plist_array_get_size(node); ++index) {
        values.push_back(valueOf(plist_array_get_item(node, index)));
    }
    return NSArray(std::move(values));
}

Value dictionaryOf(plist_t node) {
    std::vector<NSDictionary::Entry> entries;
    plist_dict_iter started = nullptr;
    plist_dict_new_iter(node, &started);
    const UniqueMemory iterator(started);
    for (;;) {
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), nullptr, &item);
        if (item == nullptr) {
            return NSDictionary(std::move(entries));
        }
        entries.emplace_back(*textOf(plist_dict_item_get_key(item)).as<NSString>(), valueOf(item));
    }
}

Value valueOf(plist_t node) {
    std::uint8_t flag = 0;
    double real = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: plist_get_bool_val(node, &flag); return flag != 0;
    case PLIST_REAL: plist_get_real_val(node, &real); return real;
    case PLIST_UINT: return numberOf(node);
    case PLIST_STRING: return textOf(node);
    case PLIST_DATA: return dataOf(node);
    case PLIST_DATE: return dateOf(node);
    case PLIST_ARRAY: return arrayOf(node);
    case PLIST_DICT: return dictionaryOf(node);
    default: return NSNull();
    }
}

Value readByLibplist(std::string_view bytes) {
    const PlainNumbers plainNumbers;
    return valueOf(parsed(bytes, bytes.starts_with("bplist") ? plist_from_bin : plist_from_xml).get());
}

NSString anyText() {
    const auto character = rc::gen::oneOf(
        rc::gen::inRange<std::uint32_t>(1, 0x80), rc::gen::element<std::uint32_t>('&', '<', '>', '\r', '"', ' '),
        rc::gen::inRange<std::uint32_t>(0x80, 0xD800), rc::gen::inRange<std::uint32_t>(0xE000, 0x110000));
    std::wstring text;
    for (const std::uint32_t element : *rc::gen::container<std::vector<std::uint32_t>>(character)) {
        text += static_cast<wchar_t>(element);
    }
    return NSString::fromUTF32(text).value();
}

Value anyNumber() {
    switch (*rc::gen::inRange(0, 4)) {
    case 0: return *rc::gen::arbitrary<bool>();
    case 1: return *rc::gen::arbitrary<std::int64_t>();
    case 2: return std::ldexp(1.0 + *rc::gen::inRange(0, 1 << 30) / 1073741824.0, *rc::gen::inRange(-1080, 1023));
    default: return *rc::gen::inRange(-300, 300);
    }
}

Value anyValue(int depth) {
    std::vector<Value> values;
    std::vector<NSDictionary::Entry> entries;
    switch (*rc::gen::inRange(0, depth > 0 ? 7 : 4)) {
    case 0: return anyText();
    case 1: return NSData(*rc::gen::arbitrary<std::string>());
    case 2: return NSDate::dateWithTimeIntervalSince1970(*rc::gen::inRange(-900'000'000, 2'000'000'000));
    case 3: return anyNumber();
    case 4:
        for (int count = *rc::gen::inRange(0, 40); count > 0; --count) {
            values.push_back(anyValue(0));
        }
        return NSArray(std::move(values));
    default:
        for (int count = *rc::gen::inRange(0, 5); count > 0; --count) {
            entries.emplace_back(anyText(), anyValue(depth - 1));
        }
        return NSDictionary(std::move(entries));
    }
}

RC_GTEST_PROP(PropertyListOracle, WhatLibplistWritesIsReadAsLibplistReadsIt, ()) {
    const Value value = anyValue(3);
    for (const auto format : {kXML, kBinary}) {
        const std::optional<NSData> data = dataOfPropertyList(value, format);
        RC_ASSERT(data.has_value());
        const std::optional<Value> list = propertyList(data->view());
        RC_ASSERT(list.has_value());
        RC_ASSERT(*list == readByLibplist(data->view()));
        RC_ASSERT(*list == value);
    }
}

TEST(PropertyListOracle, SeedsAreReadAsLibplistReadsThem) {
    std::size_t count = 0;
    for (const auto& seed :
         std::filesystem::directory_iterator(QK_FIXTURES_DIR "/../fuzz/corpus/linux_property_list")) {
        std::ifstream file(seed.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        if (const std::optional<Value> list = propertyList(bytes)) {
            EXPECT_EQ(*list, readByLibplist(bytes)) << seed.path();
            ++count;
        }
    }
    EXPECT_GE(count, 2U);
}

RC_GTEST_PROP(PropertyListOracle, RealNumbersAreThoseOfTheCLibrary, ()) {
    const std::string digits = *rc::gen::container<std::string>(rc::gen::inRange('0', ':'));
    const std::string text = *rc::gen::element<std::string>("", "-", "+") + digits + "." +
                             std::to_string(*rc::gen::inRange(0, 1000)) + "e" +
                             std::to_string(*rc::gen::inRange(-400, 400));
    const double expected = std::strtod(text.c_str(), nullptr);
    RC_ASSERT(propertyList("<plist><real>" + text + "</real></plist>") == Value(expected));
}

} // namespace
} // namespace qk::platform
