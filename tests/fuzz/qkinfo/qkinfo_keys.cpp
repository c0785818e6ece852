// SPDX-License-Identifier: Apache-2.0
#include "tests/fuzz/linux/Require.h"
#include "tools/qkinfo/field/FieldKeys.h"
#include "tools/qkinfo/field/FieldKinds.h"
#include "tools/qkinfo/field/FieldView.h"
#include "tools/qkinfo/field/KeyDecoder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

/// What a terminal sends, through a field: keys do not depend on the pieces that they arrive in, the selection stays
/// inside the text, and what is drawn steers the terminal only as the field does.
namespace {

using qk::fuzz::require;
using namespace qk::info;

std::vector<Key> keysOf(std::string_view bytes, std::size_t piece) {
    KeyDecoder decoder;
    std::vector<Key> keys;
    for (std::size_t index = 0; index < bytes.size(); index += piece) {
        std::ranges::move(decoder.decode(bytes.substr(index, piece)), std::back_inserter(keys));
    }
    std::ranges::move(decoder.giveUp(), std::back_inserter(keys));
    return keys;
}

void remove(std::string& text, std::string_view sequence) {
    for (std::size_t found = text.find(sequence); found != std::string::npos; found = text.find(sequence, found)) {
        text.erase(found, sequence.size());
    }
}

void checkDrawn(std::string line) {
    require(line.starts_with('\r'));
    line.erase(0, 1);
    const std::size_t back = line.find('\r');
    require(back != std::string::npos && line.find('\r', back + 1) == std::string::npos);
    // Behind the line there is only where the caret goes.
    line.erase(back);
    for (const std::string_view own : {"\x1b[K", "\x1b[7m", "\x1b[27m"}) {
        remove(line, own);
    }
    require(std::ranges::none_of(line, [](char byte) { return (byte >= 0 && byte < ' ') || byte == '\x7f'; }));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const FieldKind& kind = fieldKinds()[data[0] % fieldKinds().size()];
    const std::size_t columns = data[1];
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
    const std::vector<Key> keys = keysOf(bytes, bytes.size() + 1);
    require(keys == keysOf(bytes, 1));
    FieldEditor editor(kind.makeFormatter());
    FieldView view(kind.title);
    for (const Key& key : keys) {
        const qk::NSString before = editor.text();
        const KeyEffect effect = apply(key, editor);
        require(effect == KeyEffect::Handled || editor.text() == before);
        const qk::NSRange selection = editor.selection();
        require(selection.location + selection.length <= editor.text().length());
        require(editor.caret() == selection.location || editor.caret() == selection.location + selection.length);
        checkDrawn(view.drawn(editor, columns));
    }
    return 0;
}
