// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/MetadataUsedDates.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/RecentlyUsedList.h"

#include <sys/stat.h>

#include <algorithm>

namespace qk::platform {
namespace {

std::pair<std::string_view, std::string_view> folderAndName(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) {
        return {{}, path};
    }
    return {slash == 0 ? path.substr(0, 1) : path.substr(0, slash), path.substr(slash + 1)};
}

void appendChanges(const TextMap<MetadataUsedDates::Folder>& before, const TextMap<MetadataUsedDates::Folder>& after,
                   bool withDates, std::vector<std::string>& changed) {
    for (const auto& [folder, files] : before) {
        const auto others = after.find(folder);
        for (const auto& [name, date] : files) {
            const auto* const other = others == after.end() ? nullptr : &others->second;
            const auto same = other == nullptr ? MetadataUsedDates::Folder::const_iterator() : other->find(name);
            const bool isThere = other != nullptr && same != other->end();
            if (!isThere || (withDates && same->second != date)) {
                std::string path = folder;
                changed.push_back(path.append(folder == "/" ? "" : "/").append(name));
            }
        }
    }
}

} // namespace

std::optional<MetadataUsedDates::Version> MetadataUsedDates::version() const {
    struct stat facts {};
    if (::stat(file_.c_str(), &facts) != 0) {
        return std::nullopt;
    }
    return Version{.inode = facts.st_ino,
                   .size = static_cast<std::uint64_t>(facts.st_size),
                   .seconds = facts.st_mtim.tv_sec,
                   .nanoseconds = static_cast<std::uint32_t>(facts.st_mtim.tv_nsec)};
}

std::vector<std::string> MetadataUsedDates::read() {
    const std::optional<Version> present = version();
    if (present == known_) {
        return {};
    }
    known_ = present;
    TextMap<Folder> folders;
    const std::optional<std::string> text = readBytes(file_, kRecentlyUsedListLimit);
    for (const RecentlyUsedFile& file : recentlyUsedFiles(text.value_or(""))) {
        const std::string path = root_ + file.path;
        const auto [folder, name] = folderAndName(path);
        double& date = folders[std::string(folder)].try_emplace(std::string(name), file.visited).first->second;
        date = std::max(date, file.visited);
    }
    std::vector<std::string> changed;
    appendChanges(folders_, folders, true, changed);
    appendChanges(folders, folders_, false, changed);
    folders_ = std::move(folders);
    return changed;
}

const MetadataUsedDates::Folder* MetadataUsedDates::folder(std::string_view path) const {
    const auto found = folders_.find(path);
    return found != folders_.end() ? &found->second : nullptr;
}

std::optional<double> MetadataUsedDates::dateOf(std::string_view path) const {
    const auto [parent, name] = folderAndName(path);
    const Folder* files = folder(parent);
    if (files == nullptr) {
        return std::nullopt;
    }
    const auto file = files->find(name);
    return file != files->end() ? std::optional(file->second) : std::nullopt;
}

} // namespace qk::platform
