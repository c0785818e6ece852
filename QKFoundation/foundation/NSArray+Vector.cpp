// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSArray+Vector.h"
#include "QKFoundation/foundation/NSString+Unicode.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <type_traits>
#include <utility>

namespace qk::NSArray_Vector {
namespace {

template <typename Element>
NSArray arrayOfNumbers(const std::vector<Element>& vector) {
    std::vector<Value> values;
    values.reserve(vector.size());
    for (const Element element : vector) {
        values.emplace_back(element);
    }
    return NSArray(std::move(values));
}

// What `read` makes of each element that is a `T`.
template <typename T, typename Read>
auto readElements(const NSArray& array, Read read) {
    std::vector<std::decay_t<std::invoke_result_t<Read, const T&>>> result;
    result.reserve(array.count());
    for (const Value& value : array) {
        if (const T* element = value.as<T>(); element != nullptr) {
            result.push_back(read(*element));
        }
    }
    return result;
}

} // namespace

NSArray arrayWithStringVector(const std::vector<std::wstring>& vector) {
    std::vector<Value> values;
    values.reserve(vector.size());
    for (const std::wstring& wide : vector) {
        values.emplace_back(NSString_Unicode::initWithWString(wide));
    }
    return NSArray(std::move(values));
}

std::vector<std::wstring> stringVectorFrom(const std::optional<NSArray>& array) {
    return stringVector(array.value_or(NSArray()));
}

std::vector<std::wstring> stringVector(const NSArray& self) {
    return readElements<NSString>(self, [](const NSString& text) { return NSString_Unicode::wstringFrom(text); });
}

NSArray arrayWithIntegerVector(const std::vector<std::int32_t>& vector) {
    return arrayOfNumbers(vector);
}

std::vector<std::int32_t> integerVector(const NSArray& self) {
    return readElements<NSNumber>(self, [](const NSNumber& number) { return number.intValue(); });
}

NSArray arrayWithUnsignedIntegerVector(const std::vector<std::uint32_t>& vector) {
    return arrayOfNumbers(vector);
}

std::vector<std::uint32_t> unsignedIntegerVectorWithArray(const std::optional<NSArray>& array) {
    return readElements<NSNumber>(array.value_or(NSArray()),
                                  [](const NSNumber& number) { return number.unsignedIntValue(); });
}

NSArray arrayWithBoolVector(const std::vector<bool>& vector) {
    return arrayOfNumbers(vector);
}

std::vector<bool> boolVector(const NSArray& self) {
    return readElements<NSNumber>(self, [](const NSNumber& number) { return number.boolValue(); });
}

std::vector<std::wstring> stringVectorFromFileURLs(const NSArray& urls) {
    std::vector<std::wstring> paths;
    paths.reserve(urls.count());
    for (const Value& value : urls) {
        const NSURL* url = value.as<NSURL>();
        if (url == nullptr) {
            throw NSInvalidArgumentException("unrecognized selector path sent to " + value.description());
        }
        paths.push_back(NSString_Unicode::wstringFromDecomposed(url->path()));
    }
    return paths;
}

} // namespace qk::NSArray_Vector
