// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/FieldKeys.h"

namespace qk::info {

KeyEffect apply(const Key& key, FieldEditor& editor) {
    EditOutcome outcome = EditOutcome::Nothing;
    switch (key.kind) {
    case KeyKind::Text: outcome = editor.insert(key.text); break;
    case KeyKind::Paste: outcome = editor.paste(key.text); break;
    case KeyKind::Move: editor.move(key.motion, key.selecting); break;
    case KeyKind::DeleteHere:
        if (editor.text().isEmpty()) {
            return KeyEffect::Ended;
        }
        [[fallthrough]];
    case KeyKind::Delete: outcome = editor.remove(key.motion); break;
    case KeyKind::Enter: return KeyEffect::Entered;
    case KeyKind::Cancel: return KeyEffect::Cancelled;
    }
    return outcome == EditOutcome::Refused ? KeyEffect::Refused : KeyEffect::Handled;
}

} // namespace qk::info
