// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryLocale.h"

namespace qk::platform::memory {

void MemoryLocale::setPreferredLanguages(const std::vector<NSString>& languages) {
    const std::scoped_lock lock(mutex_);
    languages_ = languages;
}

std::vector<NSString> MemoryLocale::preferredLanguages() const {
    const std::scoped_lock lock(mutex_);
    return languages_;
}

void MemoryTimeZones::addTimeZone(const NSTimeZone& zone) {
    const std::scoped_lock lock(mutex_);
    zones_.insert_or_assign(zone.name(), zone);
}

void MemoryTimeZones::setSystemTimeZone(const std::optional<NSTimeZone>& zone) {
    const std::scoped_lock lock(mutex_);
    system_ = zone;
}

std::optional<NSTimeZone> MemoryTimeZones::timeZoneWithName(const NSString& name) const {
    const std::scoped_lock lock(mutex_);
    const auto found = zones_.find(name);
    return found != zones_.end() ? std::optional(found->second) : std::nullopt;
}

NSTimeZone MemoryTimeZones::systemTimeZone() const {
    const std::scoped_lock lock(mutex_);
    return system_.value_or(NSTimeZone::UTC());
}

} // namespace qk::platform::memory
