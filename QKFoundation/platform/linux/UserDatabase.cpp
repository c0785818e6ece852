// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/UserDatabase.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"

#include <grp.h>
#include <pwd.h>

#include <cerrno>
#include <cstddef>
#include <vector>

namespace qk::platform::userdatabase {
namespace {

constexpr std::size_t kFirstSize = 1024;
constexpr std::size_t kLargestSize = std::size_t{16} << 20U; // a group may list every user of a company

// The entry that `ask` finds, with its texts in `texts`, which grows until they fit; null when there is none.
template <typename Entry, typename Ask>
const Entry* look(Entry& entry, std::vector<char>& texts, Ask ask) {
    for (std::size_t size = kFirstSize; size <= kLargestSize; size *= 2) {
        texts.resize(size);
        Entry* found = nullptr;
        int error = 0;
        do {
            error = ask(&entry, texts.data(), texts.size(), &found);
        } while (error == EINTR);
        if (error != ERANGE) {
            return error == 0 ? found : nullptr;
        }
    }
    return nullptr;
}

} // namespace

std::optional<PasswordEntry> passwordEntry(std::uint32_t uid) {
    passwd entry{};
    std::vector<char> texts;
    const auto* found = look(entry, texts, [uid](passwd* into, char* buffer, std::size_t size, passwd** result) {
        return ::getpwuid_r(uid, into, buffer, size, result);
    });
    if (found == nullptr) {
        return std::nullopt;
    }
    PasswordEntry result;
    if (found->pw_name != nullptr) {
        result.name = found->pw_name;
    }
    result.uid = found->pw_uid;
    result.homeDirectory = stringWithFileSystemRepresentation(found->pw_dir != nullptr ? found->pw_dir : "");
    return result;
}

std::optional<GroupEntry> groupEntry(const std::string& name) {
    group entry{};
    std::vector<char> texts;
    const auto* found = look(entry, texts, [&name](group* into, char* buffer, std::size_t size, group** result) {
        return ::getgrnam_r(name.c_str(), into, buffer, size, result);
    });
    if (found == nullptr) {
        return std::nullopt;
    }
    GroupEntry result{name, {}};
    for (char** member = found->gr_mem; member != nullptr && *member != nullptr; ++member) {
        result.members.emplace_back(*member);
    }
    return result;
}

} // namespace qk::platform::userdatabase
