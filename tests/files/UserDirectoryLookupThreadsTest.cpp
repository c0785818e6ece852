// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+UserDirectoryLookup.h"
#include "QKFoundation/files/internal/StandardPaths.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/files/ForwardingFileManager.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace qk {
namespace {

constexpr std::uint32_t kAnna = 1000;

/// Looks twice who is effective while it searches.
class Watching final : public tests::ForwardingFileManager {
public:
    Watching(std::shared_ptr<platform::FileManager> next, std::shared_ptr<platform::Users> users)
        : ForwardingFileManager(std::move(next)), users_(std::move(users)) {}

    [[nodiscard]] std::vector<NSString> searchPaths(NSSearchPathDirectory directory,
                                                    NSSearchPathDomainMask domain) const override {
        const bool before = users_->geteuid() == kAnna;
        std::this_thread::yield();
        auto paths = ForwardingFileManager::searchPaths(directory, domain);
        if (!before || users_->geteuid() != kAnna) {
            ++disturbed;
        }
        return paths;
    }

    mutable std::atomic<int> disturbed = 0;

private:
    std::shared_ptr<platform::Users> users_;
};

TEST(UserDirectoryLookupThreads, LookUpsWaitForOneAnother) {
    platform::memory::Machine machine;
    machine.users.setUserID(0);
    machine.users.addPasswordEntry({"anna", kAnna, "/Users/anna"});
    machine.users.setConsoleUser(platform::ConsoleUser{"anna", kAnna});
    platform::Services services = *machine.services();
    const auto files = std::make_shared<Watching>(services.fileManager, services.users);
    services.fileManager = files;
    const auto manager = NSFileManager::init();
    std::atomic<int> wrong = 0;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int time = 0; time < 200; ++time) {
                const NSString path = internal::userPathForDirectory(
                    services, *manager, NSSearchPathDirectory::NSCachesDirectory, "Library/Caches");
                wrong += path == "/Users/anna/Library/Caches" ? 0 : 1;
            }
        });
    }
    threads.clear();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(files->disturbed, 0);
    EXPECT_EQ(machine.users.geteuid(), 0U);
}

TEST(UserDirectoryLookupThreads, TheFlagMayBeSetAndReadAnywhere) {
    const auto manager = NSFileManager::init();
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int time = 0; time < 200; ++time) {
                using namespace NSFileManager_UserDirectoryLookup;
                setUseTemporaryDirectoryAsUserPath(*manager, !useTemporaryDirectoryAsUserPath(*manager));
            }
        });
    }
}

} // namespace
} // namespace qk
