// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/FieldKeys.h"
#include "tools/qkinfo/field/Format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace qk::info {

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<FormattedText> formattedAs(std::string_view kind, std::vector<std::string> texts) {
    return formatted({fieldKindNamed(kind), std::move(texts)});
}

} // namespace

TEST(FieldKinds, AnUnknownNameIsNone) {
    EXPECT_EQ(fieldKindNamed(""), nullptr);
    EXPECT_EQ(fieldKindNamed("partner"), nullptr);
}

TEST(FieldKinds, EachHasANameATitleAndAFormatter) {
    for (const FieldKind& kind : fieldKinds()) {
        EXPECT_EQ(fieldKindNamed(kind.name), &kind);
        EXPECT_FALSE(kind.title.empty());
        EXPECT_NE(kind.makeFormatter(), nullptr);
    }
}

TEST(Format, NoTextsGiveNothing) {
    EXPECT_THAT(formattedAs("tfa", {}), IsEmpty());
    EXPECT_EQ(renderFormatted({}), "");
    EXPECT_EQ(json::parse(renderFormattedJson(*fieldKindNamed("tfa"), {})),
              json::parse(R"({"kind": "tfa", "texts": []})"));
}

TEST(Format, ShowsWhatAFieldShowsAfterAPaste) {
    struct Case {
        std::string_view kind;
        std::string text;
        std::string line;
    };
    for (const Case& expected : {
             Case{"partner-id", "", "\n"},
             Case{"partner-id", "12a34", "1 234\n"},
             Case{"partner-id", "12345678901", "1 234 567 890\n"},
             Case{"partner-id", "abc", "\n"},
             Case{"id-or-name", "10.0.0.1", "10.0.0.1\n"},
             Case{"id-or-name", "1234", "1 234\n"},
             Case{"id-or-name", "12 34", "1 234\n"},
             Case{"id-or-name", "a\nb\n", "a b\n"},
             Case{"id-or-name", "a\x1b[0m", "a\\x1B[0m\n"},
             Case{"meeting-id", "", "\n"},
             Case{"meeting-id", "x", "m\n"},
             Case{"meeting-id", "123456789", "m12-345-678\n"},
             Case{"meeting-id", "m123", "m12-3\n"},
             Case{"support-id", "s12-345-678", "s12-345-678\n"},
             Case{"tfa", "", "\n"},
             Case{"tfa", "123456\n", "123456\n"},
             Case{"tfa", "1234567", ""},
             Case{"tfa", "12a", ""},
             Case{"count", "", "\n"},
             Case{"count", "99", "99\n"},
             Case{"count", "100", "99+\n"},
         }) {
        EXPECT_EQ(renderFormatted(formattedAs(expected.kind, {expected.text})), expected.line)
            << expected.kind << " " << expected.text;
    }
}

TEST(Format, EveryTextHasAnEmptyFieldOfItsOwn) {
    EXPECT_EQ(renderFormatted(formattedAs("partner-id", {"1234", "", "5678"})), "1 234\n\n5 678\n");
}

TEST(Format, NamesTheTextsThatAreRefused) {
    const FieldKind& kind = *fieldKindNamed("tfa");
    const std::vector<FormattedText> texts = formattedAs("tfa", {"1", "12a", "2", "b"});
    EXPECT_EQ(renderFormatted(texts), "1\n2\n");
    EXPECT_THAT(refusals(kind, texts),
                ElementsAre("a field of the kind tfa refuses \"12a\"", "a field of the kind tfa refuses \"b\""));
    EXPECT_EQ(json::parse(renderFormattedJson(kind, texts))["texts"][1],
              json::parse(R"({"text": "12a", "shown": null})"));
}

TEST(Format, JsonHasTheTextsAsTheyAre) {
    const FieldKind& kind = *fieldKindNamed("id-or-name");
    const std::string text = renderFormattedJson(kind, formattedAs(kind.name, {"a\t\u00E9\n"}));
    EXPECT_EQ(json::parse(text)["texts"][0], json::parse("{\"text\": \"a\\t\u00E9\\n\", \"shown\": \"a\\t\u00E9\"}"));
}

TEST(FieldKeys, EditTheText) {
    FieldEditor editor(fieldKindNamed("partner-id")->makeFormatter());
    EXPECT_EQ(apply({KeyKind::Text, "1"}, editor), KeyEffect::Handled);
    EXPECT_EQ(apply({KeyKind::Paste, "234\n"}, editor), KeyEffect::Handled);
    EXPECT_EQ(editor.text(), "1 234");
    EXPECT_EQ(apply({KeyKind::Move, {}, Motion::Left, Selecting::Yes}, editor), KeyEffect::Handled);
    EXPECT_EQ(editor.selection(), (NSRange{4, 1}));
    EXPECT_EQ(apply({KeyKind::Delete, {}, Motion::Left}, editor), KeyEffect::Handled);
    EXPECT_EQ(editor.text(), "123");
    EXPECT_EQ(apply({KeyKind::Delete, {}, Motion::Start}, editor), KeyEffect::Handled);
    EXPECT_EQ(apply({KeyKind::Delete, {}, Motion::Start}, editor), KeyEffect::Handled);
    EXPECT_EQ(editor.text(), "");
}

TEST(FieldKeys, TellWhatIsRefused) {
    FieldEditor editor(fieldKindNamed("tfa")->makeFormatter());
    EXPECT_EQ(apply({KeyKind::Text, "a"}, editor), KeyEffect::Refused);
    EXPECT_EQ(apply({KeyKind::Text, "1"}, editor), KeyEffect::Handled);
}

TEST(FieldKeys, EndTheField) {
    FieldEditor editor(fieldKindNamed("tfa")->makeFormatter());
    EXPECT_EQ(apply({KeyKind::DeleteHere, {}, Motion::Right}, editor), KeyEffect::Ended);
    EXPECT_EQ(apply({KeyKind::Enter}, editor), KeyEffect::Entered);
    EXPECT_EQ(apply({KeyKind::Cancel}, editor), KeyEffect::Cancelled);
    apply({KeyKind::Text, "1"}, editor);
    EXPECT_EQ(apply({KeyKind::DeleteHere, {}, Motion::Right}, editor), KeyEffect::Handled);
    EXPECT_EQ(editor.text(), "1");
    editor.move(Motion::Start, Selecting::No);
    EXPECT_EQ(apply({KeyKind::DeleteHere, {}, Motion::Right}, editor), KeyEffect::Handled);
    EXPECT_EQ(editor.text(), "");
}

} // namespace qk::info
