// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Output.h"
#include "tools/qkinfo/Program.h"

#include <csignal>

int main(int argc, char** argv) {
    qk::info::occupyStandardStreams();
    // A reader that went away is told by the write that fails.
    std::signal(SIGPIPE, SIG_IGN);
    return qk::info::runProgram({argv + (argc > 0 ? 1 : 0), argv + argc}, qk::info::Surroundings{});
}
