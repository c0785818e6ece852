// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+ByteCount.h"
#include "QKFoundation/platform/objects/NSByteCountFormatter.h"

namespace qk::NSString_ByteCount {

NSString stringWithByteCount(std::int64_t byteCount) {
    return NSByteCountFormatter::stringFromByteCount(byteCount, NSByteCountFormatterCountStyle::Binary);
}

} // namespace qk::NSString_ByteCount
