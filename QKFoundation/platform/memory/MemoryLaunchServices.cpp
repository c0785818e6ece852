// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryLaunchServices.h"

#include <algorithm>
#include <set>

namespace qk::platform::memory {
namespace {

NSString lowerCased(const NSString& identifier) {
    std::u16string units(identifier.units());
    std::ranges::transform(units, units.begin(), [](char16_t unit) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
    });
    return NSString(units);
}

} // namespace

void MemoryLaunchServices::setStatus(std::int32_t status) {
    const std::scoped_lock lock(mutex_);
    status_ = status;
}

std::vector<NSURL> MemoryLaunchServices::openedURLs() const {
    const std::scoped_lock lock(mutex_);
    return opened_;
}

std::int32_t MemoryLaunchServices::openURL(const NSURL& url) {
    const std::scoped_lock lock(mutex_);
    opened_.push_back(url);
    return status_;
}

void MemoryUniformTypes::declareType(const NSString& type, const std::vector<NSString>& conformsTo) {
    std::vector<NSString> parents(conformsTo.size());
    std::ranges::transform(conformsTo, parents.begin(), lowerCased);
    const std::scoped_lock lock(mutex_);
    declared_[lowerCased(type)] = std::move(parents);
}

void MemoryUniformTypes::setTypesForExtension(const NSString& extension, const std::vector<NSString>& types) {
    const std::scoped_lock lock(mutex_);
    types_[lowerCased(extension)] = types;
}

void MemoryUniformTypes::setDescription(const NSString& type, const NSString& description) {
    const std::scoped_lock lock(mutex_);
    descriptions_[lowerCased(type)] = description;
}

void MemoryUniformTypes::setDeclaration(const NSString& type, const NSDictionary& declaration) {
    const std::scoped_lock lock(mutex_);
    declarations_[lowerCased(type)] = declaration;
}

std::size_t MemoryUniformTypes::conformanceRequests() const {
    const std::scoped_lock lock(mutex_);
    return conformanceRequests_;
}

std::vector<NSString> MemoryUniformTypes::typesForExtension(const NSString& extension) const {
    const std::scoped_lock lock(mutex_);
    const auto found = types_.find(lowerCased(extension));
    return found != types_.end() ? found->second : std::vector<NSString>();
}

std::optional<NSString> MemoryUniformTypes::descriptionOfType(const NSString& type) const {
    const std::scoped_lock lock(mutex_);
    const auto found = descriptions_.find(lowerCased(type));
    return found != descriptions_.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<NSDictionary> MemoryUniformTypes::declarationOfType(const NSString& type) const {
    const std::scoped_lock lock(mutex_);
    const auto found = declarations_.find(lowerCased(type));
    return found != declarations_.end() ? std::optional(found->second) : std::nullopt;
}

bool MemoryUniformTypes::typeConformsTo(const NSString& type, const NSString& conformsTo) const {
    const NSString wanted = lowerCased(conformsTo);
    const std::scoped_lock lock(mutex_);
    ++conformanceRequests_;
    std::set<NSString> seen;
    std::vector<NSString> open = {lowerCased(type)};
    while (!open.empty()) {
        const NSString current = open.back();
        open.pop_back();
        if (current == wanted) {
            return true;
        }
        const auto found = declared_.find(current);
        if (seen.insert(current).second && found != declared_.end()) {
            open.insert(open.end(), found->second.begin(), found->second.end());
        }
    }
    return false;
}

} // namespace qk::platform::memory
