// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSArray+plist.h"
#include "QKFoundation/foundation/NSDictionary+PropertyList.h"
#include "QKFoundation/foundation/NSMutableDictionary+PropertyList.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

using platform::NSPropertyListFormat;
using platform::NSPropertyListMutabilityOptions;
using platform::memory::Machine;

// Understands four texts, and remembers what it was asked.
class FewLists final : public platform::PropertyListSerialization {
public:
    [[nodiscard]] std::optional<Value> propertyListWithData(const NSData& data,
                                                            NSPropertyListMutabilityOptions options) const override {
        read = std::string(data.view());
        mutability = options;
        if (read == "array") {
            return NSArray{1};
        }
        if (read == "dictionary") {
            return NSDictionary{{"a", 1}};
        }
        return read == "text" ? std::optional<Value>("text") : std::nullopt;
    }
    [[nodiscard]] std::optional<NSData> dataWithPropertyList(const Value& value,
                                                             NSPropertyListFormat format) const override {
        if (format != NSPropertyListFormat::XML_v1_0 || value.as<NSArray>()->isEmpty()) {
            return std::nullopt;
        }
        return NSData(value.as<NSArray>()->count() == 1 ? "<\xC3\xA9>" : "<\xFF>");
    }

    mutable std::string read;
    mutable NSPropertyListMutabilityOptions mutability{};
};

struct PropertyLists : testing::Test {
    Machine machine;
    platform::Services services = *machine.services();
    std::shared_ptr<FewLists> lists = std::make_shared<FewLists>();

    PropertyLists() { services.propertyLists = lists; }

    [[nodiscard]] std::optional<Value> at(const NSString& path) const {
        return internal::propertyListAtPath(services, path, NSPropertyListMutabilityOptions::Immutable);
    }
};

TEST_F(PropertyLists, ArrayThatCannotBeWrittenIsNoText) {
    EXPECT_EQ(internal::plistRepresentation(services, {}), std::nullopt);
}

TEST_F(PropertyLists, ArrayIsWrittenAsXMLAndReadAsUTF8) {
    EXPECT_EQ(internal::plistRepresentation(services, {1}), NSString(u"<\u00E9>"));
    EXPECT_EQ(internal::plistRepresentation(services, {1, 2}), std::nullopt) << "no UTF-8";
}

TEST_F(PropertyLists, TextThatCannotBeReadOrHoldsNoArrayIsNoArray) {
    EXPECT_EQ(internal::arrayForPlistRepresentation(services, ""), std::nullopt);
    EXPECT_EQ(internal::arrayForPlistRepresentation(services, "dictionary"), std::nullopt);
    EXPECT_EQ(internal::arrayForPlistRepresentation(services, "text"), std::nullopt);
}

TEST_F(PropertyLists, ArrayIsReadFromUTF8WithLoss) {
    EXPECT_EQ(internal::arrayForPlistRepresentation(services, "array"), NSArray{1});
    EXPECT_EQ(lists->mutability, NSPropertyListMutabilityOptions::Immutable);
    static_cast<void>(internal::arrayForPlistRepresentation(services, NSString(u"\u00E9\xD800")));
    EXPECT_EQ(lists->read, "\xC3\xA9?");
}

TEST_F(PropertyLists, NoFileIsNoList) {
    EXPECT_EQ(at("/missing"), std::nullopt);
    machine.fileManager.addDirectory("/folder");
    EXPECT_EQ(at("/folder"), std::nullopt);
    machine.fileManager.addFile("/denied", NSData("array"));
    machine.fileManager.denyReading("/denied");
    EXPECT_EQ(at("/denied"), std::nullopt);
}

TEST_F(PropertyLists, FileIsReadWhateverKindItHolds) {
    machine.fileManager.addFile("/dictionary", NSData("dictionary"));
    machine.fileManager.addFile("/array", NSData("array"));
    machine.fileManager.addFile("/text", NSData("text"));
    machine.fileManager.addFile("/other", NSData("other"));
    EXPECT_EQ(at("/dictionary"), Value(NSDictionary{{"a", 1}}));
    EXPECT_EQ(at("/array"), Value(NSArray{1}));
    EXPECT_EQ(at("/text"), Value("text"));
    EXPECT_EQ(at("/other"), std::nullopt);
}

TEST_F(PropertyLists, CategoriesAskForTheirOwnMutability) {
    machine.fileManager.addFile("/dictionary", NSData("dictionary"));
    const auto previous = platform::installServices(std::make_shared<const platform::Services>(services));
    const Value dictionary = NSDictionary{{"a", 1}};
    EXPECT_EQ(NSDictionary_PropertyList::dictionaryWithPropertyListAtPath("/dictionary"), dictionary);
    EXPECT_EQ(lists->mutability, NSPropertyListMutabilityOptions::Immutable);
    EXPECT_EQ(NSMutableDictionary_PropertyList::dictionaryWithPropertyListAtPath("/dictionary"), dictionary);
    EXPECT_EQ(lists->mutability, NSPropertyListMutabilityOptions::MutableContainers);
    for (const auto read :
         {&NSDictionary_PropertyList::dictionaryWithData, &NSMutableDictionary_PropertyList::dictionaryWithData}) {
        for (const auto format :
             {NSPropertyListFormat::OpenStep, NSPropertyListFormat::XML_v1_0, NSPropertyListFormat::Binary_v1_0}) {
            EXPECT_EQ(read(NSData("array"), format, NSPropertyListMutabilityOptions::MutableContainersAndLeaves),
                      Value(NSArray{1}));
            EXPECT_EQ(lists->mutability, NSPropertyListMutabilityOptions::MutableContainersAndLeaves);
        }
        EXPECT_EQ(read(NSData(), NSPropertyListFormat::XML_v1_0, NSPropertyListMutabilityOptions::Immutable),
                  std::nullopt);
    }
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation("array"), NSArray{1});
    EXPECT_EQ(NSArray_plist::plistRepresentation({1}), NSString(u"<\u00E9>"));
    platform::installServices(previous);
}

} // namespace
} // namespace qk
