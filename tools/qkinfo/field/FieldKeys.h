// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/field/FieldEditor.h"
#include "tools/qkinfo/field/KeyDecoder.h"

namespace qk::info {

/// What a key did to a field.
enum class KeyEffect {
    Handled,   ///< it was about the text, the caret or nothing
    Refused,   ///< an edit that was not let through
    Entered,   ///< the text is finished
    Ended,     ///< there will be none
    Cancelled, ///< as by an interrupt
};

/// Does to `editor` what `key` is for.
KeyEffect apply(const Key& key, FieldEditor& editor);

} // namespace qk::info
