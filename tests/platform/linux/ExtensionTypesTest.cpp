// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/DynamicTypes.h"
#include "QKFoundation/platform/linux/LinuxUniformTypes.h"
#include "QKFoundation/platform/linux/parse/Globs.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qk::platform {
namespace {

using namespace std::string_view_literals;
using parse::typeForExtension;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(TypeForExtension, IsNoneWithoutAPattern) {
    EXPECT_EQ(typeForExtension("", "txt"), std::nullopt);
    EXPECT_EQ(typeForExtension("50:text/plain:*.txt\n", ""), std::nullopt);
    for (const std::string_view line : {"50:text/plain:txt"sv, "text/plain:*.txt"sv, "x:text/plain:*.txt"sv,
                                        "50::*.txt"sv, "50:text/plain:README*"sv, "# 50:text/plain:*.txt"sv}) {
        EXPECT_EQ(typeForExtension(line, "txt"), std::nullopt) << line;
    }
}

TEST(TypeForExtension, IsThatOfThePatternWhateverTheLetterCase) {
    const std::string_view globs = "# comment\n50:text/plain:*.txt\n50:application/x-tar-gz:*.tar.gz\n";
    EXPECT_EQ(typeForExtension(globs, "txt"), "text/plain");
    EXPECT_EQ(typeForExtension(globs, "TXT"), "text/plain");
    EXPECT_EQ(typeForExtension(globs, "tar.gz"), "application/x-tar-gz");
    EXPECT_EQ(typeForExtension(globs, "gz"), std::nullopt);
}

TEST(TypeForExtension, HeaviestPatternCountsAndOfEqualOnesTheFirst) {
    EXPECT_EQ(typeForExtension("50:a/b:*.x\n60:c/d:*.x\n60:e/f:*.x\n", "x"), "c/d");
}

TEST(TypeForExtension, VeryLetterCaseIsBest) {
    const std::string_view globs = "50:text/x-csrc:*.c:cs\n50:text/x-c++src:*.C:cs\n80:image/x:*.q\n10:text/y:*.Q\n";
    EXPECT_EQ(typeForExtension(globs, "c"), "text/x-csrc");
    EXPECT_EQ(typeForExtension(globs, "C"), "text/x-c++src");
    EXPECT_EQ(typeForExtension(globs, "Q"), "text/y");
    EXPECT_EQ(typeForExtension("50:text/x-genie:*.gs:other,cs\n", "GS"), std::nullopt);
}

TEST(DynamicIdentifier, IsThePublishedForm) {
    EXPECT_EQ(types::dynamicIdentifier("public.data", "sql"), "dyn.ah62d4rv4ge81g6pq");
    EXPECT_EQ(types::dynamicIdentifier("public.data", "foo"), "dyn.ah62d4rv4ge80q55t");
    EXPECT_EQ(types::dynamicIdentifier("public.data", "xyz"), "dyn.ah62d4rv4ge81u8p4");
    EXPECT_EQ(types::dynamicIdentifier("public.data", "unknown"), "dyn.ah62d4rv4ge81n5xpr311s5u");
    EXPECT_EQ(types::dynamicIdentifier("org.example.none", "sql"), "dyn.ah62d4rv4ge81g6pq");
}

TEST(DynamicIdentifier, ReadsBackWhateverTheLength) {
    std::string extension;
    for (int length = 0; length < 20; ++length) {
        EXPECT_EQ(types::dynamicText(types::dynamicIdentifier("public.text", extension)), "?0=7:1=" + extension);
        extension += static_cast<char>('a' + length);
    }
}

class ExtensionTypes : public testing::Test {
protected:
    void globs(const std::string& lines) { root.write("usr/share/mime/globs2", lines); }

    tests::TemporaryFolder root;
    LinuxUniformTypes types{LinuxRoot(root.path())};
};

TEST_F(ExtensionTypes, ExtensionThatNobodyKnowsHasNone) {
    EXPECT_THAT(types.typesForExtension("unheard-of"), IsEmpty());
    EXPECT_THAT(types.typesForExtension(""), IsEmpty());
    EXPECT_THAT(types.typesForExtension(NSString(u"\xD800"sv)), IsEmpty());
    globs("50:text/plain:*.txt\n");
    EXPECT_THAT(types.typesForExtension("unheard-of"), IsEmpty());
}

TEST_F(ExtensionTypes, DeclaredTypesComeWithThePublicOnesFirst) {
    EXPECT_THAT(types.typesForExtension("png"), ElementsAre(NSString("public.png")));
    EXPECT_THAT(types.typesForExtension("PNG"), ElementsAre(NSString("public.png")));
    EXPECT_THAT(types.typesForExtension("app"),
                ElementsAre(NSString("com.apple.application-bundle"), NSString("com.apple.application-file")));
    globs("90:text/plain:*.png\n");
    EXPECT_THAT(types.typesForExtension("png"), ElementsAre(NSString("public.png")))
        << "a declaration is better than a pattern";
}

TEST_F(ExtensionTypes, ExtensionOfTheDatabaseAloneHasADynamicType) {
    globs("50:application/x-example:*.qqa\n50:text/x-example:*.qqb\n50:image/x-example:*.qqc\n"
          "50:audio/x-example:*.qqd\n50:video/x-example:*.qqe\n50:application/x-script:*.qqf\n");
    root.write("usr/share/mime/subclasses", "application/x-script text/plain\n");
    const struct {
        NSString extension;
        NSString general;
    } rows[] = {{"qqa", "public.data"},  {"qqb", "public.text"},  {"qqc", "public.image"},
                {"qqd", "public.audio"}, {"qqe", "public.movie"}, {"qqf", "public.text"}};
    for (const auto& row : rows) {
        const auto found = types.typesForExtension(row.extension);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_TRUE(found.front().hasPrefix("dyn.a"));
        EXPECT_TRUE(types.typeConformsTo(found.front(), row.general)) << row.general.utf8Lossy();
        EXPECT_TRUE(types.typeConformsTo(found.front(), "public.data"));
        EXPECT_EQ(types.typeConformsTo(found.front(), "public.image"), row.general == "public.image");
        EXPECT_EQ(types.descriptionOfType(found.front()), std::nullopt);
        EXPECT_EQ(types.declarationOfType(found.front()), std::nullopt);
    }
    EXPECT_EQ(types.typesForExtension("QQA"), types.typesForExtension("qqa"));
}

TEST_F(ExtensionTypes, UndeclaredTypeHasNeitherDescriptionNorDeclaration) {
    for (const NSString& type : {NSString("org.example.unknown"), NSString(), NSString(u"\xD800"sv)}) {
        EXPECT_EQ(types.descriptionOfType(type), std::nullopt);
        EXPECT_EQ(types.declarationOfType(type), std::nullopt);
    }
}

TEST_F(ExtensionTypes, DeclarationIsTold) {
    EXPECT_EQ(types.descriptionOfType("PUBLIC.html"), "HTML text");
    EXPECT_EQ(types.declarationOfType("public.html"),
              (NSDictionary{{"UTTypeIdentifier", "public.html"},
                            {"UTTypeDescription", "HTML text"},
                            {"UTTypeConformsTo", NSArray{"public.text"}},
                            {"UTTypeTagSpecification",
                             NSDictionary{{"public.filename-extension", NSArray{"html", "htm", "shtml", "shtm"}},
                                          {"public.mime-type", NSArray{"text/html"}}}}}));
    EXPECT_EQ(types.declarationOfType("public.content"),
              (NSDictionary{{"UTTypeIdentifier", "public.content"}, {"UTTypeDescription", "content"}}));
}

} // namespace
} // namespace qk::platform
