// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Translation.h"
#include "QKFoundation/foundation/internal/Translation.h"

#include "tests/foundation/SampleBundle.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

using internal::Translator;
using platform::memory::Machine;
using platform::memory::ScopedMachine;

class Translation : public testing::Test {
protected:
    /// Sets the bundle, and the language unless it is nothing.
    void choose(const std::optional<NSString>& language) {
        translator.setBundle(bundle);
        if (language.has_value()) {
            translator.setLanguage(language);
        }
    }
    [[nodiscard]] std::optional<NSString> format(const NSString& key,
                                                 const std::vector<std::optional<Value>>& arguments) const {
        return translator.initWithFormatId(key, arguments);
    }

    Machine machine;
    std::shared_ptr<NSBundle> bundle = tests::sampleBundle(machine);
    Translator translator;
};

TEST_F(Translation, ThereIsNothingWithoutABundle) {
    EXPECT_EQ(translator.TLN("ready"), std::nullopt);
    EXPECT_EQ(translator.TLN(""), std::nullopt);
    EXPECT_EQ(translator.bundleForLanguage("en"), nullptr);
    EXPECT_EQ(translator.stringByReplacingPlaceholdersInStringWithId("ready"), std::nullopt);
    EXPECT_EQ(format("ready", {}), std::nullopt);
}

TEST_F(Translation, ThereIsNothingWithoutABundleAlsoWithALanguage) {
    translator.setLanguage("en");
    EXPECT_EQ(translator.TLN("ready"), std::nullopt);
    EXPECT_EQ(format("ready", {}), std::nullopt);
}

TEST_F(Translation, ThereIsNothingWhenNeitherTheLanguageNorEnglishHasAFolder) {
    machine.fileManager.addPropertyList("/bare/Localizable.strings", {{"ready", "READY"}});
    translator.setBundle(NSBundle::bundleWithPath("/bare", *machine.services()));
    EXPECT_EQ(translator.TLN("ready"), NSString("READY"));
    translator.setLanguage("de");
    EXPECT_EQ(translator.TLN("ready"), std::nullopt);
    EXPECT_EQ(translator.TLN("missing"), std::nullopt);
    EXPECT_EQ(format("ready", {}), std::nullopt);
}

TEST_F(Translation, TheChosenLanguageHasTheText) {
    choose("de");
    EXPECT_EQ(translator.TLN("ready"), NSString("Bereit"));
}

TEST_F(Translation, ALanguageWithoutAFolderGivesEnglish) {
    choose("fr");
    EXPECT_EQ(translator.TLN("ready"), NSString("Ready"));
    EXPECT_EQ(translator.TLN("missing"), NSString("missing"));
}

TEST_F(Translation, ALanguageWhoseFolderIsAFileGivesEnglish) {
    choose("es");
    EXPECT_EQ(translator.TLN("ready"), NSString("Ready"));
}

TEST_F(Translation, ALanguageWithADamagedTableGivesEnglish) {
    choose("nl");
    EXPECT_EQ(translator.TLN("ready"), NSString("Ready"));
    EXPECT_EQ(translator.TLN("missing"), NSString("missing"));
}

TEST_F(Translation, AnEmptyLanguageNameGivesEnglish) {
    choose("");
    EXPECT_EQ(translator.TLN("ready"), NSString("Ready"));
}

TEST_F(Translation, FolderNamesAreComparedExactly) {
    choose("DE");
    EXPECT_EQ(translator.TLN("ready"), NSString("Ready"));
    EXPECT_EQ(translator.bundleForLanguage("DE"), nullptr);
}

TEST_F(Translation, AKeyThatOnlyEnglishHasGivesEnglish) {
    choose("de");
    EXPECT_EQ(translator.TLN("only.english"), NSString("English"));
}

TEST_F(Translation, AKeyInNoTableGivesItself) {
    choose("de");
    EXPECT_EQ(translator.TLN("missing"), NSString("missing"));
    EXPECT_EQ(translator.TLN(""), NSString(""));
}

