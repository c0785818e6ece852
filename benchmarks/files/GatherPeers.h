// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Other ways to the newest files below a folder. Each returns their paths, the newest first.
namespace qk::bench {

/// Moments and a path; the greatest ones are wanted.
struct Dated {
    double modified = 0;
    double accessed = 0;
    std::string path;
    friend auto operator<=>(const Dated&, const Dated&) = default;
};

/// Keeps the newest files in a heap with the oldest of them in front.
class Newest {
public:
    explicit Newest(std::size_t count) : count_(count) {}

    [[nodiscard]] bool wants(double modified, double accessed) const {
        return files_.size() < count_ ||
               std::pair(modified, accessed) > std::pair(files_.front().modified, files_.front().accessed);
    }
    void add(Dated file) {
        if (files_.size() == count_) {
            std::ranges::pop_heap(files_, std::ranges::greater());
            files_.pop_back();
        }
        files_.push_back(std::move(file));
        std::ranges::push_heap(files_, std::ranges::greater());
    }
    [[nodiscard]] std::vector<std::string> paths() {
        std::ranges::sort(files_, std::ranges::greater());
        std::vector<std::string> result;
        for (Dated& file : files_) {
            result.push_back(std::move(file.path));
        }
        return result;
    }

private:
    std::size_t count_;
    std::vector<Dated> files_;
};

std::vector<std::string> newestByHand(const std::string& root, std::size_t count);       // getdents64 and statx
std::vector<std::string> newestByFileSystem(const std::string& root, std::size_t count); // std::filesystem
std::vector<std::string> newestByNftw(const std::string& root, std::size_t count);
std::vector<std::string> newestByFts(const std::string& root, std::size_t count);
std::vector<std::string> newestByFind(const std::string& root, std::size_t count); // find, sort and head

} // namespace qk::bench
