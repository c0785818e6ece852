// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/commands/Network.h"
#include "tools/qkinfo/commands/Notify.h"
#include "tools/qkinfo/commands/Observe.h"
#include "tools/qkinfo/commands/Recent.h"
#include "tools/qkinfo/watch/WatchLoop.h"

namespace CLI {
class App;
}

/// The options of single commands. What the command line holds for them is put into the second argument, which lives as
/// long as the command.
namespace qk::info {

void addWatchOptions(CLI::App& command, WatchOptions& options);
void addNotifyOptions(CLI::App& command, NotifyOptions& options);
void addNetworkOptions(CLI::App& command, NetworkOptions& options);
void addRecentOptions(CLI::App& command, RecentOptions& options);
void addObserveOptions(CLI::App& command, ObserveOptions& options);

/// What is wrong with `text` where UTF-8 is asked for; "" when it is.
[[nodiscard]] std::string checkUTF8(const std::string& text);

} // namespace qk::info
