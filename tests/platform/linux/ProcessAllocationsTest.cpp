// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Processes.h"
#include "QKFoundation/platform/services/ProcessTable.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

namespace {

std::atomic<std::size_t> allocations = 0;

void* counted(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1)) {
        return memory;
    }
    throw std::bad_alloc();
}

} // namespace

// This program's own, so that a test can tell how often they were called.
void* operator new(std::size_t size) {
    return counted(size);
}
void* operator new[](std::size_t size) {
    return counted(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace qk::platform {
namespace {

std::size_t allocationsFor(int processes) {
    const tests::TemporaryFolder root;
    for (int pid = 1; pid <= processes; ++pid) {
        const std::string number = std::to_string(pid);
        root.write("proc/" + number + "/stat", number + " (a name) S 1 1 1 0 -1 4194560 1 0\n");
    }
    const LinuxRoot linuxRoot(root.path());
    std::vector<kinfo_proc> records(static_cast<std::size_t>(processes));
    std::size_t size = records.size() * sizeof(kinfo_proc);
    const std::size_t before = allocations;
    EXPECT_EQ(processes::readTable(linuxRoot, records.data(), &size), 0);
    const std::size_t after = allocations;
    EXPECT_EQ(size, records.size() * sizeof(kinfo_proc));
    return after - before;
}

TEST(ProcessAllocations, DoNotGrowWithTheNumberOfProcesses) {
    const std::size_t few = allocationsFor(1);
    EXPECT_LE(few, 4U);
    EXPECT_EQ(allocationsFor(300), few);
}

} // namespace
} // namespace qk::platform
