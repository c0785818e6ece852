// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <string_view>

namespace qk::tests {
namespace {

using namespace std::string_view_literals;
using platform::NSPropertyListFormat;
using platform::NSPropertyListMutabilityOptions;

class PropertyListsContract : public Contract {
protected:
    std::optional<Value> read(std::string_view bytes) {
        return subject().silent().propertyLists->propertyListWithData(NSData(bytes),
                                                                      NSPropertyListMutabilityOptions::Immutable);
    }
    std::optional<NSData> write(const Value& value, NSPropertyListFormat format) {
        return subject().silent().propertyLists->dataWithPropertyList(value, format);
    }
};
INSTANTIATE_TEST_SUITE_P(Of, PropertyListsContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(PropertyListsContract, NoBytesHoldNothing) {
    EXPECT_EQ(read(""), std::nullopt);
}

TEST_P(PropertyListsContract, MalformedBytesHoldNothing) {
    for (const std::string_view bytes : {"a = b"sv, "(a"sv, "bplist00"sv, "<plist><true/>"sv, "<array/>"sv,
                                         "<?xml version=\"1.0\"?><plist></plist>"sv, "a = '\xE9';"sv}) {
        EXPECT_EQ(read(bytes), std::nullopt) << bytes;
    }
}

TEST_P(PropertyListsContract, OlderTextFormIsRead) {
    EXPECT_EQ(read("(a, b)"), Value(NSArray{"a", "b"}));
    EXPECT_EQ(read("/* Title */\n\"a\" = \"b\";\n"), Value(NSDictionary{{"a", "b"}}));
    EXPECT_EQ(read("\xFF\xFE"
                   "a\0;\0"sv),
              Value(NSDictionary{{"a", "a"}}));
    EXPECT_EQ(read("word"), Value("word"));
    EXPECT_EQ(read(" // nothing\n"), Value(NSDictionary()));
}

TEST_P(PropertyListsContract, MutabilityDoesNotChangeWhatIsRead) {
    const auto machine = subject().silent();
    for (const auto options : {NSPropertyListMutabilityOptions::MutableContainers,
                               NSPropertyListMutabilityOptions::MutableContainersAndLeaves}) {
        EXPECT_EQ(machine.propertyLists->propertyListWithData(NSData("(a)"sv), options), Value(NSArray{"a"}));
    }
}

TEST_P(PropertyListsContract, WhatNoListCanHoldIsNotWritten) {
    for (const auto format : {NSPropertyListFormat::XML_v1_0, NSPropertyListFormat::Binary_v1_0}) {
        EXPECT_EQ(write(NSNull(), format), std::nullopt);
        EXPECT_EQ(write(NSArray{NSNull()}, format), std::nullopt);
        EXPECT_EQ(write(NSString(u"\xD800"sv), format), std::nullopt);
    }
    EXPECT_EQ(write("a", NSPropertyListFormat::OpenStep), std::nullopt);
}

TEST_P(PropertyListsContract, WhatIsWrittenIsReadBack) {
    const Value value(NSDictionary{{"array", NSArray{true, 1, 1.5, -1, UINT64_MAX, "a\r\nb"}},
                                   {"data", NSData("\0\1"sv)},
                                   {"date", NSDate::dateWithTimeIntervalSince1970(1479269100)},
                                   {"empty", NSArray{NSArray(), NSDictionary(), "", NSData()}}});
    for (const auto format : {NSPropertyListFormat::XML_v1_0, NSPropertyListFormat::Binary_v1_0}) {
        const std::optional<NSData> data = write(value, format);
        if (!data.has_value()) {
            EXPECT_EQ(write("a", format), std::nullopt) << "a format is written or not, whatever the value";
            continue;
        }
        EXPECT_EQ(read(data->view()), value);
    }
}

} // namespace
} // namespace qk::tests
