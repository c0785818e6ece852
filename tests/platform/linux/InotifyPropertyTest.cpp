// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/linux/InotifyWatching.h"

#include <rapidcheck/gtest.h>

#include <iterator>
#include <set>

namespace qk::tests {
namespace {

using InotifyProperties = InotifyWatching;

// Whatever happens, and whatever of it is lost: what differs in the end has been told.
RC_GTEST_FIXTURE_PROP(InotifyProperties, WhatDiffersInTheEndHasBeenTold, ()) {
    remove("");
    makeFolder("a/b");
    makeFolder("c");
    const auto items = [this] {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path())) {
            found.insert(entry.path().string());
        }
        return found;
    };
    const std::set<std::string> before = items();
    watcher_.reset();
    told_.clear();
    watch();
    const auto folder = [] { return *rc::gen::elementOf(std::vector<std::string>{"", "a/", "a/b/", "c/", "a/b/x/"}); };
    const auto name = [&] { return folder() + *rc::gen::elementOf(std::vector<std::string>{"x", "y", "b"}); };
    const int steps = *rc::gen::inRange(0, 20);
    for (int step = 0; step < steps; ++step) {
        std::error_code ignored;
        const std::string item = name();
        switch (*rc::gen::inRange(0, 6)) {
        case 0: std::filesystem::create_directories(path(item), ignored); break;
        case 1: write(item); break;
        case 2: std::filesystem::remove_all(path(item), ignored); break;
        case 3:
            if (!std::filesystem::is_directory(path(item))) {
                std::filesystem::rename(path(item), path(name()), ignored);
            }
            break;
        case 4: kernel_->losesEvents = *rc::gen::arbitrary<bool>(); break;
        default: loop_->drain();
        }
    }
    serve();
    const std::set<std::string> after = items();
    std::set<std::string> differing;
    std::ranges::set_symmetric_difference(before, after, std::inserter(differing, differing.end()));
    for (const std::string& item : differing) {
        RC_ASSERT(told_.contains(item));
    }
    RC_ASSERT(watcher_->folderCount() ==
              1U + static_cast<std::size_t>(std::ranges::count_if(
                       after, [](const std::string& item) { return std::filesystem::is_directory(item); })));
}

} // namespace
} // namespace qk::tests
