// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKSystemInfo.h"

#include "QKFoundation/files/internal/Tasks.h"
#include "QKFoundation/platform/objects/ValueConversion.h"
#include "QKFoundation/system_info/QKOSUpdateParser.h"
#include "QKFoundation/system_info/internal/OSVersion.h"
#include "QKFoundation/system_info/internal/SystemFacts.h"

namespace qk {

using platform::services;

std::optional<NSString> internal::computerName(const platform::Services& services) {
    std::optional<NSString> name = services.host->localizedName();
    return name.has_value() ? name : services.systemConfiguration->copyComputerName();
}

std::optional<NSString> internal::osProductName(const platform::Services& services) {
    const auto system =
        services.fileManager->dictionaryWithContentsOfFile("/System/Library/CoreServices/SystemVersion.plist");
    const Value* name = system.has_value() ? system->objectForKey("ProductName") : nullptr;
    return name != nullptr ? std::optional<NSString>(name->description()) : std::nullopt;
}

NSString internal::osVersionDescription(const platform::Services& services) {
    const NSOperatingSystemVersion version = OSXVersion(services);
    NSMutableString text;
    for (const auto& name : {osProductName(services), versionCodeName(version)}) {
        if (name.has_value()) {
            text.append(*name).append(u' ');
        }
    }
    text.append(versionLongString(version)).append(u' ');
    return text.append(u'(').append(osRevision(services).value_or("(null)")).append(u')').copy();
}

std::optional<NSArray> internal::osUpdates(const platform::Services& services) {
    const NSData listing = runCommandAtPath(services, "/usr/sbin/softwareupdate", {"-l"});
    const auto parser = QKOSUpdateParser::initWithString(toValue(NSString::fromUTF8(listing.view())));
    return parser->startParsing() ? parser->parsedObjects() : std::nullopt;
}

std::optional<NSString> QKSystemInfo::username() {
    return services()->host->userName();
}

std::optional<NSString> QKSystemInfo::computerName() {
    return internal::computerName(*services());
}

NSString QKSystemInfo::osManufacturer() {
    return "Apple";
}

std::optional<NSString> QKSystemInfo::osProductName() {
    return internal::osProductName(*services());
}

NSString QKSystemInfo::osVersionDescription() {
    return internal::osVersionDescription(*services());
}

std::optional<NSArray> QKSystemInfo::osUpdates() {
    return internal::osUpdates(*services());
}

} // namespace qk
