// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSNumber.h"
#include "QKFoundation/platform/values/NSURL.h"

#include <optional>

/// `NSURL(QueryParsing)`: the parameters of a query such as "?room=12&name=A%20B". Threads: any.
///
/// The query is cut at "&", each piece at "="; only a piece that "=" cuts in two is a parameter. Names and values are
/// unescaped afterwards; "+" stays "+".
namespace qk::NSURL_QueryParsing {

/// `stringForQueryParameter:`. The value of the last parameter of that name, in any letter case; `name` itself is taken
/// without escapes. Nothing when there is no such parameter or no query, and when the escapes of the last such
/// parameter's value are incomplete or not UTF-8. A name with such escapes is nobody's.
[[nodiscard]] QK_EXPORT std::optional<NSString> stringForQueryParameter(const NSURL& self, const NSString& name);

/// `numberForQueryParameter:`. The `integerValue` of `stringForQueryParameter`, 0 for a value without digits; nothing
/// where that is nothing.
[[nodiscard]] QK_EXPORT std::optional<NSNumber> numberForQueryParameter(const NSURL& self, const NSString& name);

} // namespace qk::NSURL_QueryParsing
