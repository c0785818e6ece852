// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFileManager.h"

#include "QKFoundation/platform/linux/FileAttributes.h"
#include "QKFoundation/platform/linux/FileResources.h"
#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/OperatingSystem.h"
#include "QKFoundation/platform/linux/PropertyList.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/services/internal/FileResourceKeys.h"

#include <sys/stat.h>

#include <cerrno>
#include <string>

namespace qk::platform {
namespace {

constexpr std::size_t kContentsLimit = std::size_t{1} << 30U; // the largest file that is read whole, in bytes
constexpr mode_t kFolderMode = 0777;                          // cut down by the process's umask

bool isFolder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The folder above, without the "/" between; empty when there is none to make.
std::string parentOf(const std::string& path) {
    const std::size_t nameEnd = path.find_last_not_of('/');
    const std::size_t slash = nameEnd == std::string::npos ? nameEnd : path.rfind('/', nameEnd);
    const std::size_t parentEnd = slash == std::string::npos ? slash : path.find_last_not_of('/', slash);
    return parentEnd == std::string::npos ? std::string() : path.substr(0, parentEnd + 1);
}

// Whether the folder is there in the end; another process may make the same one at the same time.
bool makeFolders(const std::string& path) {
    std::vector<std::string> missing;
    for (std::string folder = path; !folder.empty() && !isFolder(folder); folder = parentOf(folder)) {
        missing.push_back(folder);
    }
    while (!missing.empty()) {
        if (::mkdir(missing.back().c_str(), kFolderMode) != 0 && errno != EEXIST) {
            return false;
        }
        missing.pop_back();
    }
    return isFolder(path);
}

} // namespace

bool LinuxFileManager::createDirectoryAtPath(const NSString& path, bool withIntermediateDirectories) {
    const std::optional<std::string> bytes = fileSystemRepresentation(path);
    if (!bytes.has_value() || bytes->empty()) {
        return false;
    }
    const std::string file = root_.path(*bytes);
    return withIntermediateDirectories ? makeFolders(file) : ::mkdir(file.c_str(), kFolderMode) == 0;
}

bool LinuxFileManager::fileExistsAtPath(const NSString& path, bool* isDirectory) const {
    const std::optional<std::string> bytes = fileSystemRepresentation(path);
    struct stat status {};
    if (!bytes.has_value() || bytes->empty() || ::stat(root_.path(*bytes).c_str(), &status) != 0) {
        return false;
    }
    if (isDirectory != nullptr) {
        *isDirectory = S_ISDIR(status.st_mode);
    }
    return true;
}

std::optional<NSData> LinuxFileManager::contentsAtPath(const NSString& path) const {
    const std::optional<std::string> bytes = fileSystemRepresentation(path);
    const std::optional<std::string> content =
        bytes.has_value() ? readBytes(root_.path(*bytes), kContentsLimit) : std::nullopt;
    return content.has_value() ? std::optional(NSData(*content)) : std::nullopt;
}

std::optional<std::vector<NSString>> LinuxFileManager::contentsOfDirectoryAtPath(const NSString& path) const {
    const std::optional<std::string> bytes = fileSystemRepresentation(path);
    if (!bytes.has_value()) {
        return std::nullopt;
    }
    const std::optional<std::vector<std::string>> entries = readDirectory(root_.path(*bytes));
    if (!entries.has_value()) {
        return std::nullopt;
    }
    std::vector<NSString> names;
    names.reserve(entries->size());
    for (const std::string& entry : *entries) {
        names.push_back(stringWithFileSystemRepresentation(entry));
    }
    return names;
}

std::optional<NSDictionary> LinuxFileManager::dictionaryWithContentsOfFile(const NSString& path) const {
    if (path == "/System/Library/CoreServices/SystemVersion.plist") {
        return systemVersion();
    }
    const std::optional<std::string> bytes = fileSystemRepresentation(path);
    if (!bytes.has_value()) {
        return std::nullopt;
    }
    const std::optional<std::string> content = readBytes(root_.path(*bytes), kPropertyListLimit);
    const std::optional<Value> list = content.has_value() ? propertyList(*content) : std::nullopt;
    const NSDictionary* dictionary = list.has_value() ? list->as<NSDictionary>() : nullptr;
    return dictionary != nullptr ? std::optional(*dictionary) : std::nullopt;
}

// What is no volume for people (proc, tmpfs, bind mounts) is not listed for programs either.
std::vector<NSURL> LinuxFileManager::mountedVolumeURLs(bool /*skipHiddenVolumes*/) const {
    std::vector<NSURL> urls;
    const auto table = volumes_.table(); // stays while it is walked, whatever is mounted meanwhile
    for (const Volume& volume : table->volumes) {
        urls.push_back(volume.url);
    }
    return urls;
}

std::optional<NSDictionary> LinuxFileManager::resourceValuesForKeys(const NSURL& url,
                                                                    const std::vector<NSString>& keys) const {
    if (!internal::haveFileKey(keys)) {
        return volumes_.resourceValues(url, keys);
    }
    const std::optional<NSString> path = url.isFileURL() ? url.path() : std::nullopt;
    const std::optional<std::string> bytes = path.has_value() ? fileSystemRepresentation(*path) : std::nullopt;
    if (!bytes.has_value() || bytes->empty()) {
        return std::nullopt;
    }
    std::optional<NSDictionary> values = fileresources::read(root_, *bytes, keys);
    if (!values.has_value() || !internal::haveVolumeKey(keys)) {
        return values;
    }
    NSMutableDictionary both(*values);
    both.addEntriesFromDictionary(volumes_.resourceValues(url, keys).value_or(NSDictionary()));
    return both.copy();
}

NSString LinuxFileManager::homeDirectory() const {
    return stringWithFileSystemRepresentation(folders_.home());
}

NSString LinuxFileManager::temporaryDirectory() const {
    return stringWithFileSystemRepresentation(folders_.temporary());
}

std::vector<NSString> LinuxFileManager::searchPaths(NSSearchPathDirectory directory,
                                                    NSSearchPathDomainMask domain) const {
    std::vector<NSString> paths;
    for (const std::string& path : folders_.paths(directory, domain)) {
        paths.push_back(stringWithFileSystemRepresentation(path));
    }
    return paths;
}

NSString LinuxFileManager::displayNameAtPath(const NSString& path) const {
    return path.lastPathComponent();
}

std::optional<NSDictionary> LinuxFileManager::attributesOfItemAtPath(const NSString& path) const {
    const std::optional<std::string> file = fileAt(path);
    return file.has_value() ? fileattributes::read(*file) : std::nullopt;
}

bool LinuxFileManager::setAttributes(const NSDictionary& attributes, const NSString& ofItemAtPath) {
    const std::optional<std::string> file = fileAt(ofItemAtPath);
    return file.has_value() && fileattributes::write(*file, attributes);
}

std::optional<std::size_t> LinuxFileManager::getxattr(const NSString& path, const NSString& name, void* value,
                                                      std::size_t size) const {
    const std::optional<std::string> file = fileAt(path);
    const std::optional<std::string> attribute = fileSystemRepresentation(name);
    return file.has_value() && attribute.has_value() ? fileattributes::extendedAttribute(*file, *attribute, value, size)
                                                     : std::nullopt;
}

std::optional<std::string> LinuxFileManager::fileAt(const NSString& path) const {
    const std::optional<std::string> bytes = fileSystemRepresentation(path);
    return bytes.has_value() && !bytes->empty() ? std::optional(root_.path(*bytes)) : std::nullopt;
}

std::optional<NSDictionary> LinuxFileManager::systemVersion() const {
    const std::optional<parse::Assignments> release = operatingsystem::release(root_);
    if (!release.has_value()) {
        return std::nullopt;
    }
    NSMutableDictionary dictionary;
    const auto add = [&dictionary](const NSString& key, const std::optional<std::string>& text) {
        if (text.has_value()) {
            dictionary.setObject(NSString::fromUTF8Lossy(*text), key);
        }
    };
    add("ProductName", operatingsystem::value(*release, "NAME"));
    add("ProductVersion", operatingsystem::value(*release, "VERSION_ID"));
    add("ProductBuildVersion", operatingsystem::build(root_));
    return dictionary.copy();
}

} // namespace qk::platform
