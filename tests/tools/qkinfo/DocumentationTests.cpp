// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <string_view>

namespace qk::info {

namespace {

using testing::HasSubstr;

std::string textOf(const std::string& file) {
    std::ifstream stream(QKINFO_PACKAGING "/" + file);
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool isOfWord(char character) {
    return character == '-' || (character >= 'a' && character <= 'z');
}

/// The words of lower-case letters and hyphens in `text` that begin with `prefix`.
std::set<std::string> wordsIn(const std::string& text, std::string_view prefix) {
    std::set<std::string> words;
    for (auto begin = text.begin(); begin != text.end();) {
        const auto end = std::find_if_not(begin, text.end(), isOfWord);
        if (const std::string word(begin, end); word.size() > prefix.size() && word.starts_with(prefix)) {
            words.insert(word);
        }
        begin = end == text.end() ? end : end + 1;
    }
    return words;
}

/// The first words of the indented lines of `text`.
std::set<std::string> entriesIn(const std::string& text) {
    std::set<std::string> words;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  ") && isOfWord(line[2])) {
            words.insert(line.substr(2, line.find(' ', 2) - 2));
        }
    }
    return words;
}

/// The manual page, with plain hyphens: one that is typed is written "\-" there.
std::string manualPage() {
    std::string page = textOf("man/qkinfo.1");
    for (std::size_t found = page.find("\\-"); found != std::string::npos; found = page.find("\\-", found)) {
        page.erase(found, 1);
    }
    return page;
}

/// What the help texts offer.
struct Offered {
    std::set<std::string> commands;
    std::set<std::string> options;
};

Offered offered() {
    const Workshop workshop;
    const std::string help = workshop.run({"--help"}).output;
    Offered result{entriesIn(help.substr(help.find("Commands:"))), wordsIn(help, "--")};
    for (const std::string& command : result.commands) {
        result.options.merge(wordsIn(workshop.run({command, "--help"}).output, "--"));
    }
    EXPECT_TRUE(result.commands.contains("report"));
    EXPECT_TRUE(result.options.contains("--json"));
    return result;
}

} // namespace

TEST(Documentation, ManualPageHasEveryCommandAndOption) {
    const std::string page = manualPage();
    EXPECT_THAT(page, HasSubstr("\"qkinfo " QKINFO_VERSION "\""));
    const Offered all = offered();
    for (const std::string& command : all.commands) {
        EXPECT_THAT(page, HasSubstr("\n.TP\n.B " + command + "\n"));
    }
    const std::string options = page.substr(page.find(".SH OPTIONS"));
    for (const std::string& option : all.options) {
        EXPECT_TRUE(wordsIn(options, "--").contains(option)) << option;
    }
}

TEST(Documentation, ManualPageHasNothingThatIsNotOffered) {
    const Offered all = offered();
    for (const std::string& option : wordsIn(manualPage(), "--")) {
        EXPECT_TRUE(all.options.contains(option)) << option;
    }
}

TEST(Documentation, CompletionHasEveryCommandAndOption) {
    const std::string completion = textOf("completion/qkinfo");
    const Offered all = offered();
    for (const std::set<std::string>& words : {all.commands, all.options}) {
        for (const std::string& word : words) {
            EXPECT_TRUE(wordsIn(completion, "").contains(word)) << word;
        }
    }
}

} // namespace qk::info
