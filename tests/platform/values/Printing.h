// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <optional>
#include <ostream>
#include <string>

namespace qk {

/// How a failed assertion shows the values.
inline void PrintTo(const NSString& string, std::ostream* out) {
    *out << '"' << string.utf8Lossy() << '"';
}
inline void PrintTo(const Value& value, std::ostream* out) {
    *out << value.description().utf8Lossy();
}
inline void PrintTo(const NSURL& url, std::ostream* out) {
    *out << url.absoluteString().utf8Lossy();
}
inline void PrintTo(const NSNumber& number, std::ostream* out) {
    *out << number.stringValue().utf8Lossy();
}
inline void PrintTo(const NSDate& date, std::ostream* out) {
    *out << date.timeIntervalSince1970();
}

/// A string of a table's text, which may be computed: UTF-8.
inline NSString text(std::string_view utf8) {
    return NSString::fromUTF8Lossy(utf8);
}

} // namespace qk
