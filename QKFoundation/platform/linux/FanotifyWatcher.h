// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/FanotifyTrees.h"
#include "QKFoundation/platform/linux/LinuxFileEventWatcher.h"
#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {

/// Watches the file systems that the trees are on, whole, and tells what happens in the trees. Nothing is listed and
/// nothing is kept for a folder in which nothing happens.
///
/// The queue has no limit of its own. When the kernel loses events all the same, the roots are told as such, and then
/// what lies below them and has been made or changed since, by its dates; what was removed is not known.
class FanotifyWatcher final : public LinuxFileEventWatcher {
public:
    FanotifyWatcher(std::shared_ptr<LinuxRunLoop> loop, std::vector<std::string> roots, FileEventTeller tell);
    ~FanotifyWatcher() override;

    /// Once. False when the kernel refuses any of it.
    [[nodiscard]] bool start();

    void windowEnds() override { trees_.forgetWaiting(); }
    [[nodiscard]] std::int64_t quietSince() const override { return quietSince_; }

    /// What the kernel says when it has lost events.
    void recover();

private:
    [[nodiscard]] bool watchFileSystem(const std::string& path);
    [[nodiscard]] bool findsAgain(const std::string& path);
    [[nodiscard]] std::optional<std::string> find(const parse::FileIdentity& folder);
    [[nodiscard]] std::optional<std::string> notFound(int error);
    void readEvents();
    void take(const std::vector<parse::FanotifyEvent>& events);
    void goOn();
    std::size_t lookThrough(const std::string& path);

    const std::shared_ptr<LinuxRunLoop> loop_;
    const std::vector<std::string> roots_;
    const FileEventTeller tell_;
    UniqueFD group_;
    std::unique_ptr<RunLoopSource> source_;
    std::vector<std::byte> buffer_;
    FanotifyTrees trees_;
    // By the number of the file system: a folder on it, and while events are read that folder's descriptor. It is not
    // kept open, since nobody could unmount the file system then.
    struct FileSystem {
        std::string folder;
        UniqueFD opened;
    };
    std::map<std::uint64_t, FileSystem> fileSystems_;
    bool lacksMeans_ = false; // a folder could not be found for want of descriptors or memory
    std::int64_t quietSince_ = 0;
    std::int64_t changedSince_ = 0;
    std::vector<std::string> pending_; // folders to look through
    bool isGoingOn_ = false;
    std::shared_ptr<const bool> token_ = std::make_shared<const bool>(true); // lives as long as this does
};

} // namespace qk::platform
