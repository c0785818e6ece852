// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/Services.h"

#include "benchmarks/codecs/Jobs.h"

#include <string>
#include <vector>

namespace qk::bench {
namespace {

constexpr int kCount = 1900;

Value record(int index) {
    const NSString number = NSString::fromInteger(index);
    return NSDictionary{
        {"identifier", 1'000'000'000 + index * 7919},
        {"name", NSString("Device of room ") + number + NSString(" & <more>")},
        {"path", NSString("/Library/Application Support/Example/Inventory/") + number + NSString(".record")},
        {"owner", NSString("Jürgen Müßig")},
        {"seen", NSDate::dateWithTimeIntervalSince1970(1'600'000'000 + index * 3600)},
        {"load", 0.25 + index / 1000.0},
        {"online", index % 3 == 0},
        {"key", NSData(std::string(12, static_cast<char>(index)))},
        {"tags", NSArray{"remote", "support", number}},
    };
}

NSData written(platform::NSPropertyListFormat format) {
    return platform::makeHostCodecs().propertyLists->dataWithPropertyList(records(), format).value();
}

} // namespace

const Value& records() {
    static const Value list = [] {
        std::vector<Value> values;
        for (int index = 0; index < kCount; ++index) {
            values.push_back(record(index));
        }
        return Value(NSArray(std::move(values)));
    }();
    return list;
}

std::string_view bytes(Job job) {
    static const NSData xml = written(platform::NSPropertyListFormat::XML_v1_0);
    static const NSData binary = written(platform::NSPropertyListFormat::Binary_v1_0);
    return (job == Job::readXML || job == Job::writeXML ? xml : binary).view();
}

} // namespace qk::bench
