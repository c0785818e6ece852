// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxUniformTypes.h"

#include "QKFoundation/platform/linux/DynamicTypes.h"
#include "QKFoundation/platform/linux/UniformTypeTable.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

namespace qk::platform {
namespace {

using tests::TemporaryFolder;

struct Place {
    TemporaryFolder folder;

    [[nodiscard]] bool conforms(const NSString& type, const NSString& other) const {
        return LinuxUniformTypes(LinuxRoot(folder.path())).typeConformsTo(type, other);
    }
};

bool conforms(const NSString& type, const NSString& other) {
    return Place().conforms(type, other);
}

TEST(LinuxUniformTypes, UndeclaredTypeConformsToItselfAlone) {
    EXPECT_FALSE(conforms("org.example.unknown", "public.data"));
    EXPECT_FALSE(conforms("org.example.unknown", ""));
    EXPECT_TRUE(conforms("org.example.unknown", "Org.Example.UNKNOWN"));
    EXPECT_FALSE(conforms("", "public.data"));
    EXPECT_TRUE(conforms("", ""));
    EXPECT_TRUE(conforms(NSString(u"\xD800"), NSString(u"\xD800")));
    EXPECT_FALSE(conforms(NSString(u"\xD800"), "public.data"));
}

TEST(LinuxUniformTypes, DeclaredTypesConformOverSteps) {
    EXPECT_TRUE(conforms("public.png", "public.image"));
    EXPECT_TRUE(conforms("public.png", "public.data"));
    EXPECT_TRUE(conforms("public.png", "public.content"));
    EXPECT_TRUE(conforms("public.png", "public.item"));
    EXPECT_TRUE(conforms("Public.PNG", "PUBLIC.Item"));
    EXPECT_FALSE(conforms("public.image", "public.png"));
    EXPECT_FALSE(conforms("public.png", "public.text"));
    EXPECT_TRUE(conforms("com.adobe.pdf", "public.composite-content"));
    EXPECT_TRUE(conforms("public.folder", "public.directory"));
    EXPECT_FALSE(conforms("public.folder", "public.data"));
}

TEST(LinuxUniformTypes, DynamicTypesAreData) {
    EXPECT_TRUE(conforms("dyn.ah62d4rv4ge81g6pq", "public.data"));
    EXPECT_TRUE(conforms("DYN.AH62D4RV4GE81G6PQ", "public.item"));
    EXPECT_FALSE(conforms("dyn.ah62d4rv4ge81g6pq", "public.text"));
    EXPECT_TRUE(conforms("dyn.a", "public.data"));
    EXPECT_TRUE(conforms("dyn.a!", "public.data"));
    EXPECT_FALSE(conforms("dyn.b", "public.data"));
}

TEST(DynamicTypes, TextsAreRead) {
    EXPECT_EQ(types::dynamicText("dyn.ah62d4rv4ge81g6pq"), "?0=6:1=sql");
    EXPECT_EQ(types::dynamicText("dyn.ah62d4rv4ge80q55t"), "?0=6:1=foo");
    EXPECT_EQ(types::dynamicText("dyn.ah62d4rv4ge81u8p4"), "?0=6:1=xyz");
    EXPECT_EQ(types::dynamicText("dyn.ah62d4rv4ge81n5xpr311s5u"), "?0=6:1=unknown");
    EXPECT_EQ(types::dynamicText("public.data"), std::nullopt);
    EXPECT_EQ(types::dynamicText("dyn.ai"), std::nullopt) << "no digit";
    EXPECT_EQ(types::dynamicText("dyn.aaaa"), std::nullopt);
}

TEST(DynamicTypes, TypeMayConformToText) {
    // "?0=7:1=sql"
    EXPECT_EQ(types::dynamicText("dyn.ah62d4r34ge81g6pq"), "?0=7:1=sql");
    EXPECT_TRUE(conforms("dyn.ah62d4r34ge81g6pq", "public.text"));
    EXPECT_TRUE(conforms("dyn.ah62d4r34ge81g6pq", "public.data"));
}

TEST(LinuxUniformTypes, MIMETypesConformToWhatIsDeclaredForThem) {
    EXPECT_TRUE(conforms("text/plain", "public.plain-text"));
    EXPECT_TRUE(conforms("Text/Plain", "public.data"));
    EXPECT_TRUE(conforms("image/png", "public.image"));
    EXPECT_TRUE(conforms("application/pdf", "com.adobe.pdf"));
    EXPECT_FALSE(conforms("image/png", "public.text"));
}

TEST(LinuxUniformTypes, MIMETypesWithoutADeclarationAreWhatTheirFirstWordSays) {
    EXPECT_TRUE(conforms("text/x-unheard-of", "public.text"));
    EXPECT_TRUE(conforms("image/x-unheard-of", "public.image"));
    EXPECT_TRUE(conforms("audio/x-unheard-of", "public.audio"));
    EXPECT_TRUE(conforms("video/x-unheard-of", "public.movie"));
    EXPECT_TRUE(conforms("application/x-unheard-of", "public.data"));
    EXPECT_FALSE(conforms("application/x-unheard-of", "public.content"));
    EXPECT_TRUE(conforms("inode/directory", "public.folder"));
    EXPECT_FALSE(conforms("inode/directory", "public.data"));
    EXPECT_TRUE(conforms("inode/fifo", "public.item"));
    EXPECT_FALSE(conforms("inode/fifo", "public.data"));
}

TEST(LinuxUniformTypes, MIMEDatabaseKnowsParentsAndAliases) {
    const Place place;
    place.folder.write("usr/share/mime/subclasses", "application/x-example application/zip\n"
                                                    "application/x-circle application/x-circle\n"
                                                    "application/x-Script text/plain\nmalformed\n");
    place.folder.write("usr/share/mime/aliases", "application/x-old-example application/x-example\n");
    EXPECT_TRUE(place.conforms("application/x-example", "application/zip"));
    EXPECT_TRUE(place.conforms("application/x-example", "public.zip-archive"));
    EXPECT_TRUE(place.conforms("application/x-old-example", "public.zip-archive"));
    EXPECT_TRUE(place.conforms("application/x-script", "public.text"));
    EXPECT_FALSE(place.conforms("application/x-circle", "public.text"));
}

TEST(UniformTypeTable, IsInOrderAndCloses) {
    const auto declarations = types::declarations();
    ASSERT_GT(declarations.size(), 400U);
    const auto key = [](const types::Declaration& declaration) { return types::lowerCased(declaration.identifier); };
    EXPECT_TRUE(std::ranges::adjacent_find(declarations, std::ranges::greater_equal(), key) == declarations.end());
    for (const types::Declaration& declaration : declarations) {
        types::forEachElement(declaration.conformsTo, [&declaration](std::string_view parent) {
            EXPECT_NE(types::declarationOf(parent), nullptr) << declaration.identifier << " > " << parent;
        });
    }
}

TEST(UniformTypeTable, TellsExtensionsAndDescriptions) {
    EXPECT_EQ(types::declarationOf("org.example.unknown"), nullptr);
    const types::Declaration* html = types::declarationOf("Public.HTML");
    ASSERT_NE(html, nullptr);
    EXPECT_EQ(html->extensions, "html,htm,shtml,shtm");
    EXPECT_EQ(html->mimeTypes, "text/html");
    EXPECT_EQ(html->description, "HTML text");
    EXPECT_EQ(types::declarationForMIMEType("text/html"), html);
    EXPECT_EQ(types::declarationForMIMEType("text/x-unheard-of"), nullptr);
}

} // namespace
} // namespace qk::platform
