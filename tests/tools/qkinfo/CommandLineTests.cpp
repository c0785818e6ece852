// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qk::info {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string errorOf(const std::vector<std::string>& arguments) {
    const ParsedCommandLine parsed = parseCommandLine(arguments);
    const auto* error = std::get_if<UsageError>(&parsed);
    return error != nullptr ? error->message : "(no error)";
}

Invocation invocationOf(const std::vector<std::string>& arguments) {
    return std::get<Invocation>(parseCommandLine(arguments));
}

WatchInvocation watchOf(const std::vector<std::string>& arguments) {
    return std::get<WatchInvocation>(parseCommandLine(arguments));
}

TranslateInvocation translateOf(const std::vector<std::string>& arguments) {
    return std::get<TranslateInvocation>(parseCommandLine(arguments));
}

std::vector<std::string_view> sectionsOf(const std::vector<std::string>& arguments) {
    std::vector<std::string_view> names;
    for (const Command* command : invocationOf(arguments).commands) {
        names.push_back(command->name);
    }
    return names;
}

} // namespace

TEST(CommandLine, WithoutACommandIsAnError) {
    EXPECT_EQ(errorOf({}), "no command given (see qkinfo --help)");
}

TEST(CommandLine, NamesWhatItDoesNotUnderstand) {
    EXPECT_EQ(errorOf({"frobnicate"}), "there is no command \"frobnicate\" (see qkinfo --help)");
    EXPECT_EQ(errorOf({""}), "there is no command \"\" (see qkinfo --help)");
    EXPECT_EQ(errorOf({"os", "hardware"}), "unexpected argument \"hardware\" (see qkinfo --help)");
    EXPECT_EQ(errorOf({"os", "--bogus"}), "unexpected argument \"--bogus\" (see qkinfo --help)");
    EXPECT_EQ(errorOf({"--bogus"}), "unexpected argument \"--bogus\" (see qkinfo --help)");
    EXPECT_EQ(errorOf({"os", "--no-updates"}), "unexpected argument \"--no-updates\" (see qkinfo --help)");
    EXPECT_THAT(errorOf({"os", "--color", "pink"}), HasSubstr("\"pink\" is not auto, always or never"));
    EXPECT_THAT(errorOf({"os", "--color"}), HasSubstr("--color"));
    EXPECT_THAT(errorOf({"os", "--json=perhaps"}), HasSubstr("--json"));
}

TEST(CommandLine, ErrorsAreOneHarmlessLine) {
    for (const std::string argument : {"a\nb", "\x1b[31m", "--color=\x1b\n", "\xff\xfe"}) {
        const std::string error = errorOf({"os", argument});
        EXPECT_THAT(error, HasSubstr("(see qkinfo --help)"));
        EXPECT_EQ(error.find_first_of("\n\x1b\xff"), std::string::npos);
    }
}

TEST(CommandLine, ReportHoldsAllSectionsInOrder) {
    EXPECT_THAT(sectionsOf({"report"}), ElementsAre("os", "hardware", "cpu", "memory", "volumes", "processes",
                                                    "network", "owner", "folders", "recent", "updates"));
    EXPECT_THAT(sectionsOf({"report", "--no-updates"}),
                ElementsAre("os", "hardware", "cpu", "memory", "volumes", "processes", "network", "owner", "folders",
                            "recent"));
    EXPECT_THAT(sectionsOf({"report", "--no-updates", "--no-recent"}),
                ElementsAre("os", "hardware", "cpu", "memory", "volumes", "processes", "network", "owner", "folders"));
    EXPECT_TRUE(invocationOf({"report"}).report);
}

TEST(CommandLine, EveryCommandIsASectionByItself) {
    for (const Command& command : commands()) {
        if (command.name == "network" || command.name == "recent") { // which have options of their own
            continue;
        }
        EXPECT_THAT(sectionsOf({std::string(command.name)}), ElementsAre(command.name));
        EXPECT_FALSE(invocationOf({std::string(command.name)}).report);
        EXPECT_TRUE(invocationOf({std::string(command.name), "--json"}).json);
    }
}

TEST(CommandLine, OptionsAreOffUnlessGiven) {
    EXPECT_FALSE(invocationOf({"os"}).json);
    EXPECT_EQ(invocationOf({"os"}).color, ColorChoice::Auto);
    EXPECT_EQ(invocationOf({"os", "--color=never"}).color, ColorChoice::Never);
    EXPECT_EQ(invocationOf({"os", "--color", "always"}).color, ColorChoice::Always);
    EXPECT_EQ(invocationOf({"os", "--color", "always", "--color", "auto"}).color, ColorChoice::Auto);
}

TEST(CommandLine, WatchGoesOnEachSecondUnlessToldOtherwise) {
    EXPECT_EQ(watchOf({"watch"}).options.interval, std::chrono::seconds(1));
    EXPECT_EQ(watchOf({"watch"}).options.count, std::nullopt);
    EXPECT_FALSE(watchOf({"watch"}).json);
    const WatchInvocation told = watchOf({"watch", "--interval=2.5", "--count", "3", "--json", "--color=never"});
    EXPECT_EQ(told.options.interval, std::chrono::milliseconds(2500));
    EXPECT_EQ(told.options.count, 3U);
    EXPECT_TRUE(told.json);
    EXPECT_EQ(told.color, ColorChoice::Never);
}

