// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/internal/Translation.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

using internal::Translator;

/// The sample bundle as it lies in the file system, read by the host's own machine.
class TranslationFiles : public testing::Test {
protected:
    [[nodiscard]] std::optional<NSString> format(const NSString& language, const NSString& key,
                                                 const std::vector<std::optional<Value>>& arguments = {}) const {
        Translator translator;
        translator.setBundle(bundle);
        translator.setLanguage(language);
        return translator.initWithFormatId(key, arguments);
    }

    std::shared_ptr<NSBundle> bundle = NSBundle::bundleWithPath(QK_FIXTURES_DIR "/bundles/Sample.bundle");
};

TEST_F(TranslationFiles, AMissingFolderIsNoBundle) {
    EXPECT_EQ(NSBundle::bundleWithPath(QK_FIXTURES_DIR "/bundles/Missing.bundle"), nullptr);
    EXPECT_EQ(NSBundle::bundleWithPath(QK_FIXTURES_DIR "/bundles/Sample.bundle/Contents/Info.plist"), nullptr);
}

TEST_F(TranslationFiles, ResourcesAreFoundByName) {
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(bundle->pathForResource("picture", "txt"), bundle->bundlePath() + "/Contents/Resources/picture.txt");
    EXPECT_EQ(bundle->pathForResource("picture", "png"), std::nullopt);
    EXPECT_EQ(bundle->bundleForLanguage("es"), nullptr);
    EXPECT_EQ(bundle->bundleForLanguage("fr"), nullptr);
    EXPECT_EQ(bundle->bundleForLanguage("DE"), nullptr);
}

TEST_F(TranslationFiles, TextTablesAreReadInUTF8AndUTF16) {
    EXPECT_EQ(format("en", "ready"), NSString("Ready to connect"));
    EXPECT_EQ(format("en", "escapes"), NSString("A \"quoted\" word,\na second line\tand €"));
    EXPECT_EQ(format("en", "lines"), NSString("first\nsecond"));
    EXPECT_EQ(format("de", "street"), NSString("Größe: 5 €, 🙂"));
}

TEST_F(TranslationFiles, XMLAndBinaryTablesAreReadToo) {
    EXPECT_EQ(format("zhTW", "ready"), NSString("已準備好連線"));
    EXPECT_EQ(format("zhTW", "markup"), NSString("<b> & </b>"));
    EXPECT_EQ(format("zhCN", "ready"), NSString("已准备好连接"));
    EXPECT_EQ(format("zhCN", "number"), NSString("number"));
    EXPECT_EQ(format("zhCN", "list"), NSString("list"));
}

TEST_F(TranslationFiles, EachLanguagePutsTheArgumentsInItsOwnOrder) {
    const std::vector<std::optional<Value>> arguments{Value("3"), Value("10")};
    EXPECT_EQ(format("en", "progress", arguments), NSString("3 of 10 files sent"));
    EXPECT_EQ(format("de", "progress", arguments), NSString("Von 10 Dateien sind 3 übertragen"));
    EXPECT_EQ(format("zhTW", "progress", arguments), NSString("已傳送 10 個檔案中的 3 個"));
    EXPECT_EQ(format("zhCN", "progress", arguments), NSString("已发送 3/10 个文件"));
    EXPECT_EQ(format("en", "invitation", {Value("Ada"), Value("Engine")}),
              NSString("Ada (Engine) invites Ada to a session"));
    EXPECT_EQ(format("de", "quota", {Value("50")}), NSString("50 % des Platzes sind belegt"));
}

TEST_F(TranslationFiles, WhatALanguageLacksIsEnglish) {
    EXPECT_EQ(format("fr", "ready"), NSString("Ready to connect"));
    EXPECT_EQ(format("nl", "ready"), NSString("Ready to connect"));
    EXPECT_EQ(format("es", "ready"), NSString("Ready to connect"));
    EXPECT_EQ(format("de", "only.english"), NSString("Only here"));
    EXPECT_EQ(format("zhTW", "only.english.args", {Value("Ada")}), NSString("Ask Ada"));
    EXPECT_EQ(format("de", "only.default"), NSString("only.default"));
    EXPECT_EQ(format("en", "empty"), NSString(""));
}

TEST_F(TranslationFiles, WithoutALanguageTheBundlesOwnTableIsRead) {
    Translator translator;
    translator.setBundle(bundle);
    EXPECT_EQ(translator.TLN("ready"), NSString("READY"));
    EXPECT_EQ(translator.TLN("only.default"), NSString("Only the bundle's own table has this"));
    EXPECT_EQ(translator.TLN("only.english"), NSString("Only here"));
}

TEST_F(TranslationFiles, OtherTablesAreReadByName) {
    const auto english = bundle->bundleForLanguage("en");
    ASSERT_NE(english, nullptr);
    EXPECT_EQ(english->localizedStringForKey("timeout", std::nullopt, "Errors"), "No answer for %1% seconds");
    EXPECT_EQ(english->localizedStringForKey("word", std::nullopt, "Errors"), "unquoted");
    EXPECT_EQ(english->localizedStringForKey("alone", "value", "Errors"), "alone");
    EXPECT_EQ(english->localizedStringForKey("timeout", "value", "Missing"), "value");
}

} // namespace
} // namespace qk
