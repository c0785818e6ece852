// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/LinuxUsers.h"
#include "QKFoundation/platform/linux/StandardFolders.h"
#include "QKFoundation/platform/linux/Volumes.h"
#include "QKFoundation/platform/services/FileManager.h"

#include <memory>
#include <string>
#include <utility>

namespace qk::platform {

/// Files, folders and volumes under `LinuxRoot`; see `Volumes`, `StandardFolders`, "FileResources.h" and
/// "FileAttributes.h" for those.
/// "/System/Library/CoreServices/SystemVersion.plist" is no file here: its dictionary is made of os-release (NAME,
/// VERSION_ID and the build, each where there is one), and there is none without an os-release.
class LinuxFileManager final : public FileManager {
public:
    explicit LinuxFileManager(const LinuxRoot& root = {})
        : LinuxFileManager(root, StandardFolders(root, std::make_shared<LinuxUsers>(root))) {}
    LinuxFileManager(const LinuxRoot& root, StandardFolders folders)
        : root_(root), volumes_(root), folders_(std::move(folders)) {}

    bool createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) override;
    [[nodiscard]] bool fileExistsAtPath(const NSString& path, bool* isDirectory) const override;
    [[nodiscard]] std::optional<NSData> contentsAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<std::vector<NSString>> contentsOfDirectoryAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<NSDictionary> dictionaryWithContentsOfFile(const NSString& path) const override;
    [[nodiscard]] std::vector<NSURL> mountedVolumeURLs(bool skipHiddenVolumes) const override;
    [[nodiscard]] std::optional<NSDictionary> resourceValuesForKeys(const NSURL& url,
                                                                    const std::vector<NSString>& keys) const override;
    [[nodiscard]] NSString homeDirectory() const override;
    [[nodiscard]] NSString temporaryDirectory() const override;
    [[nodiscard]] std::vector<NSString> searchPaths(NSSearchPathDirectory directory,
                                                    NSSearchPathDomainMask domain) const override;
    /// The last part of the path: no name is shown without its extension here.
    [[nodiscard]] NSString displayNameAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<NSDictionary> attributesOfItemAtPath(const NSString& path) const override;
    bool setAttributes(const NSDictionary& attributes, const NSString& ofItemAtPath) override;
    [[nodiscard]] std::optional<std::size_t> getxattr(const NSString& path, const NSString& name, void* value,
                                                      std::size_t size) const override;

private:
    [[nodiscard]] std::optional<NSDictionary> systemVersion() const;
    /// The bytes of a path under the root; nothing for one that names no file.
    [[nodiscard]] std::optional<std::string> fileAt(const NSString& path) const;

    LinuxRoot root_;
    Volumes volumes_;
    StandardFolders folders_;
};

} // namespace qk::platform
