// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {

/// The folders of one search. Everything below them is searched but what begins with a dot and what is below that.
/// Threads: any, at the same time.
class MetadataScopes {
public:
    /// Real paths are taken of those that exist. Of scopes within each other the outer one is enough, unless something
    /// hidden lies between them.
    explicit MetadataScopes(const std::vector<std::string>& folders);

    [[nodiscard]] const std::vector<std::string>& folders() const noexcept { return folders_; }

    /// Whether what lies at that path is searched; a scope itself is not.
    [[nodiscard]] bool hold(std::string_view path) const;

    /// Whether a scope is at that path or below it.
    [[nodiscard]] bool areAtOrBelow(std::string_view path) const;

private:
    std::vector<std::string> folders_;
};

/// Whether `path` lies below `folder`; both are absolute and without a trailing "/", but for "/".
[[nodiscard]] bool isBelow(std::string_view path, std::string_view folder);

} // namespace qk::platform
