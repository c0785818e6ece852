// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qk::tests {

/// A new folder below the system's temporary one, gone at the end with all that it holds.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "qkfoundation-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("mkdtemp " + name);
        }
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::string path() const { return path_.string(); }
    [[nodiscard]] std::string path(std::string_view name) const { return (path_ / name).string(); }

    /// Writes a file, with the folders above it, and returns its path.
    std::string write(std::string_view name, std::string_view content) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file.string();
    }

private:
    std::filesystem::path path_;
};

} // namespace qk::tests
