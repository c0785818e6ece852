// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryNames.h"

namespace qk::platform::memory {

void MemoryProcessInfo::setOperatingSystemVersion(const std::optional<NSOperatingSystemVersion>& version) {
    const std::scoped_lock lock(mutex_);
    version_ = version;
}

void MemoryProcessInfo::setGestalt(GestaltSelector selector, std::optional<std::int32_t> number) {
    const std::scoped_lock lock(mutex_);
    if (number.has_value()) {
        gestalt_[selector] = *number;
    } else {
        gestalt_.erase(selector);
    }
}

std::optional<NSOperatingSystemVersion> MemoryProcessInfo::operatingSystemVersion() const {
    const std::scoped_lock lock(mutex_);
    return version_;
}

std::optional<std::int32_t> MemoryProcessInfo::gestalt(GestaltSelector selector) const {
    const std::scoped_lock lock(mutex_);
    const auto found = gestalt_.find(selector);
    return found != gestalt_.end() ? std::optional(found->second) : std::nullopt;
}

void MemoryProcessInfo::setMainBundlePath(const NSString& path) {
    const std::scoped_lock lock(mutex_);
    mainBundlePath_ = path;
}

void MemoryProcessInfo::addClass(const NSString& name, const NSString& path) {
    const std::scoped_lock lock(mutex_);
    classes_[name] = path;
}

NSString MemoryProcessInfo::mainBundlePath() const {
    const std::scoped_lock lock(mutex_);
    return mainBundlePath_;
}

std::optional<NSString> MemoryProcessInfo::bundlePathForClass(const NSString& name) const {
    const std::scoped_lock lock(mutex_);
    const auto found = classes_.find(name);
    return found != classes_.end() ? std::optional(found->second) : std::nullopt;
}

void MemoryHost::setUserName(const std::optional<NSString>& name) {
    const std::scoped_lock lock(mutex_);
    userName_ = name;
}

void MemoryHost::setLocalizedName(const std::optional<NSString>& name) {
    const std::scoped_lock lock(mutex_);
    localizedName_ = name;
}

std::optional<NSString> MemoryHost::userName() const {
    const std::scoped_lock lock(mutex_);
    return userName_;
}

std::optional<NSString> MemoryHost::localizedName() const {
    const std::scoped_lock lock(mutex_);
    return localizedName_;
}

} // namespace qk::platform::memory
