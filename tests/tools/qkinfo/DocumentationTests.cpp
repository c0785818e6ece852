// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace qk::info {

namespace {

using testing::HasSubstr;

std::string textOf(const std::string& file) {
    std::ifstream stream(QKINFO_PACKAGING "/" + file);
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::set<std::string> matchesIn(const std::string& text, const std::regex& pattern) {
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern); match != std::sregex_iterator(); ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

/// What the help texts offer.
struct Offered {
    std::set<std::string> commands;
    std::set<std::string> options;
};

Offered offered() {
    const Workshop workshop;
    const std::string help = workshop.run({"--help"}).output;
    const std::regex option("[ ,](--[a-z-]+)");
    Offered result{matchesIn(help.substr(help.find("Commands:")), std::regex("\n  ([a-z]+) ")),
                   matchesIn(help, option)};
    for (const std::string& command : result.commands) {
        result.options.merge(matchesIn(workshop.run({command, "--help"}).output, option));
    }
    EXPECT_TRUE(result.commands.contains("report"));
    EXPECT_TRUE(result.options.contains("--json"));
    return result;
}

} // namespace

TEST(Documentation, ManualPageHasEveryCommandAndOption) {
    // A hyphen that is typed is written "\-".
    const std::string page = std::regex_replace(textOf("man/qkinfo.1"), std::regex(R"(\\-)"), "-");
    EXPECT_THAT(page, HasSubstr("\"qkinfo " QKINFO_VERSION "\""));
    const Offered all = offered();
    for (const std::string& command : all.commands) {
        EXPECT_THAT(page, HasSubstr("\n.B " + command + "\n"));
    }
    for (const std::string& option : all.options) {
        EXPECT_THAT(page, testing::ContainsRegex("\n.B[RI]* .*" + option));
    }
}

TEST(Documentation, ManualPageHasNothingThatIsNotOffered) {
    const std::string page = std::regex_replace(textOf("man/qkinfo.1"), std::regex(R"(\\-)"), "-");
    const Offered all = offered();
    for (const std::string& option : matchesIn(page, std::regex("(--[a-z-]+)"))) {
        EXPECT_TRUE(all.options.contains(option)) << option;
    }
}

TEST(Documentation, CompletionHasEveryCommandAndOption) {
    const std::string completion = textOf("completion/qkinfo");
    const Offered all = offered();
    for (const std::set<std::string>& words : {all.commands, all.options}) {
        for (const std::string& word : words) {
            EXPECT_TRUE(std::regex_search(completion, std::regex("[' ]" + word + "[' ]"))) << word;
        }
    }
}

} // namespace qk::info
