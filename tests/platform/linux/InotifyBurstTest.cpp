// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/linux/InotifyWatching.h"

#include <fcntl.h>

/// A program of its own that runs alone: who watches the whole file system at that time hears all of it too.
namespace qk::tests {
namespace {

using InotifyBurstTest = InotifyWatching;

// The kernel's own limit is 16384 events unless somebody has set another one.
TEST_F(InotifyBurstTest, ABurstThatTheKernelCannotHoldIsTold) {
    watch();
    constexpr int kFiles = 20'000;
    for (int number = 0; number < kFiles; ++number) {
        const platform::UniqueFD made(::creat(path(std::to_string(number)).c_str(), 0600));
    }
    serve();
    int missing = 0;
    for (int number = 0; number < kFiles; ++number) {
        missing += (told(std::to_string(number)) & kCreated) == 0 ? 1 : 0;
    }
    EXPECT_EQ(missing, 0);
}

} // namespace
} // namespace qk::tests
