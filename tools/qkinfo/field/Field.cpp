// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/field/Field.h"

#include "tools/qkinfo/Output.h"
#include "tools/qkinfo/Terminal.h"
#include "tools/qkinfo/TerminalSession.h"
#include "tools/qkinfo/field/FieldEditor.h"
#include "tools/qkinfo/field/FieldKeys.h"
#include "tools/qkinfo/field/FieldView.h"
#include "tools/qkinfo/field/KeyDecoder.h"

#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace qk::info {

namespace {

// Pastes are marked, and what comes next begins in a line of its own.
constexpr std::string_view kEnter = "\x1b[?2004h";
constexpr std::string_view kLeave = "\x1b[?2004l\n";

// As long as a terminal needs for the rest of a key, also far away.
constexpr std::chrono::milliseconds kRestOfKey{100};

int screen() {
    if (!terminalAt(STDIN_FILENO).isTerminal) {
        throw std::runtime_error("standard input is no terminal to type at");
    }
    for (const int fd : {STDERR_FILENO, STDOUT_FILENO}) {
        if (terminalAt(fd).isTerminal) {
            if (!terminalAt(fd).takesSequences) {
                throw std::runtime_error("the terminal cannot show a field: TERM is not set, or \"dumb\"");
            }
            return fd;
        }
    }
    throw std::runtime_error("neither standard error nor standard output is a terminal to show a field on");
}

/// A field on a terminal, until its end.
class LiveField {
public:
    LiveField(const FieldKind& kind, int screen)
        : kind_(kind),
          screen_(screen),
          formatter_(kind.makeFormatter()),
          editor_(formatter_),
          view_(kind.title),
          session_({screen, kEnter, kLeave, true}) {}

    std::optional<NSString> run() {
        show(view_.drawn(editor_, columns()));
        for (;;) {
            switch (handle(nextKeys())) {
            case KeyEffect::Entered: return finish();
            case KeyEffect::Ended: return std::nullopt;
            case KeyEffect::Cancelled: session_.interrupt();
            case KeyEffect::Refused:
            case KeyEffect::Handled: break;
            }
        }
    }

private:
    // None after a change of the terminal, which is drawn at once.
    std::vector<Key> nextKeys() {
        const auto timeout = decoder_.isInsideSequence() ? std::optional(kRestOfKey) : std::nullopt;
        switch (session_.wait(-1, timeout)) {
        case TerminalEvent::Keys: return readKeys();
        case TerminalEvent::Timeout: return decoder_.giveUp();
        case TerminalEvent::Redraw: show(view_.drawnAfterResize(editor_, columns())); return {};
        case TerminalEvent::Other: break;
        }
        return {};
    }

    std::vector<Key> readKeys() {
        const std::string bytes = session_.readKeys();
        if (!session_.hasKeyboard()) {
            throw std::runtime_error("the terminal has gone away");
        }
        return decoder_.decode(bytes);
    }

    // The effect of the last key, or the first that ends the field.
    KeyEffect handle(const std::vector<Key>& keys) {
        bool isRefused = false;
        for (const Key& key : keys) {
            const KeyEffect effect = apply(key, editor_);
            if (effect != KeyEffect::Handled && effect != KeyEffect::Refused) {
                return effect;
            }
            isRefused = isRefused || effect == KeyEffect::Refused;
        }
        if (!keys.empty()) {
            show((isRefused ? "\a" : "") + view_.drawn(editor_, columns()));
        }
        return KeyEffect::Handled;
    }

    NSString finish() {
        const NSString text = finishedText(kind_, *formatter_, editor_.text());
        show(view_.drawnAtEnd(text, columns()));
        return text;
    }

    void show(const std::string& text) const {
        if (const int error = writeAll(screen_, text); error != 0) {
            throw std::system_error(error, std::generic_category(), "cannot write to the terminal");
        }
    }

    [[nodiscard]] std::size_t columns() const { return terminalAt(screen_).width; }

    const FieldKind& kind_;
    int screen_;
    std::shared_ptr<const NSFormatter> formatter_;
    FieldEditor editor_;
    FieldView view_;
    KeyDecoder decoder_;
    TerminalSession session_;
};

} // namespace

std::optional<NSString> runField(const FieldKind& kind) {
    return LiveField(kind, screen()).run();
}

} // namespace qk::info
