// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FileManager.h"

#include <map>
#include <mutex>
#include <variant>

namespace qk::platform::memory {

/// A tree of files and folders in memory, with "/" in it from the start. Paths are absolute; a trailing "/" makes no
/// difference. Property lists stand in it as the dictionaries that they hold. Threads: any, at the same time.
class QK_EXPORT MemoryFileManager final : public FileManager {
public:
    MemoryFileManager();

    /// There is a folder at `path`, with the folders above it.
    void addDirectory(const NSString& path);

    /// There is a file with no particular content at `path`, with the folders above it.
    void addFile(const NSString& path);

    /// There is a property list at `path` that holds `dictionary`, with the folders above it.
    void addPropertyList(const NSString& path, const NSDictionary& dictionary);

    /// The folder or file at `path` is there but cannot be read.
    void denyReading(const NSString& path);

    /// What is at `path`, and below it, is gone.
    void remove(const NSString& path);

    /// Whether there is a folder at `path`.
    [[nodiscard]] bool isDirectory(const NSString& path) const;

    bool createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) override;
    [[nodiscard]] std::optional<std::vector<NSString>> contentsOfDirectoryAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<NSDictionary> dictionaryWithContentsOfFile(const NSString& path) const override;

private:
    struct Directory {};
    struct File {};
    struct Entry {
        std::variant<Directory, File, NSDictionary> content;
        bool readable = true;
    };
    [[nodiscard]] const Entry* entryAt(const NSString& path) const;
    bool createDirectories(const NSString& path);
    void add(const NSString& path, Entry entry);

    mutable std::mutex mutex_;
    std::map<NSString, Entry> entries_; // by path without trailing "/"
};

} // namespace qk::platform::memory
