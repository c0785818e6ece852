// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKUTIUtils.h"

#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UTIUtils : public testing::Test {
protected:
    UTIUtils() {
        machine.uniformTypes.declareType("public.text", {"public.data"});
        machine.uniformTypes.declareType("public.plain-text", {"public.text"});
        machine.uniformTypes.setTypesForExtension("txt", {"public.plain-text", "org.example.text"});
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(UTIUtils, ExtensionThatNobodyKnowsHasNoType) {
    EXPECT_EQ(QKUTIUtils::typeIdentifierForPathExtension("unheard-of"), "");
    EXPECT_EQ(QKUTIUtils::typeIdentifierForPathExtension(""), "");
    EXPECT_THAT(QKUTIUtils::typeIdentifiersForPathExtension("unheard-of"), IsEmpty());
}

TEST_F(UTIUtils, WithoutATypeConformanceIsNotAsked) {
    EXPECT_FALSE(QKUTIUtils::typeIdentifierWithPathExtension("unheard-of", "public.data"));
    EXPECT_FALSE(QKUTIUtils::typeIdentifierWithPathExtension("unheard-of", "")) << "no type is not the empty one";
    EXPECT_EQ(machine.uniformTypes.conformanceRequests(), 0U);
    machine.uniformTypes.setTypesForExtension("odd", {""});
    EXPECT_FALSE(QKUTIUtils::typeIdentifierWithPathExtension("odd", ""));
    EXPECT_EQ(machine.uniformTypes.conformanceRequests(), 0U);
}

TEST_F(UTIUtils, TypeThatNobodyDeclaredHasNeitherDescriptionNorDeclaration) {
    EXPECT_EQ(QKUTIUtils::typeDescriptionForTypeIdentifier("org.example.unknown"), "");
    EXPECT_EQ(QKUTIUtils::typeDeclarationForTypeIdentifier("org.example.unknown"), NSDictionary());
}

TEST_F(UTIUtils, PreferredTypeIsTheFirstOfAll) {
    EXPECT_EQ(QKUTIUtils::typeIdentifierForPathExtension("txt"), "public.plain-text");
    EXPECT_EQ(QKUTIUtils::typeIdentifierForPathExtension("TXT"), "public.plain-text");
    EXPECT_THAT(QKUTIUtils::typeIdentifiersForPathExtension("txt"),
                ElementsAre(NSString("public.plain-text"), NSString("org.example.text")));
}

TEST_F(UTIUtils, TypeOfAnExtensionConformsOverSteps) {
    EXPECT_TRUE(QKUTIUtils::typeIdentifierWithPathExtension("txt", "public.data"));
    EXPECT_TRUE(QKUTIUtils::typeIdentifierWithPathExtension("txt", "public.plain-text"));
    EXPECT_FALSE(QKUTIUtils::typeIdentifierWithPathExtension("txt", "public.image"));
}

TEST_F(UTIUtils, TypesConformToThemselvesAndToWhatTheyAre) {
    EXPECT_TRUE(QKUTIUtils::typeIdentifier("public.plain-text", "public.data"));
    EXPECT_TRUE(QKUTIUtils::typeIdentifier("Public.Plain-Text", "public.DATA"));
    EXPECT_FALSE(QKUTIUtils::typeIdentifier("public.data", "public.plain-text"));
    EXPECT_TRUE(QKUTIUtils::typeIdentifier("org.example.unknown", "org.example.unknown"));
    EXPECT_FALSE(QKUTIUtils::typeIdentifier("org.example.unknown", "public.data"));
}

TEST_F(UTIUtils, DescriptionAndDeclarationAreTheSystems) {
    const NSDictionary declaration{{"UTTypeIdentifier", "public.plain-text"}};
    machine.uniformTypes.setDescription("public.plain-text", "text");
    machine.uniformTypes.setDeclaration("public.plain-text", declaration);
    EXPECT_EQ(QKUTIUtils::typeDescriptionForTypeIdentifier("public.plain-text"), "text");
    EXPECT_EQ(QKUTIUtils::typeDeclarationForTypeIdentifier("public.plain-text"), declaration);
}

} // namespace
} // namespace qk
