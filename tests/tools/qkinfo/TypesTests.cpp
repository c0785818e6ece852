// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"
#include "tools/qkinfo/CommandLine.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/TextRenderer.h"
#include "tools/qkinfo/commands/Types.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace qk::info {

namespace {

using nlohmann::json;
using testing::ElementsAre;

class Types : public testing::Test {
protected:
    Types() {
        declare("public.plain-text", {"public.text"});
        declare("public.text", {"public.data", "public.content"});
        declare("public.data", {"public.item"});
        declare("public.content", {});
        declare("public.item", {});
        machine.uniformTypes.setDescription("public.plain-text", "text");
        machine.uniformTypes.setTypesForExtension("txt", {"public.plain-text", "org.example.text"});
        machine.uniformTypes.declareType("dyn.abc", {"public.data"});
        machine.uniformTypes.setTypesForExtension("qq", {"dyn.abc"});
    }
    void declare(const NSString& type, const std::vector<NSString>& parents) {
        machine.uniformTypes.declareType(type, parents);
        machine.uniformTypes.setDeclaration(
            type, NSDictionary{{"UTTypeIdentifier", type}, {"UTTypeConformsTo", NSArray(parents)}});
    }
    [[nodiscard]] static json jsonOf(const std::string& name) {
        return json::parse(renderJson(std::vector{typesSection({{name}})}))["types"][0];
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

} // namespace

TEST_F(Types, ExtensionThatNobodyKnowsIsNotReported) {
    EXPECT_EQ(jsonOf("unheard-of"), json::parse(R"({"name": "unheard-of", "extension": "unheard-of",
        "identifier": null, "identifiers": null, "description": null, "conforms_to": null})"));
}

TEST_F(Types, TypesAreToldWithAllThatTheyConformTo) {
    EXPECT_EQ(jsonOf("notes/a.txt"), json::parse(R"({"name": "notes/a.txt", "extension": "txt",
        "identifier": "public.plain-text", "identifiers": ["public.plain-text", "org.example.text"],
        "description": "text", "conforms_to": ["public.text", "public.data", "public.content", "public.item"]})"));
}

TEST_F(Types, DynamicTypeConformsToAGeneralOne) {
    EXPECT_EQ(jsonOf("qq")["conforms_to"], json::parse(R"(["public.data", "public.item"])"));
}

TEST_F(Types, TextHasASectionForEachName) {
    const TypesOptions options{{"txt", "qq"}};
    const std::string text = renderText(typesSections(options), {});
    EXPECT_THAT(text, testing::StartsWith("txt\n"));
    EXPECT_THAT(text, testing::HasSubstr("\nqq\n"));
    EXPECT_THAT(text, testing::HasSubstr("public.plain-text"));
}

TEST_F(Types, ExtensionIsWhatStandsBehindTheLastDot) {
    EXPECT_EQ(extensionMeant("txt"), "txt");
    EXPECT_EQ(extensionMeant(".txt"), "txt");
    EXPECT_EQ(extensionMeant("a.tar.gz"), "gz");
    EXPECT_EQ(extensionMeant("/etc/passwd"), "");
    EXPECT_EQ(extensionMeant("/home/anna/.profile"), "");
    EXPECT_EQ(extensionMeant("./a.txt"), "txt");
    EXPECT_EQ(extensionMeant(""), "");
}

TEST(TypesCommandLine, TakesNamesOfAnyForm) {
    const auto parsed = parseCommandLine({"types", "--json", "txt", "[a].png", "--", "-x"});
    const auto* invocation = std::get_if<TypesInvocation>(&parsed);
    ASSERT_NE(invocation, nullptr);
    EXPECT_TRUE(invocation->json);
    EXPECT_THAT(invocation->options.names, ElementsAre("txt", "[a].png", "-x"));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseCommandLine({"types"})));
}

} // namespace qk::info
