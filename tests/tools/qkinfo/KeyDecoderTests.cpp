// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/KeyDecoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qk::info {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Key> keysOf(std::string_view bytes) {
    return KeyDecoder().decode(bytes);
}

Key text(const NSString& characters) {
    return {KeyKind::Text, characters};
}

Key move(Motion motion, Selecting selecting = Selecting::No) {
    return {KeyKind::Move, {}, motion, selecting};
}

Key deletion(Motion motion) {
    return {KeyKind::Delete, {}, motion};
}

} // namespace

TEST(KeyDecoder, NothingGivesNoKeys) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.decode(""), IsEmpty());
    EXPECT_FALSE(decoder.isInsideSequence());
    EXPECT_THAT(decoder.giveUp(), IsEmpty());
}

TEST(KeyDecoder, CharactersAreKeysOfTheirOwn) {
    EXPECT_THAT(keysOf("1a "), ElementsAre(text("1"), text("a"), text(" ")));
    EXPECT_THAT(keysOf("\u00E9\u65E5\U0001F98A"), ElementsAre(text("\u00E9"), text("\u65E5"), text("\U0001F98A")));
}

TEST(KeyDecoder, ControlKeysEdit) {
    EXPECT_THAT(keysOf("\x01\x05"), ElementsAre(move(Motion::Start), move(Motion::End)));
    EXPECT_THAT(keysOf("\x7f\b"), ElementsAre(deletion(Motion::Left), deletion(Motion::Left)));
    EXPECT_THAT(keysOf("\x15\x0b"), ElementsAre(deletion(Motion::Start), deletion(Motion::End)));
    EXPECT_THAT(keysOf("\x04"), ElementsAre(Key{KeyKind::DeleteHere, {}, Motion::Right}));
    EXPECT_THAT(keysOf("\r\n\x03"), ElementsAre(Key{KeyKind::Enter}, Key{KeyKind::Enter}, Key{KeyKind::Cancel}));
    EXPECT_THAT(keysOf(std::string_view("\0\t\f\x1c", 4)), IsEmpty());
}

TEST(KeyDecoder, KeysWithNamesAreSequences) {
    EXPECT_THAT(keysOf("\x1b[C\x1b[D\x1bOC\x1bOD"),
                ElementsAre(move(Motion::Right), move(Motion::Left), move(Motion::Right), move(Motion::Left)));
    for (const std::string_view home : {"\x1b[H", "\x1bOH", "\x1b[1~", "\x1b[7~"}) {
        EXPECT_THAT(keysOf(home), ElementsAre(move(Motion::Start))) << home;
    }
    for (const std::string_view end : {"\x1b[F", "\x1bOF", "\x1b[4~", "\x1b[8~"}) {
        EXPECT_THAT(keysOf(end), ElementsAre(move(Motion::End))) << end;
    }
    EXPECT_THAT(keysOf("\x1b[3~"), ElementsAre(deletion(Motion::Right)));
}

TEST(KeyDecoder, ShiftSelects) {
    EXPECT_THAT(keysOf("\x1b[1;2D\x1b[1;2C"),
                ElementsAre(move(Motion::Left, Selecting::Yes), move(Motion::Right, Selecting::Yes)));
    EXPECT_THAT(keysOf("\x1b[1;2H\x1b[4;2~"),
                ElementsAre(move(Motion::Start, Selecting::Yes), move(Motion::End, Selecting::Yes)));
    // With Ctrl as well, and with Ctrl alone.
    EXPECT_THAT(keysOf("\x1b[1;6D\x1b[1;5D"), ElementsAre(move(Motion::Left, Selecting::Yes), move(Motion::Left)));
}

TEST(KeyDecoder, APasteIsOneKey) {
    EXPECT_THAT(keysOf("\x1b[200~12\n\x1b[C\x7f\u00E9\x1b[201~3"),
                ElementsAre(Key{KeyKind::Paste, "12\n\x1b[C\x7f\u00E9"}, text("3")));
    EXPECT_THAT(keysOf("\x1b[200~\x1b[201~"), ElementsAre(Key{KeyKind::Paste}));
    EXPECT_THAT(keysOf("\x1b[201~1"), ElementsAre(text("1")));
}

TEST(KeyDecoder, APasteIsWaitedForAndIsNoSequenceToGiveUp) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.decode("\x1b[200~12\x1b[20"), IsEmpty());
    EXPECT_FALSE(decoder.isInsideSequence());
    EXPECT_THAT(decoder.giveUp(), IsEmpty());
    EXPECT_THAT(decoder.decode("1~"), ElementsAre(Key{KeyKind::Paste, "12"}));
}

