// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The same job done by others. Each runs a program to its end and returns how many bytes it printed; all keep them in
/// memory.
namespace qk::benchmarks {

struct Command {
    std::string path;
    std::vector<std::string> arguments;
};

/// The floor: posix_spawn, a pipe of 1 MiB, read into memory that doubles; nothing is reset in the child.
std::size_t runBareSpawn(const Command& command);

/// The same after fork and exec.
std::size_t runFork(const Command& command);

/// popen, with its pipe of 64 KiB, through a shell.
std::size_t runPopen(const Command& command);

/// g_spawn_sync; null where GLib is not there.
extern std::size_t (*const runGLib)(const Command& command);

} // namespace qk::benchmarks
