// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/FileManager.h"

#include <utility>

namespace qk::platform {

/// Files and folders under `LinuxRoot`. "/System/Library/CoreServices/SystemVersion.plist" is no file here: its
/// dictionary is made of os-release (NAME, VERSION_ID and the build, each where there is one), and there is none
/// without an os-release.
class LinuxFileManager final : public FileManager {
public:
    explicit LinuxFileManager(LinuxRoot root = {}) : root_(std::move(root)) {}

    bool createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) override;
    [[nodiscard]] std::optional<std::vector<NSString>> contentsOfDirectoryAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<NSDictionary> dictionaryWithContentsOfFile(const NSString& path) const override;

private:
    [[nodiscard]] std::optional<NSDictionary> systemVersion() const;

    LinuxRoot root_;
};

} // namespace qk::platform
