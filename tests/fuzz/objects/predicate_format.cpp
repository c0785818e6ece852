// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSPredicate.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

/// Texts of conditions: no input crashes, runs away or exhausts the stack. What is read is written as a text that is
/// read as the same condition, and evaluating it raises nothing.
namespace qk {
namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// A value of another kind for each key path.
std::optional<Value> answer(const NSString& keyPath) {
    switch (keyPath.hash() % 8) {
    case 0: return std::nullopt;
    case 1: return NSNull{};
    case 2: return keyPath;
    case 3: return true;
    case 4: return 2.5;
    case 5: return NSDate::dateWithTimeIntervalSince1970(0);
    case 6: return NSDictionary{{"a", 1}};
    default: return NSArray{"a", 1, NSNull{}, NSArray{"a"}};
    }
}

void readAndWrite(const NSString& format, const std::vector<Value>& arguments) {
    std::shared_ptr<const NSPredicate> predicate;
    try {
        predicate = NSPredicate::predicateWithFormat(format, arguments);
    } catch (const NSInvalidArgumentException&) {
        return;
    }
    const auto again = NSPredicate::predicateWithFormat(predicate->predicateFormat());
    require(again->predicateFormat() == predicate->predicateFormat());
    require(again->keyPaths() == predicate->keyPaths());
    require(again->evaluateWithLookup(answer) == predicate->evaluateWithLookup(answer));
}

} // namespace
} // namespace qk

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto format = qk::NSString::fromUTF8Lossy({reinterpret_cast<const char*>(data), size});
    qk::readAndWrite(format, {"text", 5, qk::NSArray{"x", -1.5, qk::NSNull{}}, qk::NSNull{}});
    return 0;
}
