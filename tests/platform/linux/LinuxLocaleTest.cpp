// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxLocale.h"

#include "QKFoundation/platform/linux/LinuxClock.h"
#include "QKFoundation/platform/linux/parse/LocaleNames.h"

#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <time.h>

#include <cstdlib>

namespace qk::platform {
namespace {

using tests::environment;
using tests::TemporaryFolder;
using Languages = std::vector<NSString>;

struct Place {
    TemporaryFolder folder;

    [[nodiscard]] Languages languages(const std::map<std::string, std::string>& variables) const {
        return LinuxLocale(LinuxRoot(folder.path()), environment(variables)).preferredLanguages();
    }
};

TEST(LinuxLocale, NothingIsSetAndNothingIsPreferred) {
    EXPECT_EQ(Place().languages({}), Languages());
    EXPECT_EQ(Place().languages({{"LANG", ""}, {"LC_ALL", ""}, {"LANGUAGE", "de"}}), Languages());
}

TEST(LinuxLocale, PlainLocalesPreferNothing) {
    for (const char* const name : {"C", "POSIX", "C.UTF-8", "C@x"}) {
        EXPECT_EQ(Place().languages({{"LANG", name}, {"LANGUAGE", "de:fr"}}), Languages()) << name;
    }
}

TEST(LinuxLocale, FirstVariableThatIsSetNamesTheLocale) {
    EXPECT_EQ(Place().languages({{"LANG", "de_DE.UTF-8"}}), Languages{"de-DE"});
    EXPECT_EQ(Place().languages({{"LANG", "de_DE.UTF-8"}, {"LC_MESSAGES", "fr_FR"}}), Languages{"fr-FR"});
    EXPECT_EQ(Place().languages({{"LANG", "de_DE.UTF-8"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "it_IT"}}),
              Languages{"it-IT"});
    EXPECT_EQ(Place().languages({{"LANG", "de_DE.UTF-8"}, {"LC_ALL", "C"}}), Languages());
    EXPECT_EQ(Place().languages({{"LANG", "de_DE.UTF-8"}, {"LC_ALL", ""}}), Languages{"de-DE"});
}

TEST(LinuxLocale, ListOfLanguagesGoesFirst) {
    EXPECT_EQ(Place().languages({{"LANG", "de_AT.UTF-8"}, {"LANGUAGE", "sv:de_AT::en_GB:C:sv"}}),
              (Languages{"sv", "de-AT", "en-GB"}));
}

TEST(LinuxLocale, FilesOfTheSystemStandInForVariables) {
    const Place place;
    place.folder.write("etc/default/locale", "LANG=\"fr_FR.UTF-8\"\nLANGUAGE=\"fr:en\"\nLC_ALL=it_IT\n");
    EXPECT_EQ(place.languages({}), (Languages{"fr", "en", "fr-FR"}));
    place.folder.write("etc/locale.conf", "# comment\nLANG=pt_BR.UTF-8\n");
    EXPECT_EQ(place.languages({}), Languages{"pt-BR"});
    place.folder.write("etc/locale.conf", "LANG=pt_BR.UTF-8\nLC_MESSAGES=sv_SE.UTF-8\n");
    EXPECT_EQ(place.languages({}), Languages{"sv-SE"});
    EXPECT_EQ(place.languages({{"LANG", "ja_JP.UTF-8"}}), Languages{"ja-JP"});
    EXPECT_EQ(place.languages({{"LANG", "C"}}), Languages());
}

TEST(LinuxLocale, VariablesOfTheProcessAreItsEnvironment) {
    ASSERT_EQ(::setenv("QK_TEST_VARIABLE", "value", 1), 0);
    EXPECT_EQ(processVariable("QK_TEST_VARIABLE"), "value");
    ASSERT_EQ(::unsetenv("QK_TEST_VARIABLE"), 0);
    EXPECT_EQ(processVariable("QK_TEST_VARIABLE"), std::nullopt);
}

TEST(LocaleNames, WhatIsNoLanguageHasNoTag) {
    for (const char* const name : {"", "C", "POSIX", "d", "german", "DE", "de_", "de_D", "de_de", "de_DEU", "de_1",
                                   "_DE", ".UTF-8", "@euro", "de-DE", "d1"}) {
        EXPECT_EQ(parse::languageTag(name), std::nullopt) << name;
    }
}

TEST(LocaleNames, TagsHaveLanguageScriptAndRegion) {
    EXPECT_EQ(parse::languageTag("de"), "de");
    EXPECT_EQ(parse::languageTag("de_DE"), "de-DE");
    EXPECT_EQ(parse::languageTag("de_DE.UTF-8@euro"), "de-DE");
    EXPECT_EQ(parse::languageTag("es_419"), "es-419");
    EXPECT_EQ(parse::languageTag("ast_ES.UTF-8"), "ast-ES");
    EXPECT_EQ(parse::languageTag("sr_RS@latin"), "sr-Latn-RS");
    EXPECT_EQ(parse::languageTag("sr@latin"), "sr-Latn");
    EXPECT_EQ(parse::languageTag("uz_UZ.UTF-8@cyrillic"), "uz-Cyrl-UZ");
}

TEST(LocaleNames, ChineseIsToldApartByItsScript) {
    for (const char* const name : {"zh_CN.UTF-8", "zh_SG", "zh"}) {
        EXPECT_EQ(parse::languageTag(name), "zh-Hans") << name;
    }
    for (const char* const name : {"zh_TW.UTF-8", "zh_HK", "zh_MO"}) {
        EXPECT_EQ(parse::languageTag(name), "zh-Hant") << name;
    }
}

TEST(LinuxClock, TellsTheTimeOfTheKernel) {
    timespec before{};
    timespec after{};
    ::clock_gettime(CLOCK_REALTIME, &before);
    const double now = LinuxClock().now().timeIntervalSince1970();
    ::clock_gettime(CLOCK_REALTIME, &after);
    EXPECT_GE(now, static_cast<double>(before.tv_sec));
    EXPECT_LE(now, static_cast<double>(after.tv_sec) + 1);
}

} // namespace
} // namespace qk::platform
