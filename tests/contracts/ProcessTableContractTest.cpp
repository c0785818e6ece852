// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/ProcessTable.h"

#include "tests/contracts/Contract.h"

#include <gmock/gmock.h>

#include <array>
#include <cerrno>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace qk::tests {
namespace {

using platform::kinfo_proc;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr std::array kTable{platform::kCtlKern, platform::kKernProc, platform::kKernProcAll};

class ProcessTableContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, ProcessTableContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(ProcessTableContract, AMachineWithoutATableSaysENOENT) {
    const auto machine = subject().silent();
    std::size_t size = 3;
    EXPECT_EQ(machine.kernel->sysctl(kTable, nullptr, &size), ENOENT);
    EXPECT_EQ(size, 3U);
    EXPECT_EQ(machine.processTable->pidPath(1), std::nullopt);
}

TEST_P(ProcessTableContract, TheSizeThatIsToldHoldsTheTable) {
    const auto machine = subject().described();
    std::size_t told = 0;
    ASSERT_EQ(machine.kernel->sysctl(kTable, nullptr, &told), 0);
    std::vector<kinfo_proc> records(told / sizeof(kinfo_proc));
    std::size_t size = told;
    ASSERT_EQ(machine.kernel->sysctl(kTable, records.data(), &size), 0);
    EXPECT_LE(size, told);
    ASSERT_EQ(size, 3 * sizeof(kinfo_proc));
    records.resize(3);
    std::map<int, std::pair<char, std::string>> found;
    for (const kinfo_proc& record : records) {
        found[record.kp_proc.p_pid] = {record.kp_proc.p_stat, record.kp_proc.p_comm};
    }
    EXPECT_THAT(found,
                UnorderedElementsAre(Pair(1, Pair(platform::SSLEEP, "init")), Pair(20, Pair(platform::SSTOP, ") R (")),
                                     Pair(300, Pair(platform::SZOMB, "gone"))));
}

TEST_P(ProcessTableContract, ATableThatDoesNotFitIsENOMEM) {
    const auto machine = subject().described();
    std::vector<char> buffer(2 * sizeof(kinfo_proc));
    std::size_t size = buffer.size();
    EXPECT_EQ(machine.kernel->sysctl(kTable, buffer.data(), &size), ENOMEM);
}

TEST_P(ProcessTableContract, OtherTablesAreNotThere) {
    const auto machine = subject().described();
    std::size_t size = 0;
    EXPECT_EQ(machine.kernel->sysctl(std::array{platform::kCtlKern, platform::kKernProc}, nullptr, &size), ENOENT);
    EXPECT_EQ(machine.kernel->sysctl(std::array{platform::kCtlKern, platform::kKernProc, 1}, nullptr, &size), ENOENT);
}

TEST_P(ProcessTableContract, ExecutablesHaveAbsolutePaths) {
    const auto machine = subject().described();
    EXPECT_EQ(machine.processTable->pidPath(1), "/sbin/init");
    EXPECT_EQ(machine.processTable->pidPath(20), "/opt/a longer name");
    EXPECT_EQ(machine.processTable->pidPath(300), std::nullopt);
    EXPECT_EQ(machine.processTable->pidPath(4), std::nullopt);
    EXPECT_EQ(machine.processTable->pidPath(-1), std::nullopt);
}

} // namespace
} // namespace qk::tests
