// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSDateFormatter.h"

/// `NSDateFormatter(UTC)`. Threads: one formatter is used by one thread at a time.
namespace qk::NSDateFormatter_UTC {

/// `utcStringFromDate:`. The hour that `date` lies in, in UTC: "20161116T04".
/// Deliberate: `self` keeps what this sets, the behaviour of 10.4, the zone UTC and the pattern "yyyyMMdd'T'HH".
QK_EXPORT NSString utcStringFromDate(NSDateFormatter& self, const NSDate& date);

} // namespace qk::NSDateFormatter_UTC