TEST(CommandLine, IntervalsAreFromATenthOfASecondToAnHour) {
    EXPECT_EQ(watchOf({"watch", "--interval", "0.1"}).options.interval, std::chrono::milliseconds(100));
    EXPECT_EQ(watchOf({"watch", "--interval", "3600"}).options.interval, std::chrono::hours(1));
    for (const std::string text : {"", "0", "0.0999", "3600.1", "-1", "1s", "1e1", "nan", "inf", " 1", "1,5", "0x1"}) {
        EXPECT_THAT(errorOf({"watch", "--interval=" + text}), HasSubstr("--interval")) << text;
    }
    EXPECT_EQ(errorOf({"watch", "--interval", "0.05"}),
              "--interval: \"0.05\" is not a number from 0.1 to 3600 (see qkinfo --help)");
    EXPECT_THAT(errorOf({"watch", "--interval"}), HasSubstr("--interval"));
}

TEST(CommandLine, CountsAreWholeNumbersFromOne) {
    EXPECT_EQ(watchOf({"watch", "--count", "1"}).options.count, 1U);
    EXPECT_EQ(watchOf({"watch", "--count", "18446744073709551615"}).options.count, UINT64_MAX);
    for (const std::string text : {"", "0", "-1", "1.5", "many", "18446744073709551616", "+1", "1 "}) {
        EXPECT_THAT(errorOf({"watch", "--count=" + text}), HasSubstr("--count")) << text;
    }
    EXPECT_EQ(errorOf({"watch", "--count", "0"}), "--count: \"0\" is not a whole number from 1 (see qkinfo --help)");
}

TEST(CommandLine, OnlyWatchHasAnInterval) {
    EXPECT_EQ(errorOf({"cpu", "--interval=1"}), "unexpected argument \"--interval=1\" (see qkinfo --help)");
    EXPECT_EQ(errorOf({"watch", "--no-updates"}), "unexpected argument \"--no-updates\" (see qkinfo --help)");
    EXPECT_EQ(errorOf({"watch", "cpu"}), "unexpected argument \"cpu\" (see qkinfo --help)");
}

TEST(CommandLine, TranslateNeedsABundleAndAKey) {
    EXPECT_EQ(errorOf({"translate"}), "--bundle is required (see qkinfo --help)");
    EXPECT_EQ(errorOf({"translate", "--bundle", "B"}), "KEY is required (see qkinfo --help)");
    EXPECT_EQ(errorOf({"translate", "key"}), "--bundle is required (see qkinfo --help)");
    EXPECT_EQ(errorOf({"translate", "--bundle", "B", "key", "--colour"}),
              "unexpected argument \"--colour\" (see qkinfo --help)");
}

TEST(CommandLine, TranslateHasAnyNumberOfArguments) {
    const TranslateInvocation bare = translateOf({"translate", "--bundle", "B", "key"});
    EXPECT_EQ(bare.options.bundle, "B");
    EXPECT_EQ(bare.options.language, std::nullopt);
    EXPECT_EQ(bare.options.key, "key");
    EXPECT_THAT(bare.options.arguments, ElementsAre());
    EXPECT_FALSE(bare.json);

    const TranslateInvocation told =
        translateOf({"translate", "key", "a", "os", "--json", "--language=de", "--bundle=B", "--", "-x", "--json"});
    EXPECT_EQ(told.options.language, "de");
    EXPECT_THAT(told.options.arguments, ElementsAre("a", "os", "-x", "--json"));
    EXPECT_TRUE(told.json);
}

TEST(CommandLine, ArgumentsOfTranslateAreTakenAsTheyAre) {
    const TranslateInvocation told = translateOf({"translate", "--bundle", "[B]", "--language", "[L]", "[a,b]", "[c,d]",
                                                  "[]", "", "{}", "[\"e\"]", "\"f\"", "\xff"});
    EXPECT_EQ(told.options.bundle, "[B]");
    EXPECT_EQ(told.options.language, "[L]");
    EXPECT_EQ(told.options.key, "[a,b]");
    EXPECT_THAT(told.options.arguments, ElementsAre("[c,d]", "[]", "", "{}", "[\"e\"]", "\"f\"", "\xff"));
}

TEST(CommandLine, HelpFitsIntoEightyColumns) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"},
                                                      {"-h"},
                                                      {"report", "--help"},
                                                      {"os", "-h"},
                                                      {"updates", "--help"},
                                                      {"watch", "--help"},
                                                      {"translate", "--help"}}) {
        const std::string text = std::get<PlainText>(parseCommandLine(arguments)).text;
        EXPECT_THAT(text, HasSubstr("Usage: qkinfo"));
        EXPECT_THAT(text, testing::EndsWith("\n"));
        for (std::size_t start = 0; start < text.size(); start = text.find('\n', start) + 1) {
            EXPECT_LE(text.find('\n', start) - start, 80U) << text.substr(start, text.find('\n', start) - start);
        }
    }
}

TEST(CommandLine, HelpNamesEveryCommand) {
    const std::string text = std::get<PlainText>(parseCommandLine({"--help"})).text;
    EXPECT_THAT(text, HasSubstr("  report "));
    EXPECT_THAT(text, HasSubstr("  watch "));
    for (const Command& command : commands()) {
        EXPECT_THAT(text, HasSubstr("  " + std::string(command.name) + " "));
        EXPECT_THAT(text, HasSubstr(std::string(command.summary)));
    }
}

} // namespace qk::info
