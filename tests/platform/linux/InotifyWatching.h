// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/InotifyWatcher.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/linux/Waiting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qk::tests {

/// The kernel's inotify, which can be told to have no room.
class NarrowInotify final : public platform::InotifyKernel {
public:
    int makeInstance() override { return hasInstances ? InotifyKernel::makeInstance() : -1; }
    int addWatch(int instance, const char* path, std::uint32_t mask) override {
        if (watchesLeft <= 0) {
            errno = ENOSPC;
            return -1;
        }
        if (path == unreadable) {
            errno = EACCES;
            return -1;
        }
        const int watch = InotifyKernel::addWatch(instance, path, mask);
        const int error = errno;
        watchesLeft -= watch >= 0 ? 1 : 0;
        whenWatched(path);
        errno = error;
        return watch;
    }
    void removeWatch(int instance, int watch) override {
        ++removals;
        InotifyKernel::removeWatch(instance, watch);
    }
    ssize_t read(int instance, std::span<std::byte> bytes) override {
        if (!losesEvents) {
            return InotifyKernel::read(instance, bytes.first(std::min(bytes.size(), readAtMost)));
        }
        losesEvents = false;
        while (InotifyKernel::read(instance, bytes) > 0) {
        }
        const inotify_event lost{-1, IN_Q_OVERFLOW, 0, 0};
        std::memcpy(bytes.data(), &lost, sizeof lost);
        return sizeof lost;
    }

    bool hasInstances = true;
    int watchesLeft = 1'000'000;
    int removals = 0;
    std::string unreadable;                         ///< a path for which there is no watch to be had
    std::size_t readAtMost = std::size_t{1} << 20U; ///< bytes in one call
    bool losesEvents = false;                       ///< those that are waiting when the queue is read next
    std::function<void(const std::string& path)> whenWatched = [](const std::string&) {};
};

/// A folder that is watched, what is told about it, and what is in it.
class InotifyWatching : public testing::Test {
protected:
    using Flags = platform::FSEventStreamEventFlags;

    void watch(const std::vector<std::string>& names = {""}, const platform::InotifyWatcher::Limits& limits = {}) {
        std::vector<std::string> roots;
        for (const std::string& name : names) {
            roots.push_back(path(name));
        }
        watcher_ = std::make_unique<platform::InotifyWatcher>(
            loop_, [this](std::string item, Flags flags) { note(std::move(item), flags); }, kernel_, limits);
        ASSERT_TRUE(watcher_->start(roots));
    }
    std::string path(const std::string& name = "") const {
        const std::string folder = std::filesystem::canonical(folder_.path()).string() + "/top";
        return name.empty() ? folder : folder + "/" + name;
    }
    void makeFolder(const std::string& name) const { std::filesystem::create_directories(path(name)); }
    void write(const std::string& name) const { std::ofstream(path(name), std::ios::app) << "content"; }
    void remove(const std::string& name) const { std::filesystem::remove_all(path(name)); }
    void move(const std::string& from, const std::string& to) const { std::filesystem::rename(path(from), path(to)); }

    /// Serves all that is there, as one window.
    void serve() {
        ASSERT_TRUE(comesToRest(*loop_));
        watcher_->windowEnds();
    }
    void loseEvents() {
        kernel_->losesEvents = true;
        serve();
    }

    /// What was told of an item since the last call for it, without the marks that only the stream sees.
    Flags told(const std::string& name = "") {
        const auto found = told_.extract(path(name));
        return found.empty() ? 0 : found.mapped() & 0x0FFFFFFF;
    }
    bool isQuiet() const { return told_.empty(); }

    tests::TemporaryFolder folder_;
    const std::shared_ptr<platform::LinuxRunLoop> loop_ = platform::LinuxRunLoop::make();
    const std::shared_ptr<NarrowInotify> kernel_ = std::make_shared<NarrowInotify>();
    std::unique_ptr<platform::InotifyWatcher> watcher_;
    std::map<std::string, Flags> told_;
    std::map<std::string, int> creations_; ///< how often an item was told as created

    void SetUp() override { makeFolder(""); }

private:
    void note(std::string item, Flags flags) {
        if ((flags & platform::kFSEventStreamEventFlagItemCreated) != 0) {
            ++creations_[item];
        }
        told_[std::move(item)] |= flags;
    }
};

inline constexpr auto kCreated = platform::kFSEventStreamEventFlagItemCreated;
inline constexpr auto kRemoved = platform::kFSEventStreamEventFlagItemRemoved;
inline constexpr auto kRenamed = platform::kFSEventStreamEventFlagItemRenamed;
inline constexpr auto kModified = platform::kFSEventStreamEventFlagItemModified;
inline constexpr auto kIsDir = platform::kFSEventStreamEventFlagItemIsDir;
inline constexpr auto kMustScan = platform::kFSEventStreamEventFlagMustScanSubDirs;
inline constexpr auto kKernelDropped = platform::kFSEventStreamEventFlagKernelDropped;
inline constexpr auto kUserDropped = platform::kFSEventStreamEventFlagUserDropped;

} // namespace qk::tests
