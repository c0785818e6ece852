// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/Volumes.h"
#include "QKFoundation/platform/services/FileManager.h"

namespace qk::platform {

/// Files, folders and volumes under `LinuxRoot`; see `Volumes` for those.
/// "/System/Library/CoreServices/SystemVersion.plist" is no file here: its dictionary is made of os-release (NAME,
/// VERSION_ID and the build, each where there is one), and there is none without an os-release.
class LinuxFileManager final : public FileManager {
public:
    explicit LinuxFileManager(const LinuxRoot& root = {}) : root_(root), volumes_(root) {}

    bool createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) override;
    [[nodiscard]] bool fileExistsAtPath(const NSString& path, bool* isDirectory) const override;
    [[nodiscard]] std::optional<NSData> contentsAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<std::vector<NSString>> contentsOfDirectoryAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<NSDictionary> dictionaryWithContentsOfFile(const NSString& path) const override;
    [[nodiscard]] std::vector<NSURL> mountedVolumeURLs(bool skipHiddenVolumes) const override;
    [[nodiscard]] std::optional<NSDictionary> resourceValuesForKeys(const NSURL& url,
                                                                    const std::vector<NSString>& keys) const override;

private:
    [[nodiscard]] std::optional<NSDictionary> systemVersion() const;

    LinuxRoot root_;
    Volumes volumes_;
};

} // namespace qk::platform
