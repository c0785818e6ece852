// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <cerrno>

namespace qk::tests {
namespace {

using platform::TaskExit;
using platform::TaskLaunchFailure;
using platform::TaskRequest;
using platform::TaskStream;

class TaskLauncherContract : public Contract {
protected:
    TaskExit run(const TaskRequest& request) {
        const auto outcome = subject().described().taskLauncher->run(request);
        if (const auto* failure = std::get_if<TaskLaunchFailure>(&outcome); failure != nullptr) {
            ADD_FAILURE() << "launch failed with error " << failure->errorNumber;
            return {};
        }
        return std::get<TaskExit>(outcome);
    }
};
INSTANTIATE_TEST_SUITE_P(Of, TaskLauncherContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(TaskLauncherContract, MissingProgramIsALaunchFailureThatSaysSo) {
    const auto outcome = subject().described().taskLauncher->run(subject().commands().missingProgram);
    ASSERT_TRUE(std::holds_alternative<TaskLaunchFailure>(outcome));
    EXPECT_EQ(std::get<TaskLaunchFailure>(outcome).errorNumber, ENOENT);
}

TEST_P(TaskLauncherContract, SilentProgramGivesEmptyOutput) {
    const TaskExit ended = run(subject().commands().printNothing);
    EXPECT_EQ(ended.terminationStatus, 0);
    EXPECT_FALSE(ended.uncaughtSignal);
    EXPECT_TRUE(ended.output.isEmpty());
}

TEST_P(TaskLauncherContract, OutputIsCollectedWhenAskedFor) {
    TaskRequest request = subject().commands().printHello;
    EXPECT_EQ(run(request).output, NSData("hello"));
    request.standardOutput = TaskStream::Discard;
    EXPECT_TRUE(run(request).output.isEmpty());
}

TEST_P(TaskLauncherContract, ArgumentsArriveAsTheyAre) {
    TaskRequest request = subject().commands().printArguments;
    request.arguments.insert(request.arguments.end(), {"a b", "", "*$HOME'\"", "Grüße"});
    EXPECT_EQ(run(request).output, NSData("[a b][][*$HOME'\"][Grüße]"));
}

TEST_P(TaskLauncherContract, StatusIsThatOfTheProgram) {
    const TaskExit ended = run(subject().commands().exitWith3);
    EXPECT_EQ(ended.terminationStatus, 3);
    EXPECT_FALSE(ended.uncaughtSignal);
}

TEST_P(TaskLauncherContract, SignalIsToldApartFromAStatus) {
    const TaskExit ended = run(subject().commands().dieOfSignal9);
    EXPECT_EQ(ended.terminationStatus, 9);
    EXPECT_TRUE(ended.uncaughtSignal);
}

} // namespace
} // namespace qk::tests
