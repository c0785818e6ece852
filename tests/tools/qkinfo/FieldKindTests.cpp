// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/FieldEditor.h"
#include "tools/qkinfo/field/FieldKinds.h"

#include <gtest/gtest.h>

namespace qk::info {

namespace {

FieldEditor editorOf(std::string_view kind) {
    return FieldEditor(fieldKindNamed(kind)->makeFormatter());
}

void type(FieldEditor& editor, std::u16string_view characters) {
    for (const char16_t character : characters) {
        editor.insert(NSString(std::u16string_view(&character, 1)));
    }
}

void step(FieldEditor& editor, Motion motion, int times, Selecting selecting = Selecting::No) {
    for (int count = 0; count < times; ++count) {
        editor.move(motion, selecting);
    }
}

} // namespace

TEST(FieldOfKind, APartnerIdIsGroupedWhileItIsTyped) {
    FieldEditor editor = editorOf("partner-id");
    type(editor, u"12345678901");
    EXPECT_EQ(editor.text(), "1 234 567 890");
    EXPECT_EQ(editor.caret(), 13U);
    step(editor, Motion::Left, 10);
    editor.remove(Motion::Left);
    EXPECT_EQ(editor.text(), "134 567 890");
}

TEST(FieldOfKind, ASeparatorAloneCannotBeDeleted) {
    FieldEditor editor = editorOf("partner-id");
    type(editor, u"1234");
    step(editor, Motion::Left, 3);
    EXPECT_EQ(editor.remove(Motion::Left), EditOutcome::Done);
    EXPECT_EQ(editor.text(), "1 234");
    EXPECT_EQ(editor.caret(), 1U);
}

TEST(FieldOfKind, ALetterVanishesFromAPartnerId) {
    FieldEditor editor = editorOf("partner-id");
    type(editor, u"1234");
    step(editor, Motion::Left, 3);
    EXPECT_EQ(editor.insert("a"), EditOutcome::Done);
    EXPECT_EQ(editor.text(), "1 234");
    EXPECT_EQ(editor.caret(), 3U);
}

TEST(FieldOfKind, AMeetingIdGetsItsPrefixAndLosesItWithTheLastDigit) {
    FieldEditor editor = editorOf("meeting-id");
    type(editor, u"1");
    EXPECT_EQ(editor.text(), "m1");
    EXPECT_EQ(editor.caret(), 2U);
    editor.remove(Motion::Start);
    EXPECT_EQ(editor.text(), "");
    type(editor, u"m12345678");
    EXPECT_EQ(editor.text(), "m12-345-678");
}

TEST(FieldOfKind, ANameOrAddressStaysAsItIsTyped) {
    FieldEditor editor = editorOf("id-or-name");
    type(editor, u"10.0.0.1");
    EXPECT_EQ(editor.text(), "10.0.0.1");
    editor.remove(Motion::Start);
    type(editor, u"1234");
    EXPECT_EQ(editor.text(), "1 234");
}

TEST(FieldOfKind, ACodeRefusesLettersAndASeventhDigit) {
    FieldEditor editor = editorOf("tfa");
    EXPECT_EQ(editor.insert("a"), EditOutcome::Refused);
    type(editor, u"123456");
    EXPECT_EQ(editor.insert("7"), EditOutcome::Refused);
    EXPECT_EQ(editor.text(), "123456");
    EXPECT_EQ(editor.caret(), 6U);
}

} // namespace qk::info
