// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Locale.h"
#include "QKFoundation/platform/services/TimeZones.h"

#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace qk::platform::memory {

/// A user with the preferences that were given. Threads: any, at the same time.
class QK_EXPORT MemoryLocale final : public Locale {
public:
    void setPreferredLanguages(const std::vector<NSString>& languages);

    [[nodiscard]] std::vector<NSString> preferredLanguages() const override;

private:
    mutable std::mutex mutex_;
    std::vector<NSString> languages_;
};

/// A system that knows the zones it was given. Threads: any, at the same time.
class QK_EXPORT MemoryTimeZones final : public TimeZones {
public:
    /// The zone is known under its name.
    void addTimeZone(const NSTimeZone& zone);

    /// The machine is set to this zone; to none, which reads as UTC, with nothing.
    void setSystemTimeZone(const std::optional<NSTimeZone>& zone);

    [[nodiscard]] std::optional<NSTimeZone> timeZoneWithName(const NSString& name) const override;
    [[nodiscard]] NSTimeZone systemTimeZone() const override;

private:
    mutable std::mutex mutex_;
    std::map<NSString, NSTimeZone> zones_;
    std::optional<NSTimeZone> system_;
};

} // namespace qk::platform::memory
