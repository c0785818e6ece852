// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FileManager.h"

#include <memory>
#include <utility>

namespace qk::tests {

/// Hands everything on to another file manager; tests override what they are about.
class ForwardingFileManager : public platform::FileManager {
public:
    explicit ForwardingFileManager(std::shared_ptr<platform::FileManager> next) : next_(std::move(next)) {}

    bool createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) override {
        return next_->createDirectoryAtPath(path, withIntermediateDirectories);
    }
    [[nodiscard]] bool fileExistsAtPath(const NSString& path, bool* isDirectory) const override {
        return next_->fileExistsAtPath(path, isDirectory);
    }
    [[nodiscard]] std::optional<NSData> contentsAtPath(const NSString& path) const override {
        return next_->contentsAtPath(path);
    }
    [[nodiscard]] std::optional<std::vector<NSString>> contentsOfDirectoryAtPath(const NSString& path) const override {
        return next_->contentsOfDirectoryAtPath(path);
    }
    [[nodiscard]] std::optional<NSDictionary> dictionaryWithContentsOfFile(const NSString& path) const override {
        return next_->dictionaryWithContentsOfFile(path);
    }
    [[nodiscard]] std::vector<NSURL> mountedVolumeURLs(bool skipHiddenVolumes) const override {
        return next_->mountedVolumeURLs(skipHiddenVolumes);
    }
    [[nodiscard]] std::optional<NSDictionary> resourceValuesForKeys(const NSURL& url,
                                                                    const std::vector<NSString>& keys) const override {
        return next_->resourceValuesForKeys(url, keys);
    }
    [[nodiscard]] NSString homeDirectory() const override { return next_->homeDirectory(); }
    [[nodiscard]] NSString temporaryDirectory() const override { return next_->temporaryDirectory(); }
    [[nodiscard]] std::vector<NSString> searchPaths(NSSearchPathDirectory directory,
                                                    NSSearchPathDomainMask domain) const override {
        return next_->searchPaths(directory, domain);
    }
    [[nodiscard]] NSString displayNameAtPath(const NSString& path) const override {
        return next_->displayNameAtPath(path);
    }
    [[nodiscard]] std::optional<NSDictionary> attributesOfItemAtPath(const NSString& path) const override {
        return next_->attributesOfItemAtPath(path);
    }
    bool setAttributes(const NSDictionary& attributes, const NSString& ofItemAtPath) override {
        return next_->setAttributes(attributes, ofItemAtPath);
    }
    [[nodiscard]] std::optional<std::size_t> getxattr(const NSString& path, const NSString& name, void* value,
                                                      std::size_t size) const override {
        return next_->getxattr(path, name, value, size);
    }

private:
    std::shared_ptr<platform::FileManager> next_;
};

} // namespace qk::tests
