// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FolderWalk.h"
#include "QKFoundation/platform/linux/MetadataGatherer.h"

#include <condition_variable>
#include <mutex>
#include <string_view>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kProgressStep = 10'000;

} // namespace

// One thread's part of a walk.
class MetadataGatherer::Visitor final : public FolderVisitor {
public:
    Visitor(MetadataGatherer& gatherer, std::optional<MetadataCandidate> horizon,
            std::function<void(std::size_t)> examined)
        : gatherer_(gatherer),
          types_(gatherer.types_),
          collector_(gatherer.order_, gatherer.most_, std::move(horizon)),
          examined_(std::move(examined)) {}

    void enter(std::string_view folder) override {
        folder_ = folder;
        used_ = gatherer_.usedDates_.folder(folder);
    }

    [[nodiscard]] bool wants(std::string_view name, FileKind kind) override {
        type_ = &types_.typeOf(name, kind);
        return type_->isWanted;
    }

    void visit(std::string_view name, FileKind /*kind*/, const FileDates& dates) override {
        double used = dates.accessed;
        if (used_ != nullptr) {
            if (const auto date = used_->find(name); date != used_->end()) {
                used = date->second;
            }
        }
        if (!collector_.mayTake(dates.modified, used)) {
            return;
        }
        MetadataCandidate candidate{.path = {}, .modified = dates.modified, .used = used, .type = type_};
        candidate.path.reserve(folder_.size() + 1 + name.size());
        candidate.path.append(folder_).append(folder_ == "/" ? "" : "/").append(name);
        if (gatherer_.meets(candidate)) {
            collector_.take(std::move(candidate));
        }
    }

    void examined(std::size_t entries) override { examined_(entries); }

    [[nodiscard]] MetadataCollector takeCollector() { return std::move(collector_); }

private:
    MetadataGatherer& gatherer_;
    MetadataContentTypes::Reader types_;
    MetadataCollector collector_;
    std::function<void(std::size_t)> examined_;
    std::string_view folder_;
    const MetadataUsedDates::Folder* used_ = nullptr;
    const MetadataContentType* type_ = nullptr;
};

// A walk that two threads may share. The second one may come at any time, also when all is over.
struct MetadataGatherer::Walk {
    Walk(std::vector<std::string> roots, std::optional<MetadataCandidate> itsHorizon, Progress itsProgress,
         const std::atomic<bool>& isCancelled)
        : folders(std::move(roots), isCancelled), horizon(std::move(itsHorizon)), progress(std::move(itsProgress)) {}

    void work(MetadataGatherer& gatherer) {
        Visitor visitor(gatherer, horizon, [this](std::size_t entries) { examined(entries); });
        folders.work(visitor);
        const std::scoped_lock lock(mutex);
        collectors.push_back(visitor.takeCollector());
    }

    void examined(std::size_t entries) {
        const std::size_t before = total.fetch_add(entries, std::memory_order_relaxed);
        if (progress != nullptr && before / kProgressStep != (before + entries) / kProgressStep) {
            progress(before + entries);
        }
    }

    bool enter() {
        const std::scoped_lock lock(mutex);
        helpers += isOver ? 0 : 1;
        return !isOver;
    }
    void leave() {
        const std::scoped_lock lock(mutex);
        --helpers;
        changed.notify_all();
    }
    void waitForHelpers() {
        std::unique_lock lock(mutex);
        isOver = true;
        changed.wait(lock, [this] { return helpers == 0; });
    }

    FolderWalk folders;
    const std::optional<MetadataCandidate> horizon;
    const Progress progress;
    std::atomic<std::size_t> total = 0;

    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    unsigned helpers = 0;
    bool isOver = false;
    std::vector<MetadataCollector> collectors;
};

std::vector<MetadataCollector> MetadataGatherer::walk(std::vector<std::string> roots,
                                                      std::optional<MetadataCandidate> horizon,
                                                      const Progress& progress) {
    const auto shared = std::make_shared<Walk>(std::move(roots), std::move(horizon), progress, isCancelled_);
    shared->folders.setHelp([this, shared = std::weak_ptr(shared)] {
        dispatch_->asyncOnBackgroundQueue([self = weak_from_this(), shared] {
            const std::shared_ptr<Walk> present = shared.lock();
            const std::shared_ptr<MetadataGatherer> gatherer = self.lock();
            if (present != nullptr && gatherer != nullptr && present->enter()) {
                present->work(*gatherer);
                present->leave();
            }
        });
    });
    shared->work(*this);
    shared->waitForHelpers();
    return std::move(shared->collectors);
}

} // namespace qk::platform