TEST_F(Translation, AKeyInNoTableGivesItselfWithoutAnEnglishFolder) {
    machine.fileManager.addPropertyList("/german/de.lproj/Localizable.strings", {{"ready", "Bereit"}, {"OK", "OK"}});
    translator.setBundle(NSBundle::bundleWithPath("/german", *machine.services()));
    EXPECT_EQ(translator.TLN("missing"), NSString("missing"));
    translator.setLanguage("de");
    EXPECT_EQ(translator.TLN("ready"), NSString("Bereit"));
    EXPECT_EQ(translator.TLN("missing"), NSString("missing"));
    EXPECT_EQ(translator.TLN("OK"), NSString("OK"));
}

TEST_F(Translation, ATextThatEqualsItsKeyGivesWayToEnglish) {
    choose("de");
    EXPECT_EQ(translator.TLN("OK"), NSString("Okay"));
    EXPECT_EQ(translator.TLN("own"), NSString("own"));
}

TEST_F(Translation, AnEmptyTextIsATextAndNotMissing) {
    choose("de");
    EXPECT_EQ(translator.TLN("empty"), NSString(""));
    EXPECT_EQ(format("empty", {Value("a")}), NSString(""));
}

TEST_F(Translation, AValueThatIsNoTextCountsAsMissing) {
    choose("de");
    EXPECT_EQ(translator.TLN("number"), NSString("number"));
}

TEST_F(Translation, WithoutALanguageTheBundlesOwnTableComesBeforeEnglish) {
    choose(std::nullopt);
    EXPECT_EQ(translator.TLN("ready"), NSString("READY"));
    EXPECT_EQ(translator.TLN("only.default"), NSString("Default"));
    EXPECT_EQ(translator.TLN("only.english"), NSString("English"));
    EXPECT_EQ(translator.TLN("same"), NSString("Same"));
    EXPECT_EQ(translator.TLN("missing"), NSString("missing"));
}

TEST_F(Translation, WithALanguageTheBundlesOwnTableIsNeverSearched) {
    choose("de");
    EXPECT_EQ(translator.TLN("only.default"), NSString("only.default"));
}

TEST_F(Translation, TheFirstLanguageCounts) {
    choose("de");
    translator.setLanguage("en");
    translator.setLanguage(std::nullopt);
    EXPECT_EQ(translator.TLN("ready"), NSString("Bereit"));
}

TEST_F(Translation, TheFirstBundleCounts) {
    machine.fileManager.addPropertyList("/other/Localizable.strings", {{"ready", "Other"}});
    translator.setBundle(NSBundle::bundleWithPath("/other", *machine.services()));
    translator.setBundle(bundle);
    translator.setBundle(nullptr);
    EXPECT_EQ(translator.TLN("ready"), NSString("Other"));
}

TEST_F(Translation, AFirstCallWithNothingCountsToo) {
    translator.setLanguage(std::nullopt);
    translator.setLanguage("de");
    translator.setBundle(bundle);
    EXPECT_EQ(translator.TLN("ready"), NSString("READY"));

    Translator other;
    other.setBundle(nullptr);
    other.setBundle(bundle);
    EXPECT_EQ(other.TLN("ready"), std::nullopt);
}

TEST_F(Translation, SettersMayComeAfterLookUps) {
    EXPECT_EQ(translator.TLN("ready"), std::nullopt);
    translator.setBundle(bundle);
    EXPECT_EQ(translator.TLN("ready"), NSString("READY"));
    translator.setLanguage("de");
    EXPECT_EQ(translator.TLN("ready"), NSString("Bereit"));
}

TEST_F(Translation, KeepsItsBundle) {
    choose("de");
    bundle.reset();
    EXPECT_EQ(translator.TLN("ready"), NSString("Bereit"));
}

