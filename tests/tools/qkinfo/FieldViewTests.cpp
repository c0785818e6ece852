// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/ScriptedFormatter.h"
#include "tools/qkinfo/field/FieldCells.h"
#include "tools/qkinfo/field/FieldView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace qk::info {

namespace {

using testing::StartsWith;

FieldEditor editorWith(const NSString& text) {
    FieldEditor editor(std::make_shared<ScriptedFormatter>([](ProposedEdit&) { return true; }));
    editor.insert(text);
    return editor;
}

void step(FieldEditor& editor, Motion motion, int times, Selecting selecting = Selecting::No) {
    for (int count = 0; count < times; ++count) {
        editor.move(motion, selecting);
    }
}

std::string line(const std::string& text, std::size_t caret) {
    return "\r" + text + "\x1b[K\r" + (caret == 0 ? "" : "\x1b[" + std::to_string(caret) + "C");
}

std::vector<std::size_t> columnsIn(const NSString& text) {
    std::vector<std::size_t> columns;
    for (const FieldCell& cell : fieldCells(text)) {
        columns.push_back(cell.columns);
    }
    return columns;
}

} // namespace

TEST(FieldCells, AnEmptyTextHasNone) {
    EXPECT_TRUE(fieldCells("").empty());
    EXPECT_EQ(shownInField(""), "");
}

TEST(FieldCells, ACharacterWithItsMarksIsOne) {
    EXPECT_EQ(columnsIn("a\u65E5\U0001F98Ae\u0301"), (std::vector<std::size_t>{1, 2, 2, 1}));
    EXPECT_EQ(fieldCells("e\u0301x").front().units, (NSRange{0, 2}));
    EXPECT_EQ(fieldCells("\U0001F468\u200D\U0001F467").size(), 1U);
}

TEST(FieldCells, AMarkWithoutACharacterStandsOnABlank) {
    EXPECT_EQ(shownInField("\u0301x"), " \u0301x");
    EXPECT_EQ(columnsIn("\u0301x"), (std::vector<std::size_t>{1, 1}));
    // What is spelled out takes no marks.
    EXPECT_EQ(shownInField("\t\u0301"), "\\x09 \u0301");
}

TEST(FieldCells, WhatWouldSteerATerminalIsSpelledOut) {
    EXPECT_EQ(shownInField("a\x1b[31m\t  \u202E "), "a\\x1B[31m\\x09  \\u202E ");
    EXPECT_EQ(columnsIn("\x1b"), (std::vector<std::size_t>{4}));
}

TEST(FieldCells, HalfACharacterIsShownAsOne) {
    const NSString text(std::u16string{u'a', 0xD83E, u'b', 0xDD8A, 0xD83E});
    EXPECT_EQ(shownInField(text), "a\uFFFDb\uFFFD\uFFFD");
    EXPECT_EQ(fieldCells(text).size(), 5U);
}

TEST(FieldView, AnEmptyFieldIsItsTitleAndTheCaret) {
    FieldView view("Partner ID");
    EXPECT_EQ(view.drawn(editorWith(""), 40), line("Partner ID: ", 12));
}

TEST(FieldView, TheCaretIsWhereTheEditorHasIt) {
    FieldView view("T");
    FieldEditor editor = editorWith("a\u65E5b");
    EXPECT_EQ(view.drawn(editor, 40), line("T: a\u65E5b", 7));
    editor.move(Motion::Left, Selecting::No);
    EXPECT_EQ(view.drawn(editor, 40), line("T: a\u65E5b", 6));
    editor.move(Motion::Left, Selecting::No);
    EXPECT_EQ(view.drawn(editor, 40), line("T: a\u65E5b", 4));
}

TEST(FieldView, TheSelectionIsInverse) {
    FieldView view("T");
    FieldEditor editor = editorWith("abcd");
    editor.move(Motion::Left, Selecting::Yes);
    EXPECT_EQ(view.drawn(editor, 40), line("T: abc\x1b[7md\x1b[27m", 6));
    editor.move(Motion::Start, Selecting::No);
    step(editor, Motion::Right, 2, Selecting::Yes);
    EXPECT_EQ(view.drawn(editor, 40), line("T: \x1b[7mab\x1b[27mcd", 5));
}

