// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FanotifyTrees.h"

#include "QKFoundation/platform/linux/LinuxFileEventFolder.h"

#include <linux/fanotify.h>

#include <algorithm>

namespace qk::platform {
namespace {

constexpr std::size_t kMostKnown = 16'384;
constexpr std::size_t kMostWaiting = 262'144; // events

// Nothing tells two folders apart but these bytes.
std::string keyOf(const parse::FileIdentity& identity) {
    std::string key;
    if (identity.isPresent) {
        key.append(reinterpret_cast<const char*>(&identity.fileSystem), sizeof identity.fileSystem);
        key.append(reinterpret_cast<const char*>(&identity.type), sizeof identity.type);
        key.append(identity.handle);
    }
    return key;
}

bool renamesFolder(const parse::FanotifyEvent& event) {
    return (event.mask & FAN_ONDIR) != 0 && (event.mask & (FAN_MOVED_FROM | FAN_MOVED_TO)) != 0;
}

} // namespace

bool FanotifyTrees::isWatched(std::string_view path) const {
    return std::ranges::any_of(roots_, [&](const std::string& root) { return isAtOrBelow(path, root); });
}

bool FanotifyTrees::take(const std::vector<parse::FanotifyEvent>& events, const Taker& told) {
    // All these folders have their new names already, so what is known under the old ones goes first.
    if (std::ranges::any_of(events, renamesFolder) || known_.size() > kMostKnown) {
        known_.clear();
    }
    bool isWhole = true;
    for (const parse::FanotifyEvent& event : events) {
        isWhole = (!event.folder.isPresent || takeOne(event, told)) && isWhole;
    }
    return isWhole;
}

bool FanotifyTrees::takeOne(const parse::FanotifyEvent& event, const Taker& told) {
    const std::string key = keyOf(event.folder);
    const bool removesFolder = (event.mask & FAN_ONDIR) != 0 && (event.mask & FAN_DELETE) != 0;
    Waiting waiting{std::string(event.name), event.mask, removesFolder ? keyOf(event.target) : std::string()};
    if (const std::string* const folder = pathOf(event.folder, key); folder != nullptr) {
        if (!folder->empty() || removesFolder) {
            tell(std::string(*folder), std::move(waiting), told); // a copy: what is known changes
        }
        return true;
    }
    const bool hasRoom = waitingEvents_ < kMostWaiting;
    if (!hasRoom) {
        forgetWaiting();
    }
    waiting_[key].push_back(std::move(waiting));
    ++waitingEvents_;
    return hasRoom;
}

// Null for a folder that is gone and was never known; "" for one that is out of reach.
const std::string* FanotifyTrees::pathOf(const parse::FileIdentity& folder, const std::string& key) {
    const auto found = known_.find(key);
    if (found != known_.end()) {
        return &found->second;
    }
    auto path = find_(folder);
    if (!path.has_value()) {
        return nullptr;
    }
    const bool isNear = isWatched(*path) || std::ranges::any_of(roots_, [&](const std::string& root) {
                            return folderAbove(root) == *path;
                        });
    return &known_.emplace(key, isNear ? *std::move(path) : std::string()).first->second;
}

// Once it is known where a removed folder was, so is what was in it, and so on downwards. What is out of reach ("") is
// not told.
void FanotifyTrees::tell(const std::string& folder, Waiting first, const Taker& told) {
    std::vector<std::pair<std::string, Waiting>> known;
    known.emplace_back(folder, std::move(first));
    for (std::size_t at = 0; at < known.size(); ++at) {
        const auto [parent, event] = std::move(known[at]);
        const bool isFolder = parent.empty() || event.name.empty() || event.name == ".";
        std::string path = isFolder ? parent : joinPath(parent, event.name);
        if (!event.target.empty()) {
            known_.insert_or_assign(event.target, path);
            for (Waiting& waiting : takeWaiting(event.target)) {
                known.emplace_back(path, std::move(waiting));
            }
        }
        if (isWatched(path)) {
            told(std::move(path), event.mask);
        }
    }
}

std::vector<FanotifyTrees::Waiting> FanotifyTrees::takeWaiting(const std::string& folder) {
    auto waiting = waiting_.extract(folder);
    if (waiting.empty()) {
        return {};
    }
    waitingEvents_ -= waiting.mapped().size();
    return std::move(waiting.mapped());
}

} // namespace qk::platform
