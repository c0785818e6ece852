// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>

/// `qkinfo translate` as a child process: what it sets stays set for the life of a process.
namespace qk::info {

namespace {

using nlohmann::json;
using testing::HasSubstr;

class Translate : public testing::Test {
protected:
    [[nodiscard]] Finished run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"translate", "--bundle", bundle});
        return workshop.run(arguments);
    }

    void expectText(const std::vector<std::string>& arguments, const std::string& text) const {
        const Finished finished = run(arguments);
        EXPECT_EQ(finished.output, text + "\n");
        EXPECT_EQ(finished.error, "");
        EXPECT_EQ(finished.status, 0);
    }

    void expectFailure(const std::vector<std::string>& arguments, const std::string& text) const {
        const Finished finished = run(arguments);
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.output, "");
        EXPECT_THAT(finished.error, HasSubstr(text));
        EXPECT_EQ(std::ranges::count(finished.error, '\n'), 1);
    }

    Workshop workshop;
    std::string bundle = QK_FIXTURES_DIR "/bundles/Sample.bundle";
};

} // namespace

TEST_F(Translate, FailsWithoutAFolder) {
    for (const std::string folder :
         {"/nonexistent", "", QK_FIXTURES_DIR "/bundles/Sample.bundle/Contents/Info.plist"}) {
        bundle = folder;
        expectFailure({"--language", "de", "ready"}, "there is no folder \"" + folder + "\"");
    }
}

TEST_F(Translate, FailsWithoutAFolderOfTheLanguageAndAnEnglishOne) {
    bundle = workshop.path("").string();
    expectFailure({"--language", "de", "ready"}, "has neither a folder \"de.lproj\" nor \"en.lproj\"");
    expectFailure({"--language", "\x1b[31m\n", "ready"}, "\\x1B[31m .lproj");
}

TEST_F(Translate, PrintsTheTextOfTheLanguage) {
    expectText({"--language", "zhTW", "ready"}, "已準備好連線");
    expectText({"--language", "zhCN", "cancel"}, "取消");
}

TEST_F(Translate, PutsTheArgumentsInTheirPlaces) {
    expectText({"--language", "zhTW", "progress", "3", "10"}, "已傳送 10 個檔案中的 3 個");
    expectText({"--language", "zhTW", "progress", "[3,4]", "%1%"}, "已傳送 %1% 個檔案中的 [3,4] 個");
}

TEST_F(Translate, FallsBackToEnglish) {
    expectText({"--language", "fr", "ready"}, "Ready to connect");
    expectText({"--language", "zhTW", "lines"}, "first\nsecond");
    expectText({"--language", "de", "progress", "3", "10"}, "Von 10 Dateien sind 3 übertragen");
}

TEST_F(Translate, PrintsAKeyThatIsInNoTable) {
    expectText({"--language", "zhTW", "no.such.key"}, "no.such.key");
    expectText({"--language", "zhTW", "Hello %1%", "Ada"}, "Hello Ada");
    expectText({"--language", "zhTW", ""}, "");
}

TEST_F(Translate, BytesThatAreNotUTF8AreReplaced) {
    expectText({"--language", "zhTW", "\xff%1%", "a\xe2\x82"}, "\uFFFDa\uFFFD\uFFFD");
    expectText({"--language", "\xff", "no.such.key"}, "no.such.key");
}

TEST_F(Translate, WhatSteersATerminalIsSpelledOut) {
    expectText({"--language", "zhTW", "a\x1b[31m\r\nb  c"}, "a\\x1B[31m\\x0D\nb  c");
}

TEST_F(Translate, AFolderMayHaveAnyName) {
    const std::filesystem::path folder = workshop.path("caf\xe9 \xe2\x82\xac");
    std::filesystem::copy(bundle, folder, std::filesystem::copy_options::recursive);
    bundle = folder.string();
    expectText({"--language", "zhTW", "cancel"}, "取消");
}

TEST_F(Translate, JsonHasTheTextAsItIs) {
    const json told = json::parse(run({"--language", "zhTW", "--json", "a\x1b%1%\n", "\xff"}).output);
    EXPECT_EQ(told, json::parse(R"({"translate":
        {"key": "a\u001b%1%\n", "language": "zhTW", "text": "a\u001b\ufffd\n"}})"));
}

TEST_F(Translate, TakesTheLanguageThatTheUserPrefers) {
    workshop.setVariable("LANGUAGE=");
    workshop.setVariable("LC_ALL=de_DE.UTF-8");
    expectText({"cancel"}, "Abbrechen");
}

TEST_F(Translate, AUserWithoutPreferenceReadsTheBundlesOwnTable) {
    workshop.setVariable("LANGUAGE=");
    workshop.setVariable("LC_ALL=C");
    expectText({"ready"}, "READY");
    expectText({"cancel"}, "Cancel");
    EXPECT_EQ(json::parse(run({"ready", "--json"}).output)["translate"]["language"], json());
}

} // namespace qk::info
