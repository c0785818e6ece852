// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/StandardFolders.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/UserDirectories.h"

#include <utility>

namespace qk::platform {
namespace {

std::optional<std::string> absolute(std::optional<std::string> path) {
    if (!path.has_value() || !path->starts_with('/')) {
        return std::nullopt;
    }
    while (path->size() > 1 && path->ends_with('/')) {
        path->pop_back();
    }
    return path;
}

std::string below(const std::string& folder, std::string_view name) {
    return (folder == "/" ? folder : folder + "/") + std::string(name);
}

} // namespace

StandardFolders::StandardFolders(LinuxRoot root, std::shared_ptr<const Users> users, Variables variables)
    : root_(std::move(root)), users_(std::move(users)), variables_(std::move(variables)) {}

std::optional<std::string> StandardFolders::variable(const char* name) const {
    const bool isOfThisUser = users_->geteuid() == users_->getuid();
    return isOfThisUser ? absolute(variables_(name)) : std::nullopt;
}

std::string StandardFolders::home() const {
    const std::optional<PasswordEntry> entry = users_->getpwuid(users_->geteuid());
    std::optional<std::string> path =
        entry.has_value() ? absolute(fileSystemRepresentation(entry->homeDirectory)) : std::nullopt;
    return path.has_value() ? *std::move(path) : variable("HOME").value_or("/");
}

std::string StandardFolders::temporary() const {
    return variable("TMPDIR").value_or("/tmp");
}

std::string StandardFolders::folder(const char* variableName, const char* nameInHome) const {
    std::optional<std::string> path = variable(variableName);
    return path.has_value() ? *std::move(path) : below(home(), nameInHome);
}

std::optional<std::string> StandardFolders::downloads() const {
    const std::string list = below(folder("XDG_CONFIG_HOME", ".config"), "user-dirs.dirs");
    const std::optional<std::string> text = readBytes(root_.path(list));
    return text.has_value() ? parse::userDirectory(*text, "XDG_DOWNLOAD_DIR", home()) : std::nullopt;
}

std::vector<std::string> StandardFolders::paths(NSSearchPathDirectory directory, NSSearchPathDomainMask domain) const {
    using enum NSSearchPathDirectory;
    using enum NSSearchPathDomainMask;
    if (domain == NSSystemDomainMask) {
        return directory == NSApplicationSupportDirectory ? std::vector<std::string>{"/var/lib"}
                                                          : std::vector<std::string>();
    }
    if (domain != NSUserDomainMask) {
        return {};
    }
    switch (directory) {
    case NSApplicationSupportDirectory: return {folder("XDG_DATA_HOME", ".local/share")};
    case NSCachesDirectory: return {folder("XDG_CACHE_HOME", ".cache")};
    case NSDownloadsDirectory:
        if (std::optional<std::string> path = downloads(); path.has_value()) {
            return {*std::move(path)};
        }
    }
    return {};
}

} // namespace qk::platform
