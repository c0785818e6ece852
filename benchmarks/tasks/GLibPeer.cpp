// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/tasks/Peers.h"

#include <glib.h>

namespace qk::benchmarks {
namespace {

std::size_t runThroughGLib(const Command& command) {
    std::vector<char*> arguments{const_cast<char*>(command.path.c_str())};
    for (const std::string& argument : command.arguments) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    char* output = nullptr;
    // Its reader stops at no zero byte, but tells the length only by one; the children of this benchmark print none.
    if (g_spawn_sync(nullptr, arguments.data(), nullptr, G_SPAWN_STDERR_TO_DEV_NULL, nullptr, nullptr, &output, nullptr,
                     nullptr, nullptr) == FALSE) {
        return 0;
    }
    const std::size_t length = std::char_traits<char>::length(output);
    g_free(output);
    return length;
}

} // namespace

std::size_t (*const runGLib)(const Command& command) = runThroughGLib;

} // namespace qk::benchmarks