TEST_F(Translation, BundleForLanguageIsTheFolder) {
    choose(std::nullopt);
    EXPECT_EQ(translator.bundleForLanguage(std::nullopt), nullptr);
    EXPECT_EQ(translator.bundleForLanguage(""), nullptr);
    EXPECT_EQ(translator.bundleForLanguage("fr"), nullptr);
    ASSERT_NE(translator.bundleForLanguage("de"), nullptr);
    EXPECT_EQ(translator.bundleForLanguage("de")->bundlePath(),
              "/opt/example/Sample.bundle/Contents/Resources/de.lproj");
}

TEST_F(Translation, ALookUpLeavesThePlaceholders) {
    choose("de");
    EXPECT_EQ(translator.TLN("swapped"), NSString("%1% von %2%"));
    EXPECT_EQ(translator.stringByReplacingPlaceholdersInStringWithId("swapped"), NSString("%1$@ von %2$@"));
}

TEST_F(Translation, ArgumentsGoWhereTheirNumberIs) {
    choose("en");
    EXPECT_EQ(format("swapped", {Value("3"), Value("10")}), NSString("10 of 3"));
    EXPECT_EQ(format("percent", {Value("5"), Value("9")}), NSString("5% of 9"));
    EXPECT_EQ(format("%%%1% and %%1%", {Value("5")}), NSString("%5 and %1$@")) << "a key in no table, as a text";
}

TEST_F(Translation, ArgumentsAreInsertedAsTheyAre) {
    choose("en");
    EXPECT_EQ(format("swapped", {Value("%1% %2$@ %%"), Value("%@")}), NSString("%@ of %1% %2$@ %%"));
}

TEST_F(Translation, ArgumentsThatAreNothingOrNoTextHaveTheirDescription) {
    choose("en");
    EXPECT_EQ(format("swapped", {std::nullopt, Value(10)}), NSString("10 of (null)"));
}

TEST_F(Translation, APlaceholderWithoutAnArgumentIsKept) {
    choose("en");
    EXPECT_EQ(format("swapped", {Value("3")}), NSString("%2$@ of 3"));
}

TEST_F(Translation, AKeyInNoTableIsFormattedItself) {
    choose("en");
    EXPECT_EQ(format("no %1% there", {Value("text")}), NSString("no text there"));
}

NSString languageOf(const std::vector<NSString>& preferred) {
    Machine machine;
    machine.locale.setPreferredLanguages(preferred);
    return internal::languageString(*machine.services()).value_or("nothing");
}

TEST(LanguageString, IsNothingWithoutPreference) {
    EXPECT_EQ(languageOf({}), "nothing");
}

TEST(LanguageString, ReducesTheFirstPreferredLanguageToAFolder) {
    const std::vector<std::pair<NSString, NSString>> cases = {{"zh-Hant", "zhTW"},  {"zh-Hant_TW", "zhTW"},
                                                              {"zh-Hans", "zhCN"},  {"zh-Hant-TW", "zh"},
                                                              {"zh-Hans-CN", "zh"}, {"zh-Hans_CN", "zh"},
                                                              {"zh-Hant_HK", "zh"}, {"zh-hant", "zh"},
                                                              {"zh_TW", "zh_TW"},   {"en-US", "en"},
                                                              {"pt-BR", "pt"},      {"de", "de"},
                                                              {"-x", ""},           {"", ""},
                                                              {"sr-Latn-RS", "sr"}};
    for (const auto& [preferred, folder] : cases) {
        EXPECT_EQ(languageOf({preferred, "fr"}), folder) << preferred.utf8Lossy();
    }
}

TEST(LanguageString, AsksTheInstalledMachine) {
    Machine machine;
    machine.locale.setPreferredLanguages({"nl-BE"});
    const ScopedMachine installed(machine);
    EXPECT_EQ(NSString_Translation::languageString(), NSString("nl"));
}

} // namespace
} // namespace qk
