// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+FileProgress.h"
#include "QKFoundation/files/internal/FileNames.h"
#include "QKFoundation/platform/services/FileAttributeKeys.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace qk {
namespace {

constexpr char kProgress[] = "com.apple.progress.fractionCompleted";
constexpr double kMarkedDate = 443'779'200; // 1984-01-24 08:00:00 UTC

// As "%f" writes it, whatever the locale.
NSData sixDecimals(double number) {
    if (std::isnan(number)) {
        return NSData("nan"); // 0 of 0 bytes is one with a sign on some processors
    }
    constexpr std::size_t kLongest = 3 + std::numeric_limits<double>::max_exponent10 + 8; // sign, digits, ".", decimals
    std::array<char, kLongest> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, 6);
    return NSData(std::string_view(text.data(), static_cast<std::size_t>(written.ptr - text.data())));
}

} // namespace

void internal::showProgress(const platform::Services& services, double progress, const NSURL& atURL) {
    const std::optional<NSString> path = atURL.path();
    const std::optional<NSDictionary> present =
        path.has_value() ? services.fileManager->attributesOfItemAtPath(*path) : std::nullopt;
    if (!present.has_value()) {
        return;
    }
    const bool isComplete = std::fabs(progress - 1.0) < std::numeric_limits<double>::epsilon();
    // Only the two that change are written, so that nothing else which changes meanwhile is set back.
    NSMutableDictionary changed;
    changed.setObject(isComplete ? services.clock->now() : NSDate::dateWithTimeIntervalSince1970(kMarkedDate),
                      platform::NSFileCreationDate);
    if (const auto* extended = present->get<NSDictionary>(platform::NSFileExtendedAttributes)) {
        NSMutableDictionary attributes(*extended);
        if (isComplete) {
            attributes.removeObjectForKey(kProgress);
        } else {
            attributes.setObject(sixDecimals(progress), kProgress);
        }
        changed.setObject(attributes.copy(), platform::NSFileExtendedAttributes);
    }
    services.fileManager->setAttributes(changed.copy(), *path);
}

void NSFileManager_FileProgress::showProgress(const NSFileManager& /*self*/, double progress, const NSURL& atURL) {
    internal::showProgress(*platform::services(), progress, atURL);
}

} // namespace qk
