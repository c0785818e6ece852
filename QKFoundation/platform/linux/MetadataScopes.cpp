// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/MetadataScopes.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

namespace qk::platform {
namespace {

std::string realPath(std::string path) {
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };
    if (const std::unique_ptr<char, Free> real(::realpath(path.c_str(), nullptr)); real != nullptr) {
        return real.get();
    }
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return path;
}

bool isSearched(std::string_view path, std::string_view scope) {
    // A hidden part of the way begins with "/.": what is before it is the scope.
    return isBelow(path, scope) && path.find("/.", scope == "/" ? 0 : scope.size()) == std::string_view::npos;
}

} // namespace

bool isBelow(std::string_view path, std::string_view folder) {
    if (folder == "/") {
        return path.size() > 1;
    }
    return path.size() > folder.size() && path[folder.size()] == '/' && path.starts_with(folder);
}

MetadataScopes::MetadataScopes(const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        if (folder.starts_with('/')) {
            folders_.push_back(realPath(folder));
        }
    }
    std::ranges::sort(folders_);
    folders_.erase(std::unique(folders_.begin(), folders_.end()), folders_.end());
    const std::vector<std::string> all = folders_;
    std::erase_if(folders_, [&all](const std::string& folder) {
        return std::ranges::any_of(all, [&folder](const std::string& other) { return isSearched(folder, other); });
    });
}

bool MetadataScopes::hold(std::string_view path) const {
    return std::ranges::any_of(folders_, [path](const std::string& folder) { return isSearched(path, folder); });
}

bool MetadataScopes::areAtOrBelow(std::string_view path) const {
    return std::ranges::any_of(folders_,
                               [path](const std::string& folder) { return folder == path || isBelow(folder, path); });
}

} // namespace qk::platform
