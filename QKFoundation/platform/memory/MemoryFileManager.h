// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FileManager.h"
#include "QKFoundation/platform/services/Users.h"

#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <variant>

namespace qk::platform::memory {

/// A tree of files and folders in memory, with "/" in it from the start. Paths are absolute; a trailing "/" makes no
/// difference. Property lists that were added as such stand in it as the dictionaries that they hold, without bytes.
/// Threads: any, at the same time.
class QK_EXPORT MemoryFileManager final : public FileManager {
public:
    /// The home folder is that of the effective one of `users`; "/" without them.
    explicit MemoryFileManager(std::shared_ptr<const Users> users = nullptr);

    /// There is a folder at `path`, with the folders above it.
    void addDirectory(const NSString& path);

    /// There is a file with these bytes at `path`, with the folders above it.
    void addFile(const NSString& path, const NSData& contents = {});

    /// There is a property list at `path` that holds `dictionary`, with the folders above it.
    void addPropertyList(const NSString& path, const NSDictionary& dictionary);

    /// There is a symbolic link at `path`, with the folders above it, that leads to `destination`, absolute or relative
    /// to the folder of the link.
    void addSymbolicLink(const NSString& path, const NSString& destination);

    /// The folder or file at `path` is there but cannot be read.
    void denyReading(const NSString& path);

    /// What is at `path` has that resource value, or none; the key is one of files ("ResourceKeys.h"). Until it is told
    /// the kind is known, all may be read and written, folders may be executed, names with a leading dot are hidden,
    /// nothing is a package, and there are no dates.
    void setResourceValue(const NSString& path, const NSString& key, const std::optional<Value>& value);

    /// What is at `path`, and below it, is gone.
    void remove(const NSString& path);

    /// Whether there is a folder at `path`.
    [[nodiscard]] bool isDirectory(const NSString& path) const;

    /// There is a volume with these resource values at `path`, behind those that were added before; a hidden one is
    /// left out on request.
    void addVolume(const NSString& path, const NSDictionary& resourceValues, bool isHidden = false);

    /// There is a volume at `path` that is listed but cannot be asked for its values.
    void addUnreadableVolume(const NSString& path);

    /// The folders of that kind are these, whether they exist or not. "~" at the beginning of a path is the home folder
    /// of the effective user, when the folders are asked for.
    void setSearchPaths(NSSearchPathDirectory directory, NSSearchPathDomainMask domain,
                        const std::vector<NSString>& paths);

    /// The folder for temporary files; "/tmp" until it is told.
    void setTemporaryDirectory(const NSString& path);

    /// What is at `path` is shown as `name`; by the last part of the path until it is told.
    void setDisplayName(const NSString& path, const NSString& name);

    /// What is at `path` has such an extended attribute.
    void setExtendedAttribute(const NSString& path, const NSString& name, const NSData& value);

    /// What is at `path` was made at that moment; it is not known when until it is told.
    void setCreationDate(const NSString& path, const NSDate& date);

    /// The file system has no room for attributes from now on: there are none, and none can be set.
    void refuseAttributes();

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
    [[nodiscard]] NSString displayNameAtPath(const NSString& path) const override;
    [[nodiscard]] std::optional<NSDictionary> attributesOfItemAtPath(const NSString& path) const override;
    bool setAttributes(const NSDictionary& attributes, const NSString& ofItemAtPath) override;
    [[nodiscard]] std::optional<std::size_t> getxattr(const NSString& path, const NSString& name, void* value,
                                                      std::size_t size) const override;

private:
    struct Directory {};
    struct File {
        NSData contents;
    };
    struct Link {
        NSString destination;
    };
    struct Entry {
        std::variant<Directory, File, NSDictionary, Link> content;
        bool readable = true;
        std::map<NSString, NSData> extendedAttributes = {};
        std::optional<NSDate> creationDate = {};
        std::map<NSString, std::optional<Value>> resourceValues = {}; // as they were told
    };
    /// Without runs of "/" and without a trailing one, but for "/" itself.
    [[nodiscard]] static NSString normalized(const NSString& path);
    /// The same place without symbolic links; nothing when one of them leads nowhere or in a circle.
    [[nodiscard]] std::optional<NSString> resolved(const NSString& path) const;
    /// What `path` leads to when links are followed.
    [[nodiscard]] const Entry* targetOf(const NSString& path) const;
    [[nodiscard]] std::optional<NSDictionary> fileValues(const NSString& path, const std::vector<NSString>& keys) const;
    [[nodiscard]] std::optional<NSDictionary> volumeValues(const NSURL& url, const std::vector<NSString>& keys) const;
    [[nodiscard]] const Entry* entryAt(const NSString& path) const;
    [[nodiscard]] Entry* entryAt(const NSString& path);
    bool createDirectories(const NSString& path);
    void add(const NSString& path, Entry entry);

    struct Volume {
        NSURL url;
        std::optional<NSDictionary> values; // nothing when it cannot be asked
        bool isHidden = false;
    };
    void mount(const NSString& path, std::optional<NSDictionary> values, bool isHidden);

    using SearchPaths = std::pair<NSSearchPathDirectory, NSSearchPathDomainMask>;

    const std::shared_ptr<const Users> users_;
    mutable std::mutex mutex_;
    std::map<SearchPaths, std::vector<NSString>> searchPaths_;
    std::map<NSString, NSString> displayNames_; // by path without trailing "/"
    NSString temporaryDirectory_ = "/tmp";
    bool hasAttributes_ = true;
    std::vector<Volume> volumes_;
    std::map<NSString, Entry> entries_; // by path without trailing "/"
};

} // namespace qk::platform::memory
