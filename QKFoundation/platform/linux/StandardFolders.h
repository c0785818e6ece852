// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/Variables.h"
#include "QKFoundation/platform/services/SearchPaths.h"
#include "QKFoundation/platform/services/Users.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qk::platform {

/// The standard folders of the effective user, as the desktop's conventions place them. The environment is that of the
/// user who started the process, so it does not count while the effective user is another one. Paths in it that are not
/// absolute never count. Threads: any, at the same time.
class StandardFolders {
public:
    StandardFolders(LinuxRoot root, std::shared_ptr<const Users> users, Variables variables = processVariable);

    /// The home folder of the password entry; for a user without one $HOME, else "/".
    [[nodiscard]] std::string home() const;

    /// $TMPDIR, else "/tmp".
    [[nodiscard]] std::string temporary() const;

    /// The folders of `FileManager::searchPaths`: application support is $XDG_DATA_HOME, else ".local/share" of the
    /// home folder, and for everybody "/var/lib"; caches are $XDG_CACHE_HOME, else ".cache"; downloads are
    /// XDG_DOWNLOAD_DIR of "user-dirs.dirs" in $XDG_CONFIG_HOME, else ".config", and none without it.
    [[nodiscard]] std::vector<std::string> paths(NSSearchPathDirectory directory, NSSearchPathDomainMask domain) const;

private:
    [[nodiscard]] std::optional<std::string> variable(const char* name) const;
    [[nodiscard]] std::string folder(const char* variableName, const char* nameInHome) const;
    [[nodiscard]] std::optional<std::string> downloads() const;

    LinuxRoot root_;
    std::shared_ptr<const Users> users_;
    Variables variables_;
};

} // namespace qk::platform
