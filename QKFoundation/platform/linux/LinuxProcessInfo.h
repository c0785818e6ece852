// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/ProcessInfo.h"

#include <utility>

namespace qk::platform {

/// The version of the distribution: VERSION_ID of os-release (`parse::versionTriple`), read afresh on each call.
/// Nothing without an os-release; a distribution without VERSION_ID is 0.0.0. And where the program lies.
class LinuxProcessInfo final : public ProcessInfo {
public:
    explicit LinuxProcessInfo(LinuxRoot root = {}) : root_(std::move(root)) {}

    [[nodiscard]] std::optional<NSOperatingSystemVersion> operatingSystemVersion() const override;
    /// Nothing also for a number that 32 bits do not hold.
    [[nodiscard]] std::optional<std::int32_t> gestalt(GestaltSelector selector) const override;
    /// The folder of the program that /proc/self/exe leads to.
    [[nodiscard]] NSString mainBundlePath() const override;
    /// Always nothing: no class comes in a bundle here.
    [[nodiscard]] std::optional<NSString> bundlePathForClass(const NSString& name) const override;

private:
    LinuxRoot root_;
};

} // namespace qk::platform
