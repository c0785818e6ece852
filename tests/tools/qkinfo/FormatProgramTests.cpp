// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace qk::info {

namespace {

using nlohmann::json;
using testing::HasSubstr;

void expectUsageError(const Finished& finished, const std::string& text) {
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.output, "");
    EXPECT_THAT(finished.error, HasSubstr(text));
    EXPECT_EQ(std::ranges::count(finished.error, '\n'), 1);
}

} // namespace

TEST(FormatProgram, WhatMakesNoSenseIsOneLineOfError) {
    const Workshop workshop;
    expectUsageError(workshop.run({"format"}), "KIND is required");
    expectUsageError(workshop.run({"format", "tfa"}), "TEXT is required");
    expectUsageError(workshop.run({"format", "phone", "1"}),
                     "\"phone\" is not partner-id, id-or-name, meeting-id, support-id, tfa or count");
    expectUsageError(workshop.run({"format", "tfa", "1", "\xff"}), "is not UTF-8");
    expectUsageError(workshop.run({"format", "count", "1", "-x"}), "unexpected argument \"-x\"");
}

TEST(FormatProgram, PrintsALineForEachText) {
    const Finished finished = Workshop().run({"format", "partner-id", "1234", "", "12345678901"});
    EXPECT_EQ(finished.output, "1 234\n\n1 234 567 890\n");
    EXPECT_EQ(finished.error, "");
    EXPECT_EQ(finished.status, 0);
}

TEST(FormatProgram, RefusedTextsAreErrorsAfterAllOthers) {
    const Finished finished = Workshop().run({"format", "tfa", "12a", "123456", "1234567"});
    EXPECT_EQ(finished.output, "123456\n");
    EXPECT_EQ(finished.error, "qkinfo: a field of the kind tfa refuses \"12a\"\n"
                              "qkinfo: a field of the kind tfa refuses \"1234567\"\n");
    EXPECT_EQ(finished.status, 2);
}

TEST(FormatProgram, JsonHasNullForWhatIsRefused) {
    const Finished finished = Workshop().run({"format", "--json", "tfa", "12a", "12"});
    EXPECT_EQ(json::parse(finished.output), json::parse(R"({"kind": "tfa",
                              "texts": [{"text": "12a", "shown": null}, {"text": "12", "shown": "12"}]})"));
    EXPECT_EQ(finished.status, 2);
}

TEST(FormatProgram, TextsAreTakenAsTheyAre) {
    const Finished finished =
        Workshop().run({"format", "id-or-name", "[a,b]", "os", "{}", "--", "-5x", "--json", "--", "[c"});
    EXPECT_EQ(finished.output, "[a,b]\nos\n{}\n-5x\n--json\n--\n[c\n");
    EXPECT_EQ(finished.status, 0);
}

TEST(FormatProgram, AnAnswerThatCannotBeWrittenIsAnError) {
    const Finished finished = Workshop().run({"format", "count", "1"}, OutputPlace::Full);
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.error, HasSubstr("cannot write to standard output"));
}

} // namespace qk::info
