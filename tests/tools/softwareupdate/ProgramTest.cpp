// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ChildProcess.h"
#include "QKFoundation/system_info/QKOSUpdateParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qk::softwareupdate {
namespace {

platform::ChildExit run(std::vector<std::string> arguments) {
    platform::ChildRequest request;
    request.path = QK_SOFTWAREUPDATE_PROGRAM;
    request.arguments = std::move(arguments);
    request.output = platform::ChildStream::Collect;
    request.error = platform::ChildStream::Discard;
    auto outcome = platform::runChild(request);
    if (const int* error = std::get_if<int>(&outcome); error != nullptr) {
        ADD_FAILURE() << "error " << *error;
        return {};
    }
    return std::move(std::get<platform::ChildExit>(outcome));
}

TEST(SoftwareUpdate, PrintsNothingWithoutAKnownOption) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"-x"}, {"-l", "-l"}, {"--help"}, {""}}) {
        const platform::ChildExit ended = run(arguments);
        EXPECT_EQ(ended.status, 2);
        EXPECT_EQ(ended.output.view(), "");
    }
}

// Which updates there are is this machine's affair; that they can be parsed, or that the failure is told, is ours.
TEST(SoftwareUpdate, PrintsAListingThatParsesOrFailsWithNothing) {
    const platform::ChildExit ended = run({"-l"});
    ASSERT_FALSE(ended.signaled);
    if (ended.status == 0) {
        const auto text = NSString::fromUTF8(ended.output.view());
        ASSERT_TRUE(text.has_value());
        EXPECT_TRUE(QKOSUpdateParser::initWithString(Value(*text))->startParsing()) << ended.output.view();
    } else {
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.output.view(), "");
    }
}

} // namespace
} // namespace qk::softwareupdate
