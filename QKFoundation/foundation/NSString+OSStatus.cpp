// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+OSStatus.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace qk::NSString_OSStatus {
namespace {

constexpr std::int32_t kFirstCode = -67072;

// By code from the first one on; "" for the code that has no text.
constexpr auto kMessages = std::to_array<std::string_view>({
#include "CodeSigningMessages.inc"
});
static_assert(kMessages.size() == 73);

std::string_view messageFor(std::int32_t status) {
    const std::int64_t index = std::int64_t{status} - kFirstCode;
    return index >= 0 && index < std::ssize(kMessages) ? kMessages[static_cast<std::size_t>(index)]
                                                       : std::string_view();
}

} // namespace

NSString stringWithOSStatus(std::int32_t status) {
    const std::string_view message = messageFor(status);
    return message.empty() ? "Error " + NSString::fromInteger(status) + " while validating app bundle signature."
                           : NSString::fromUTF8Lossy(message);
}

} // namespace qk::NSString_OSStatus
