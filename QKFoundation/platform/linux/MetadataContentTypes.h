// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/FolderWalk.h"
#include "QKFoundation/platform/services/UniformTypes.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qk::platform {

/// What files of one kind are.
struct MetadataContentType {
    NSString identifier;
    NSArray tree;         ///< the identifier and all that it conforms to, each once
    bool isWanted = true; ///< what the search says of the type
};

struct TextHash {
    using is_transparent = void; // NOLINT(readability-identifier-naming): the standard library's
    [[nodiscard]] std::size_t operator()(std::string_view text) const noexcept {
        return std::hash<std::string_view>()(text);
    }
};
template <typename T>
using TextMap = std::unordered_map<std::string, T, TextHash, std::equal_to<>>;

/// The types of the files of one search, by their names; each extension is looked up once.
///
/// A folder is "public.folder", a link "public.symlink", whatever their names; there are no packages. A file with an
/// extension that nobody knows, or without one, is "public.data"; so are files with further ones when 4,096 different
/// extensions have been seen. Threads: any, at the same time.
class MetadataContentTypes {
public:
    /// `isWanted` fills in that of each type.
    MetadataContentTypes(std::shared_ptr<const UniformTypes> types,
                         std::function<bool(const MetadataContentType&)> isWanted);

    /// The type of what has that name. Lives as long as this.
    [[nodiscard]] const MetadataContentType& typeOf(std::string_view name, FileKind kind);

    /// The same for one thread, which remembers what it asked.
    class Reader {
    public:
        explicit Reader(MetadataContentTypes& types) : types_(types) {}
        [[nodiscard]] const MetadataContentType& typeOf(std::string_view name, FileKind kind);

    private:
        MetadataContentTypes& types_;
        TextMap<const MetadataContentType*> known_;
    };

private:
    [[nodiscard]] const MetadataContentType& typeOfExtension(std::string_view extension);
    [[nodiscard]] MetadataContentType make(const NSString& identifier) const;

    std::shared_ptr<const UniformTypes> types_;
    std::function<bool(const MetadataContentType&)> isWanted_;
    MetadataContentType folder_;
    MetadataContentType symbolicLink_;
    MetadataContentType data_;

    std::mutex mutex_; // guards what follows
    TextMap<std::unique_ptr<const MetadataContentType>> byExtension_;
};

} // namespace qk::platform
