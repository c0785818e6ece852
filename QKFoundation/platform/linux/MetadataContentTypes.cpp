// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/MetadataContentTypes.h"

#include "QKFoundation/platform/linux/DynamicTypes.h"
#include "QKFoundation/platform/linux/UniformTypeTable.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kMostExtensions = 4096;
constexpr std::size_t kLongestExtension = 64;

// Without its dot; "" when there is none.
std::string_view extensionOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

std::vector<NSString> parentsOf(const UniformTypes& types, const NSString& type) {
    std::vector<NSString> parents;
    if (const std::optional<NSDictionary> declaration = types.declarationOfType(type); declaration.has_value()) {
        const auto* list = declaration->get<NSArray>("UTTypeConformsTo");
        for (const Value& parent : list != nullptr ? list->values() : std::span<const Value>()) {
            if (const auto* text = parent.as<NSString>(); text != nullptr) {
                parents.push_back(*text);
            }
        }
        return parents;
    }
    const std::string identifier = types::lowerCased(type.utf8Lossy());
    if (types::isDynamic(identifier)) {
        for (const std::string_view parent : types::dynamicConformance(identifier)) {
            parents.push_back(NSString::fromUTF8Lossy(parent));
        }
    }
    return parents;
}

} // namespace

MetadataContentTypes::MetadataContentTypes(std::shared_ptr<const UniformTypes> types,
                                           std::function<bool(const MetadataContentType&)> isWanted)
    : types_(std::move(types)),
      isWanted_(std::move(isWanted)),
      folder_(make("public.folder")),
      symbolicLink_(make("public.symlink")),
      data_(make("public.data")) {}

MetadataContentType MetadataContentTypes::make(const NSString& identifier) const {
    std::vector<NSString> tree{identifier};
    for (std::size_t next = 0; next < tree.size(); ++next) {
        for (NSString& parent : parentsOf(*types_, tree[next])) {
            if (std::ranges::find(tree, parent) == tree.end()) {
                tree.push_back(std::move(parent));
            }
        }
    }
    MetadataContentType type{.identifier = identifier, .tree = NSArray(tree)};
    type.isWanted = isWanted_(type);
    return type;
}

const MetadataContentType& MetadataContentTypes::typeOf(std::string_view name, FileKind kind) {
    switch (kind) {
    case FileKind::folder: return folder_;
    case FileKind::symbolicLink: return symbolicLink_;
    case FileKind::file: break;
    }
    return typeOfExtension(extensionOf(name));
}

const MetadataContentType& MetadataContentTypes::typeOfExtension(std::string_view extension) {
    if (extension.empty() || extension.size() > kLongestExtension) {
        return data_;
    }
    const std::scoped_lock lock(mutex_);
    if (const auto known = byExtension_.find(extension); known != byExtension_.end()) {
        return known->second != nullptr ? *known->second : data_;
    }
    if (byExtension_.size() >= kMostExtensions) {
        return data_;
    }
    std::unique_ptr<const MetadataContentType> type;
    if (const std::optional<NSString> text = NSString::fromUTF8(extension); text.has_value()) {
        if (const std::vector<NSString> found = types_->typesForExtension(*text); !found.empty()) {
            type = std::make_unique<const MetadataContentType>(make(found.front()));
        }
    }
    const auto& kept = byExtension_.emplace(extension, std::move(type)).first->second;
    return kept != nullptr ? *kept : data_;
}

const MetadataContentType& MetadataContentTypes::Reader::typeOf(std::string_view name, FileKind kind) {
    if (kind != FileKind::file) {
        return types_.typeOf(name, kind);
    }
    const std::string_view extension = extensionOf(name);
    if (const auto known = known_.find(extension); known != known_.end()) {
        return *known->second;
    }
    const MetadataContentType& type = types_.typeOf(name, kind);
    if (known_.size() < kMostExtensions) {
        known_.emplace(extension, &type);
    }
    return type;
}

} // namespace qk::platform
