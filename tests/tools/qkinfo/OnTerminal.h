// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/tools/qkinfo/Child.h"

#include <sys/types.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qk::info {

/// The program on a terminal of its own.
///
/// It is started by a process in between, whose session the terminal belongs to: when such a process ends, what was
/// written last can get lost.
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

    /// Everything that was shown, with the terminal's line ends.
    Finished finish();

private:
    bool readOne();

    int terminal_ = -1;
    int starter_ = -1; // a socket to the process in between
    pid_t starterChild_ = -1;
    pid_t child_ = -1;
    std::string shown_;
};

} // namespace qk::info
