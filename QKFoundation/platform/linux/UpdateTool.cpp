// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/UpdateTool.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

namespace qk::platform {
namespace {

// The folder of the file that holds this code.
std::optional<std::string> libraryFolder() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<const void*>(&locateUpdateTool), &info) == 0 || info.dli_fname == nullptr) {
        return std::nullopt;
    }
    const std::string_view file = info.dli_fname;
    const std::size_t slash = file.rfind('/');
    return slash != std::string_view::npos ? std::optional<std::string>(file.substr(0, slash)) : std::nullopt;
}

bool isProgram(const std::string& path) {
    return ::access(path.c_str(), X_OK) == 0;
}

} // namespace

std::optional<std::string> locateUpdateTool() {
    if (const char* chosen = ::secure_getenv("QK_SOFTWAREUPDATE"); chosen != nullptr && *chosen == '/') {
        return std::string(chosen);
    }
    if (const std::optional<std::string> folder = libraryFolder(); folder.has_value()) {
        // From the folder of the library to the folder of helper programs; then beside the library, as in a build tree.
        for (const std::string_view place :
             {"/" QK_LIBEXECDIR_FROM_LIBDIR "/qkfoundation/softwareupdate", "/qkfoundation/softwareupdate"}) {
            if (std::string path = *folder + std::string(place); isProgram(path)) {
                return path;
            }
        }
    }
    return std::nullopt;
}

} // namespace qk::platform