TEST(KeyDecoder, PiecesGiveTheSameKeys) {
    const std::string bytes = "1\x1b[1;2D\U0001F98A\x1b[200~a\x1b[201~\x1bOC\xff\x7f\x1b[[A\xe2\x82x\x1bx";
    const std::vector<Key> whole = keysOf(bytes);
    EXPECT_EQ(whole.size(), 9U);
    KeyDecoder decoder;
    std::vector<Key> pieces;
    for (const char byte : bytes) {
        for (const Key& key : decoder.decode({&byte, 1})) {
            pieces.push_back(key);
        }
    }
    EXPECT_EQ(pieces, whole);
}

TEST(KeyDecoder, EscAloneCancelsOnceNothingFollows) {
    KeyDecoder decoder;
    EXPECT_THAT(decoder.decode("\x1b"), IsEmpty());
    EXPECT_TRUE(decoder.isInsideSequence());
    EXPECT_THAT(decoder.giveUp(), ElementsAre(Key{KeyKind::Cancel}));
    EXPECT_FALSE(decoder.isInsideSequence());
    EXPECT_THAT(decoder.giveUp(), IsEmpty());
    EXPECT_THAT(decoder.decode("[C"), ElementsAre(text("["), text("C")));
}

TEST(KeyDecoder, EscTwiceCancelsAtOnce) {
    EXPECT_THAT(keysOf("\x1b\x1b"), ElementsAre(Key{KeyKind::Cancel}));
}

TEST(KeyDecoder, ASequenceThatNeverEndsIsGivenUp) {
    for (const std::string_view begun : {"\x1b[", "\x1b[1;", "\x1bO", "\x1b[["}) {
        KeyDecoder decoder;
        EXPECT_THAT(decoder.decode(begun), IsEmpty());
        EXPECT_TRUE(decoder.isInsideSequence());
        EXPECT_THAT(decoder.giveUp(), IsEmpty());
        EXPECT_THAT(decoder.decode("1"), ElementsAre(text("1")));
    }
}

TEST(KeyDecoder, ASequenceThatIsBrokenOffHidesNothingElse) {
    EXPECT_THAT(keysOf("\x1b[1\x1b[C"), ElementsAre(move(Motion::Right)));
    EXPECT_THAT(keysOf("\x1b[1\r"), ElementsAre(Key{KeyKind::Enter}));
    EXPECT_THAT(keysOf("\x1b[1\u00E9"), ElementsAre(text("\u00E9")));
    EXPECT_THAT(keysOf("\x1b[[\x7f"), ElementsAre(deletion(Motion::Left)));
}

TEST(KeyDecoder, OtherKeysAreLeftOut) {
    for (const std::string_view other :
         {"\x1b[A", "\x1b[15~", "\x1b[[A", "\x1bOP", "\x1b[Z", "\x1b[24;80R", "\x1b[?1;2c", "\x1b[1;0D",
          "\x1b[99999999999~", "\x1b[1;2;3D", "\x1b[ D", "\x1b[<0;1;1M"}) {
        EXPECT_THAT(keysOf(std::string(other) + "1"), ElementsAre(text("1"))) << other.substr(1);
    }
    EXPECT_THAT(keysOf("\x1b[" + std::string(100, '1') + "D1"), ElementsAre(text("1")));
}

TEST(KeyDecoder, KeysWithAltAreLeftOut) {
    EXPECT_THAT(keysOf("\x1b"
                       "1"
                       "\x1b\x7f"
                       "\x1b\r"
                       "\x1b\U0001F98A"
                       "2"),
                ElementsAre(text("2")));
}

TEST(KeyDecoder, MalformedBytesBecomeReplacementCharacters) {
    EXPECT_THAT(keysOf("\xff"
                       "1"),
                ElementsAre(text("\uFFFD"), text("1")));
    EXPECT_THAT(keysOf("\x80\xc0"), ElementsAre(text("\uFFFD"), text("\uFFFD")));
    EXPECT_THAT(keysOf("\xe2\x82"
                       "1"),
                ElementsAre(text("\uFFFD"), text("1")));
    EXPECT_THAT(keysOf("\xe2\x82\x1b[C"), ElementsAre(text("\uFFFD"), move(Motion::Right)));
    EXPECT_THAT(keysOf("\xe2\xc3\xa9"), ElementsAre(text("\uFFFD"), text("\u00E9")));
}

} // namespace qk::info