TEST(FieldView, ALongTextScrollsWithTheCaret) {
    FieldView view("T");
    FieldEditor editor = editorWith("0123456789");
    EXPECT_EQ(view.drawn(editor, 12), line("T: 23456789", 11));
    step(editor, Motion::Left, 8);
    EXPECT_EQ(view.drawn(editor, 12), line("T: 23456789", 3));
    editor.move(Motion::Left, Selecting::No);
    EXPECT_EQ(view.drawn(editor, 12), line("T: 12345678", 3));
    editor.move(Motion::End, Selecting::No);
    EXPECT_EQ(view.drawn(editor, 12), line("T: 23456789", 11));
}

TEST(FieldView, RoomThatATextCouldTakeIsTaken) {
    FieldView view("T");
    FieldEditor editor = editorWith("0123456789");
    static_cast<void>(view.drawn(editor, 12));
    editor.remove(Motion::Left);
    EXPECT_EQ(view.drawn(editor, 12), line("T: 12345678", 11));
    EXPECT_EQ(view.drawn(editor, 40), line("T: 012345678", 12));
}

TEST(FieldView, AWideCharacterIsShownWholeOrNotAtAll) {
    FieldView view("T");
    FieldEditor editor = editorWith("\u65E5\u65E5\u65E5\u65E5\u65E5");
    EXPECT_EQ(view.drawn(editor, 13), line("T: \u65E5\u65E5\u65E5\u65E5", 11));
    editor.move(Motion::Start, Selecting::No);
    EXPECT_EQ(view.drawn(editor, 13), line("T: \u65E5\u65E5\u65E5\u65E5", 3));
}

TEST(FieldView, ATitleThatLeavesNoRoomIsLeftOut) {
    FieldView view("Partner ID");
    EXPECT_EQ(view.drawn(editorWith("12"), 21), line("Partner ID: 12", 14));
    EXPECT_EQ(view.drawn(editorWith("12"), 20), line("12", 2));
    EXPECT_EQ(view.drawn(editorWith("12"), 2), line("2", 1));
    EXPECT_EQ(view.drawn(editorWith("12"), 1), line("", 0));
    EXPECT_EQ(view.drawn(editorWith("12"), 0), line("", 0));
    EXPECT_EQ(view.drawn(editorWith("\u65E5"), 2), line("", 0));
}

TEST(FieldView, ANarrowerTerminalHasBrokenTheLine) {
    FieldEditor editor = editorWith("0123456789");
    FieldView view("T");
    static_cast<void>(view.drawn(editor, 40)); // the caret in column 13
    EXPECT_EQ(view.drawnAfterResize(editor, 5), "\x1b[2A\r\x1b[J" + line("6789", 4));
    EXPECT_THAT(view.drawnAfterResize(editor, 40), StartsWith("\r\x1b[J"));
}

TEST(FieldView, ALineThatIsJustFilledIsNotBroken) {
    FieldEditor editor = editorWith("0123456789");
    FieldView view("T");
    static_cast<void>(view.drawn(editor, 40));
    EXPECT_THAT(view.drawnAfterResize(editor, 13), StartsWith("\r"));
    static_cast<void>(view.drawn(editor, 40));
    editor.move(Motion::Left, Selecting::No);
    static_cast<void>(view.drawn(editor, 40)); // the caret in column 12, where the second line begins
    EXPECT_THAT(view.drawnAfterResize(editor, 12), StartsWith("\x1b[1A\r"));
}

TEST(FieldView, WhatStaysBehindIsTheBeginningOfTheText) {
    const FieldView view("T");
    EXPECT_EQ(view.drawnAtEnd("", 40), "\rT: \x1b[K");
    EXPECT_EQ(view.drawnAtEnd("0123456789", 12), "\rT: 01234567\x1b[K");
    EXPECT_EQ(view.drawnAtEnd("1\t2", 40), "\rT: 1\\x092\x1b[K");
}

} // namespace qk::info
