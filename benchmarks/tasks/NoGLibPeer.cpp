// SPDX-License-Identifier: Apache-2.0
// Stands in for GLibPeer.cpp where GLib is not installed.
#include "benchmarks/tasks/Peers.h"

namespace qk::benchmarks {

std::size_t (*const runGLib)(const Command& command) = nullptr;

} // namespace qk::benchmarks
