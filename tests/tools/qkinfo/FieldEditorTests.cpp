// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/ScriptedFormatter.h"
#include "tools/qkinfo/field/FieldEditor.h"

#include <gtest/gtest.h>

#include <memory>

namespace qk::info {

namespace {

FieldEditor editorWith(ScriptedFormatter::Judge judge) {
    return FieldEditor(std::make_shared<ScriptedFormatter>(std::move(judge)));
}

/// A field that takes everything, with `text` in it and the caret behind it.
FieldEditor plainEditor(const NSString& text) {
    FieldEditor editor = editorWith([](ProposedEdit&) { return true; });
    editor.insert(text);
    return editor;
}

void step(FieldEditor& editor, Motion motion, int times, Selecting selecting = Selecting::No) {
    for (int count = 0; count < times; ++count) {
        editor.move(motion, selecting);
    }
}

} // namespace

TEST(FieldEditor, AnEmptyFieldHasNothingToDelete) {
    FieldEditor editor = editorWith([](ProposedEdit&) {
        ADD_FAILURE() << "asked";
        return true;
    });
    for (const Motion motion : {Motion::Left, Motion::Right, Motion::Start, Motion::End}) {
        EXPECT_EQ(editor.remove(motion), EditOutcome::Nothing);
        editor.move(motion, Selecting::Yes);
        EXPECT_EQ(editor.caret(), 0U);
        EXPECT_EQ(editor.selection(), NSRange());
    }
    EXPECT_EQ(editor.insert({}), EditOutcome::Nothing);
    EXPECT_EQ(editor.paste("\r\n"), EditOutcome::Nothing);
    EXPECT_EQ(editor.text(), "");
}

TEST(FieldEditor, AnAcceptedEditIsTakenAsProposed) {
    FieldEditor editor = editorWith([](ProposedEdit& edit) {
        edit.text = "something else";
        edit.selection = {5, 3};
        return true;
    });
    EXPECT_EQ(editor.insert("ab"), EditOutcome::Done);
    EXPECT_EQ(editor.text(), "ab");
    EXPECT_EQ(editor.selection(), (NSRange{2, 0}));
}

TEST(FieldEditor, ARefusedEditChangesNothing) {
    bool accepts = true;
    FieldEditor editor = editorWith([&](ProposedEdit& edit) {
        edit.selection.location = accepts ? edit.selection.location : 0;
        return accepts;
    });
    editor.insert("abc");
    editor.move(Motion::Left, Selecting::Yes);
    accepts = false;
    EXPECT_EQ(editor.insert("x"), EditOutcome::Refused);
    EXPECT_EQ(editor.remove(Motion::Left), EditOutcome::Refused);
    EXPECT_EQ(editor.text(), "abc");
    EXPECT_EQ(editor.selection(), (NSRange{2, 1}));
    EXPECT_EQ(editor.caret(), 2U);
}

TEST(FieldEditor, ACorrectedEditShowsWhatTheFormatterLeft) {
    FieldEditor editor = editorWith([](ProposedEdit& edit) {
        edit.text = "corrected";
        edit.selection = {3, 2};
        return false;
    });
    EXPECT_EQ(editor.insert("x"), EditOutcome::Done);
    EXPECT_EQ(editor.text(), "corrected");
    EXPECT_EQ(editor.selection(), (NSRange{3, 2}));
    EXPECT_EQ(editor.caret(), 5U);
}

TEST(FieldEditor, ACorrectionToAnEqualTextIsNoRefusal) {
    FieldEditor editor = editorWith([](ProposedEdit& edit) {
        edit.text = NSString(std::u16string(edit.text.units()));
        return false;
    });
    EXPECT_EQ(editor.insert("1"), EditOutcome::Done);
    EXPECT_EQ(editor.text(), "1");
    EXPECT_EQ(editor.caret(), 1U);
}

TEST(FieldEditor, ASelectionOutsideOfTheTextEndsWithIt) {
    for (const NSRange range : {NSRange{7, 0}, NSRange{NSNotFound, 4}, NSRange{2, ~std::uint64_t{0}}}) {
        FieldEditor editor = editorWith([&](ProposedEdit& edit) {
            edit.text = "abcd";
            edit.selection = range;
            return false;
        });
        editor.insert("x");
        EXPECT_EQ(editor.caret(), 4U);
        EXPECT_EQ(editor.selection().location + editor.selection().length, 4U);
    }
}

TEST(FieldEditor, TypingProposesTheCaretBehindWhatWasTyped) {
    int asked = 0;
    FieldEditor editor = editorWith([&](ProposedEdit& edit) {
        if (++asked == 2) {
            EXPECT_EQ(edit.text, "aXYd");
            EXPECT_EQ(edit.selection, (NSRange{3, 0}));
            EXPECT_EQ(edit.original, "abcd");
            EXPECT_EQ(edit.originalSelection, (NSRange{1, 2}));
        }
        return true;
    });
    editor.insert("abcd");
    editor.move(Motion::Left, Selecting::No);
    step(editor, Motion::Left, 2, Selecting::Yes);
    editor.insert("XY");
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(editor.caret(), 3U);
}

TEST(FieldEditor, ADeletionProposesWhatIsDeletedAsTheSelection) {
    struct Case {
        Motion motion;
        NSString text;
        NSRange deleted;
    };
    for (const Case& expected : {Case{Motion::Left, "acd", {1, 1}}, Case{Motion::Right, "abd", {2, 1}},
                                 Case{Motion::Start, "cd", {0, 2}}, Case{Motion::End, "ab", {2, 2}}}) {
        int asked = 0;
        FieldEditor editor = editorWith([&](ProposedEdit& edit) {
            if (++asked == 2) {
                EXPECT_EQ(edit.text, expected.text);
                EXPECT_EQ(edit.selection, (NSRange{expected.deleted.location, 0}));
                EXPECT_EQ(edit.original, "abcd");
                EXPECT_EQ(edit.originalSelection, expected.deleted);
            }
            return true;
        });
        editor.insert("abcd");
        step(editor, Motion::Left, 2);
        EXPECT_EQ(editor.remove(expected.motion), EditOutcome::Done);
        EXPECT_EQ(editor.text(), expected.text);
        EXPECT_EQ(asked, 2);
    }
}

TEST(FieldEditor, ASelectionIsWhatAnyDeletionDeletes) {
    for (const Motion motion : {Motion::Left, Motion::Right, Motion::Start, Motion::End}) {
        FieldEditor editor = plainEditor("abcd");
        editor.move(Motion::Left, Selecting::No);
        step(editor, Motion::Left, 2, Selecting::Yes);
        EXPECT_EQ(editor.remove(motion), EditOutcome::Done);
        EXPECT_EQ(editor.text(), "ad");
        EXPECT_EQ(editor.caret(), 1U);
    }
}

TEST(FieldEditor, TheCaretStaysWithinTheText) {
    FieldEditor editor = plainEditor("ab");
    editor.move(Motion::Right, Selecting::No);
    EXPECT_EQ(editor.caret(), 2U);
    step(editor, Motion::Left, 3);
    EXPECT_EQ(editor.caret(), 0U);
    EXPECT_EQ(editor.remove(Motion::Left), EditOutcome::Nothing);
    editor.move(Motion::End, Selecting::No);
    EXPECT_EQ(editor.remove(Motion::Right), EditOutcome::Nothing);
    EXPECT_EQ(editor.text(), "ab");
}

TEST(FieldEditor, AStepWithoutShiftGivesTheSelectionUp) {
    struct Case {
        Motion motion;
        std::size_t caret;
    };
    for (const Case& expected :
         {Case{Motion::Left, 1}, Case{Motion::Right, 3}, Case{Motion::Start, 0}, Case{Motion::End, 4}}) {
        for (const bool backwards : {false, true}) {
            FieldEditor editor = plainEditor("abcd");
            step(editor, Motion::Left, backwards ? 1 : 3);
            step(editor, backwards ? Motion::Left : Motion::Right, 2, Selecting::Yes);
            ASSERT_EQ(editor.selection(), (NSRange{1, 2}));
            editor.move(expected.motion, Selecting::No);
            EXPECT_EQ(editor.caret(), expected.caret);
            EXPECT_EQ(editor.selection(), (NSRange{expected.caret, 0}));
        }
    }
}

TEST(FieldEditor, ShiftExtendsTheSelectionFromWhereItBegan) {
    FieldEditor editor = plainEditor("abcd");
    step(editor, Motion::Left, 2);
    editor.move(Motion::Start, Selecting::Yes);
    EXPECT_EQ(editor.selection(), (NSRange{0, 2}));
    editor.move(Motion::End, Selecting::Yes);
    EXPECT_EQ(editor.selection(), (NSRange{2, 2}));
    EXPECT_EQ(editor.caret(), 4U);
    step(editor, Motion::Left, 2, Selecting::Yes);
    EXPECT_EQ(editor.selection(), (NSRange{2, 0}));
}

TEST(FieldEditor, StepsAndDeletionsKeepCharactersWhole) {
    // A fox of two units, an e with an accent of its own, and a family that joiners make.
    FieldEditor editor = plainEditor("\U0001F98Ae\u0301\U0001F468\u200D\U0001F467z");
    const std::size_t length = editor.text().length();
    ASSERT_EQ(length, 10U);
    step(editor, Motion::Left, 2);
    EXPECT_EQ(editor.caret(), 4U);
    editor.move(Motion::Left, Selecting::No);
    EXPECT_EQ(editor.caret(), 2U);
    EXPECT_EQ(editor.remove(Motion::Left), EditOutcome::Done);
    EXPECT_EQ(editor.text(), "e\u0301\U0001F468\u200D\U0001F467z");
    editor.move(Motion::Right, Selecting::No);
    EXPECT_EQ(editor.caret(), 2U);
    editor.remove(Motion::Right);
    EXPECT_EQ(editor.text(), "e\u0301z");
}

TEST(FieldEditor, ACaretInsideOfACharacterLeavesIt) {
    FieldEditor editor = editorWith([](ProposedEdit& edit) {
        edit.text = "a\U0001F98Ab";
        edit.selection = {2, 0};
        return false;
    });
    editor.insert("x");
    ASSERT_EQ(editor.caret(), 2U);
    editor.move(Motion::Left, Selecting::No);
    EXPECT_EQ(editor.caret(), 1U);
    editor.insert("x");
    editor.move(Motion::Right, Selecting::No);
    EXPECT_EQ(editor.caret(), 3U);
}

TEST(FieldEditor, APasteIsBroughtOntoOneLine) {
    FieldEditor editor = plainEditor("");
    EXPECT_EQ(editor.paste("a\nb\r\nc\rd\u2028e\tf\n\n"), EditOutcome::Done);
    EXPECT_EQ(editor.text(), "a b c d e\tf");
    EXPECT_EQ(editor.caret(), 11U);
}

} // namespace qk::info
