// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

namespace qk::info {

Terminal terminalAt(int fd) {
    Terminal terminal;
    terminal.isTerminal = isatty(fd) == 1;
    if (!terminal.isTerminal) {
        return terminal;
    }
    winsize size{};
    if (ioctl(fd, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        terminal.width = size.ws_col;
    }
    if (size.ws_row > 0) {
        terminal.height = size.ws_row;
    }
    const char* const name = std::getenv("TERM"); // NOLINT(concurrency-mt-unsafe): nothing here changes the environment
    terminal.takesSequences = name != nullptr && *name != '\0' && std::string_view(name) != "dumb";
    return terminal;
}

bool usesColor(ColorChoice choice, const Terminal& output, const char* noColor) {
    if (choice != ColorChoice::Auto) {
        return choice == ColorChoice::Always;
    }
    return output.takesSequences && (noColor == nullptr || *noColor == '\0');
}

} // namespace qk::info
