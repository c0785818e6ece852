// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/InterruptSignals.h"

#include <termios.h>

#include <chrono>
#include <csignal>
#include <optional>
#include <string>
#include <string_view>

namespace qk::info {

/// What a session makes of a terminal. The texts live as long as the session.
struct TerminalManners {
    int output = -1;        ///< the descriptor to write to
    std::string_view enter; ///< written when the session takes the terminal
    std::string_view leave; ///< and when it gives it back
    bool everyKey = false;  ///< whether all keys come through but those of signals, not only the letters
};

enum class TerminalEvent {
    Keys,    ///< `readKeys` has something to say
    Redraw,  ///< what was shown is no longer right: another size, or back from elsewhere
    Other,   ///< the other descriptor is readable
    Timeout, ///< nothing of these came in time
};

/// A terminal whose keys are read one by one and not shown, for the life of this object.
///
/// The terminal is left as it was however the program ends, signals included, and is given back while the program is
/// stopped. Only one object at a time, in a process of one thread.
class TerminalSession {
public:
    explicit TerminalSession(const TerminalManners& manners);
    TerminalSession(const TerminalSession&) = delete;
    TerminalSession& operator=(const TerminalSession&) = delete;
    ~TerminalSession();

    /// Waits for keys, a change, or the descriptor `other` (-1 for none); at most as long as `timeout`, if there is
    /// one. Ends the process by SIGINT, SIGTERM and the like.
    [[nodiscard]] TerminalEvent wait(int other = -1, std::optional<std::chrono::milliseconds> timeout = std::nullopt);

    /// The bytes of the keys that were pressed. "" when there are none, which is forever once `hasKeyboard` is false.
    [[nodiscard]] std::string readKeys();

    /// Whether standard input is a terminal that can still be read.
    [[nodiscard]] bool hasKeyboard() const { return keyboard_ != -1; }

    /// Gives the terminal back before the end of this object.
    void leave();

    /// Forgets the keys that nobody has read.
    void forgetKeys() const;

    /// Gives the terminal back and ends this process as an interrupt does.
    [[noreturn]] void interrupt();

private:
    void enter();
    void handleSignal();

    TerminalManners manners_;
    InterruptSignals interrupts_;
    int signals_ = -1; // a descriptor for changes of size, for being stopped and for going on
    sigset_t previousMask_{};
    int keyboard_ = -1;
    std::optional<termios> previousMode_; // of the keyboard, while it is changed
    bool entered_ = false;
};

} // namespace qk::info
