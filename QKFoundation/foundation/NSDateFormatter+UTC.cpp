// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSDateFormatter+UTC.h"

namespace qk::NSDateFormatter_UTC {

NSString utcStringFromDate(NSDateFormatter& self, const NSDate& date) {
    self.setFormatterBehavior(NSDateFormatterBehavior::Behavior10_4);
    self.setTimeZone(NSTimeZone::UTC());
    self.setDateFormat("yyyyMMdd'T'HH");
    return self.stringFromDate(date);
}

} // namespace qk::NSDateFormatter_UTC
