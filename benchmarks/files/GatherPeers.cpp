// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/files/GatherPeers.h"

#include <dirent.h>
#include <fcntl.h>
#include <fts.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace qk::bench {
namespace {

constexpr double kNano = 1e-9;

double seconds(const statx_timestamp& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * kNano;
}
double seconds(const timespec& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * kNano;
}

// What has to be done at the least: each folder is read, each file is asked for its dates.
void listByHand(int folder, const std::string& path, Newest& newest) {
    constexpr std::size_t kSize = 65'536;
    const std::unique_ptr<char[]> buffer(new char[kSize]);
    std::vector<std::string> folders;
    for (ssize_t size = 0; (size = ::getdents64(folder, buffer.get(), kSize)) > 0;) {
        for (ssize_t at = 0; at < size;) {
            const auto* entry = reinterpret_cast<const dirent64*>(buffer.get() + at);
            at += entry->d_reclen;
            if (entry->d_name[0] == '.') {
                continue;
            }
            if (entry->d_type == DT_DIR) {
                folders.emplace_back(entry->d_name);
                continue;
            }
            struct statx facts {};
            if (::statx(folder, entry->d_name, AT_SYMLINK_NOFOLLOW, STATX_MTIME | STATX_ATIME, &facts) == 0) {
                const double modified = seconds(facts.stx_mtime);
                const double accessed = seconds(facts.stx_atime);
                if (newest.wants(modified, accessed)) {
                    newest.add({modified, accessed, path + "/" + entry->d_name});
                }
            }
        }
    }
    for (const std::string& name : folders) {
        const int child = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW);
        if (child >= 0) {
            listByHand(child, path + "/" + name, newest);
            ::close(child);
        }
    }
}

Newest* nftwNewest = nullptr; // nftw hands nothing through

int visit(const char* path, const struct stat* facts, int kind, FTW* /*place*/) {
    if (kind == FTW_F) {
        const double modified = seconds(facts->st_mtim);
        const double accessed = seconds(facts->st_atim);
        if (nftwNewest->wants(modified, accessed)) {
            nftwNewest->add({modified, accessed, path});
        }
    }
    return 0;
}

} // namespace

std::vector<std::string> newestByHand(const std::string& root, std::size_t count) {
    Newest newest(count);
    const int folder = ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    listByHand(folder, root, newest);
    ::close(folder);
    return newest.paths();
}

std::vector<std::string> newestByFileSystem(const std::string& root, std::size_t count) {
    Newest newest(count);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (entry.is_regular_file()) {
            const double modified = std::chrono::duration<double>(entry.last_write_time().time_since_epoch()).count();
            if (newest.wants(modified, 0)) {
                newest.add({modified, 0, entry.path().string()});
            }
        }
    }
    return newest.paths();
}

std::vector<std::string> newestByNftw(const std::string& root, std::size_t count) {
    constexpr int kDescriptors = 64;
    Newest newest(count);
    nftwNewest = &newest;
    ::nftw(root.c_str(), visit, kDescriptors, FTW_PHYS);
    return newest.paths();
}

std::vector<std::string> newestByFts(const std::string& root, std::size_t count) {
    Newest newest(count);
    std::string path = root;
    const std::array<char*, 2> roots{path.data(), nullptr};
    FTS* const tree = ::fts_open(roots.data(), FTS_PHYSICAL | FTS_NOCHDIR, nullptr);
    while (const FTSENT* entry = ::fts_read(tree)) {
        if (entry->fts_info == FTS_F) {
            const double modified = seconds(entry->fts_statp->st_mtim);
            const double accessed = seconds(entry->fts_statp->st_atim);
            if (newest.wants(modified, accessed)) {
                newest.add({modified, accessed, entry->fts_path});
            }
        }
    }
    ::fts_close(tree);
    return newest.paths();
}

std::vector<std::string> newestByFind(const std::string& root, std::size_t count) {
    const std::string command =
        "find '" + root + R"(' -type f -printf '%T@ %A@ %p\n' | LC_ALL=C sort -rn | head -n )" + std::to_string(count);
    std::vector<std::string> paths;
    FILE* const output = ::popen(command.c_str(), "r");
    constexpr std::size_t kLine = 8192;
    for (std::array<char, kLine> line{}; std::fgets(line.data(), kLine, output) != nullptr;) {
        std::string_view text(line.data());
        text.remove_suffix(text.ends_with('\n') ? 1 : 0);
        paths.emplace_back(text.substr(text.find('/')));
    }
    ::pclose(output);
    return paths;
}

} // namespace qk::bench
