// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/internal/CrashReporterInformation.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using qk::NSString;
using qk::internal::CrashReporterInformation;
using qk::platform::memory::Machine;

class CrashText : public testing::Test {
protected:
    void publish(const std::optional<NSString>& text) { information.setString(*machine.services(), text); }

    Machine machine;
    CrashReporterInformation information;
};

TEST_F(CrashText, ProcessWithoutASlotPublishesNothing) {
    publish("a");
    machine.crashReporter.offerSlot(); // too late: it was looked for once
    publish("b");
    EXPECT_EQ(machine.crashReporter.text(), nullptr);
}

TEST_F(CrashText, NothingAndTheEmptyTextLeaveWhatIsPublished) {
    machine.crashReporter.offerSlot();
    publish(std::nullopt);
    EXPECT_EQ(machine.crashReporter.text(), nullptr);
    publish("a");
    publish("");
    publish(std::nullopt);
    EXPECT_STREQ(machine.crashReporter.text(), "a");
}

TEST_F(CrashText, LaterTextReplacesTheEarlier) {
    machine.crashReporter.offerSlot();
    publish("a");
    publish("é");
    EXPECT_STREQ(machine.crashReporter.text(), "é");
}

TEST_F(CrashText, ZeroCharacterEndsTheText) {
    machine.crashReporter.offerSlot();
    publish(NSString(std::u16string_view(u"ab\0cd", 5)));
    EXPECT_STREQ(machine.crashReporter.text(), "ab");
}

TEST_F(CrashText, TextThatBeginsWithAZeroCharacterIsEmpty) {
    machine.crashReporter.offerSlot();
    publish("a");
    publish(NSString(std::u16string_view(u"\0bc", 3)));
    EXPECT_STREQ(machine.crashReporter.text(), "a") << "there is no way to clear it";
}

TEST_F(CrashText, TextWithoutAUTF8FormChangesNothing) {
    machine.crashReporter.offerSlot();
    publish("a");
    publish(NSString(std::u16string_view(u"\xD800")));
    EXPECT_STREQ(machine.crashReporter.text(), "a");
}

TEST_F(CrashText, ManyThreadsPublishAtTheSameTime) {
    machine.crashReporter.offerSlot();
    std::vector<std::thread> threads;
    for (const char* text : {"one", "two", "three", "four"}) {
        threads.emplace_back([this, text] {
            for (int round = 0; round < 200; ++round) {
                publish(NSString::fromUTF8(text));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const std::string published = machine.crashReporter.text();
    EXPECT_TRUE(published == "one" || published == "two" || published == "three" || published == "four");
}

} // namespace
