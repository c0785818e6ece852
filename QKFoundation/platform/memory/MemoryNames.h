// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Host.h"
#include "QKFoundation/platform/services/ProcessInfo.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>

namespace qk::platform::memory {

/// A process-information object that tells the version it was given, or leaves it to the older way, and where the
/// program came from. Threads: any, at the same time.
class QK_EXPORT MemoryProcessInfo final : public ProcessInfo {
public:
    /// The object responds with `version`; with nothing it does not respond.
    void setOperatingSystemVersion(const std::optional<NSOperatingSystemVersion>& version);

    /// The older way answers `selector` with `number`; with nothing it does not answer.
    void setGestalt(GestaltSelector selector, std::optional<std::int32_t> number);

    /// The program came in that folder; it is not known in which until it is told.
    void setMainBundlePath(const NSString& path);

    /// The process has a class of that name, which came in the bundle at `path`.
    void addClass(const NSString& name, const NSString& path);

    [[nodiscard]] std::optional<NSOperatingSystemVersion> operatingSystemVersion() const override;
    [[nodiscard]] std::optional<std::int32_t> gestalt(GestaltSelector selector) const override;
    [[nodiscard]] NSString mainBundlePath() const override;
    [[nodiscard]] std::optional<NSString> bundlePathForClass(const NSString& name) const override;

private:
    mutable std::mutex mutex_;
    std::optional<NSOperatingSystemVersion> version_;
    std::map<GestaltSelector, std::int32_t> gestalt_;
    NSString mainBundlePath_;
    std::map<NSString, NSString> classes_; // paths of bundles by class
};

/// A host with the names it was given. Threads: any, at the same time.
class QK_EXPORT MemoryHost final : public Host {
public:
    void setUserName(const std::optional<NSString>& name);
    void setLocalizedName(const std::optional<NSString>& name);

    [[nodiscard]] std::optional<NSString> userName() const override;
    [[nodiscard]] std::optional<NSString> localizedName() const override;

private:
    mutable std::mutex mutex_;
    std::optional<NSString> userName_;
    std::optional<NSString> localizedName_;
};

} // namespace qk::platform::memory
