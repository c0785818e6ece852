// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/field/FieldEditor.h"

#include <string>
#include <string_view>
#include <vector>

namespace qk::info {

enum class KeyKind {
    Text,       ///< a character
    Paste,      ///< a text that came as one
    Move,       ///< of the caret
    Delete,     ///< what lies on the way of `motion`
    DeleteHere, ///< Ctrl-D: the character behind the caret, and in an empty field the end
    Enter,
    Cancel,
};

struct Key {
    KeyKind kind = KeyKind::Text;
    NSString text = {};                  ///< of a character or a paste
    Motion motion = Motion::Left;        ///< of a move or a deletion
    Selecting selecting = Selecting::No; ///< of a move

    [[nodiscard]] friend bool operator==(const Key&, const Key&) = default;
};

/// Turns what a terminal sends into keys. Sequences may arrive in pieces.
///
/// Keys that mean nothing here are left out, those with Alt among them. Malformed UTF-8 becomes U+FFFD.
class KeyDecoder {
public:
    /// The keys that `bytes` complete, in order.
    [[nodiscard]] std::vector<Key> decode(std::string_view bytes);

    /// Whether a sequence has begun. Its first byte is what the Esc key sends, too: `giveUp` when nothing more comes.
    [[nodiscard]] bool isInsideSequence() const;

    /// Nothing more has come. The keys that this makes of a sequence that has begun.
    [[nodiscard]] std::vector<Key> giveUp();

private:
    enum class State {
        Text,
        Escape,      // behind ESC
        Sequence,    // behind ESC [
        SingleShift, // behind ESC O
        Console,     // behind ESC [ [, which a function key of the console begins with
        Paste,
    };

    void decode(char byte);
    void decodeText(char byte);
    void decodeControl(char byte);
    void decodeBehindEscape(char byte);
    void decodeSequence(char byte);
    void decodePaste(char byte);
    void endSequence(char final);
    void addText(std::string_view utf8);
    void add(Key key);

    State state_ = State::Text;
    bool isWithAlt_ = false; // the character that comes next
    std::string character_;  // of several bytes, as far as it has come
    std::string parameters_; // of a sequence
    std::string paste_;
    std::vector<Key> keys_;
};

} // namespace qk::info
