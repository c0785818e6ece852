// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/tools/qkinfo/Child.h"

#include <sys/types.h>
#include <termios.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qk::info {

/// The program on a terminal of its own.
class OnTerminal {
public:
    static constexpr unsigned short kColumns = 60;
    static constexpr unsigned short kLines = 24;

    OnTerminal(
        const Workshop& workshop, const std::vector<std::string>& arguments,
        const std::function<void()>& prepareChild = [] {});
    OnTerminal(const OnTerminal&) = delete;
    OnTerminal& operator=(const OnTerminal&) = delete;
    ~OnTerminal();

    /// Reads on until `text` was shown, or until the program has ended.
    void readUntil(std::string_view text);

    /// As `readUntil`, for a text that was not among what was read so far. What was shown meanwhile.
    std::string readNext(std::string_view text);

    void type(char key) const;
    void type(std::string_view keys) const;
    void resize(unsigned short columns, unsigned short lines) const;
    void send(int signal) const;

    /// Whether the terminal shows what is typed, and hands it out in lines.
    [[nodiscard]] bool isInLineMode() const;

    /// What is said of the terminal now: its modes and special keys.
    [[nodiscard]] termios mode() const;

    /// Everything that was shown, with the terminal's line ends.
    Finished finish();

private:
    bool readOne();

    int terminal_ = -1;
    pid_t child_ = -1;
    std::string shown_;
};

} // namespace qk::info
