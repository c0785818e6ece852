// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FileManager.h"

#include <map>
#include <mutex>
#include <variant>

namespace qk::platform::memory {

/// A tree of files and folders in memory, with "/" in it from the start. Paths are absolute; a trailing "/" makes no
/// difference. Property lists that were added
/// as such stand in it as the dictionaries that they hold, without bytes. Threads: any, at the same time.
class QK_EXPORT MemoryFileManager final : public FileManager {
public:
    MemoryFileManager();

    /// There is a folder at `path`, with the folders above it.
    void addDirectory(const NSString& path);

    /// There is a file with these bytes at `path`, with the folders above it.
    void addFile(const NSString& path, const NSData& contents = {});

    /// There is a property list at `path` that holds `dictionary`, with the folders above it.
    void addPropertyList(const NSString& path, const NSDictionary& dictionary);

    /// The folder or file at `path` is there but cannot be read.
    void denyReading(const NSString& path);

    /// What is at `path`, and below it, is gone.
    void remove(const NSString& path);

    /// Whether there is a folder at `path`.
    [[nodiscard]] bool isDirectory(const NSString& path) const;

    /// There is a volume with these resource values at `path`, behind those that were added before; a hidden one is
    /// left out on request.
    void addVolume(const NSString& path, const NSDictionary& resourceValues, bool isHidden = false);

    /// There is a volume at `path` that is listed but cannot be asked for its values.
    void addUnreadableVolume(const NSString& path);

    bool createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) override;
    [[nodiscard]] bool fileExistsAtPath(const NSString& path, bool* isDirectory) const override;
    [[nodiscard]] std::optional<NSData> contentsAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<std::vector<NSString>> contentsOfDirectoryAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<NSDictionary> dictionaryWithContentsOfFile(const NSString& path) const override;
    [[nodiscard]] std::vector<NSURL> mountedVolumeURLs(bool skipHiddenVolumes) const override;
    [[nodiscard]] std::optional<NSDictionary> resourceValuesForKeys(const NSURL& url,
                                                                    const std::vector<NSString>& keys) const override;

private:
    struct Directory {};
    struct File {
        NSData contents;
    };
    struct Entry {
        std::variant<Directory, File, NSDictionary> content;
        bool readable = true;
    };
    [[nodiscard]] const Entry* entryAt(const NSString& path) const;
    bool createDirectories(const NSString& path);
    void add(const NSString& path, Entry entry);

    struct Volume {
        NSURL url;
        std::optional<NSDictionary> values; // nothing when it cannot be asked
        bool isHidden = false;
    };
    void mount(const NSString& path, std::optional<NSDictionary> values, bool isHidden);

    mutable std::mutex mutex_;
    std::vector<Volume> volumes_;
    std::map<NSString, Entry> entries_; // by path without trailing "/"
};

} // namespace qk::platform::memory
