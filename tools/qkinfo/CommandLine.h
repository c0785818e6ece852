// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Commands.h"
#include "tools/qkinfo/Terminal.h"
#include "tools/qkinfo/commands/Network.h"
#include "tools/qkinfo/commands/Notify.h"
#include "tools/qkinfo/commands/Observe.h"
#include "tools/qkinfo/commands/Recent.h"
#include "tools/qkinfo/commands/Translate.h"
#include "tools/qkinfo/commands/Types.h"
#include "tools/qkinfo/field/Format.h"
#include "tools/qkinfo/watch/WatchLoop.h"

#include <string>
#include <variant>
#include <vector>

namespace qk::info {

/// What the command line asks for.
struct Invocation {
    std::vector<const Command*> commands; ///< in the order of their sections
    bool report = false;                  ///< whether this is the report, which goes on where a single command fails
    bool json = false;
    ColorChoice color = ColorChoice::Auto;
};

/// The command line asks to go on showing the machine under load.
struct WatchInvocation {
    WatchOptions options;
    bool json = false;
    ColorChoice color = ColorChoice::Auto;
};

/// The command line asks for a text of an application.
struct TranslateInvocation {
    TranslateOptions options;
    bool json = false;
};

/// The command line asks for the types of files.
struct TypesInvocation {
    TypesOptions options;
    bool json = false;
    ColorChoice color = ColorChoice::Auto;
};

/// The command line asks what fields show.
struct FormatInvocation {
    FormatOptions options;
    bool json = false;
};

/// The command line asks for a field to type into.
struct FieldInvocation {
    const FieldKind* kind = nullptr;
};

/// The command line asks to call out to other programs, or to wait for that.
struct NotifyInvocation {
    NotifyOptions options;
};

/// The command line asks for the network.
struct NetworkInvocation {
    NetworkOptions options;
    bool json = false;
    ColorChoice color = ColorChoice::Auto;
};

/// The command line asks for recent items.
struct RecentInvocation {
    RecentOptions options;
    bool json = false;
    ColorChoice color = ColorChoice::Auto;
};

/// The command line asks to watch files.
struct ObserveInvocation {
    ObserveOptions options;
    bool json = false;
};

/// The command line asks for a text that is known: the help, or the version.
struct PlainText {
    std::string text;
};

/// The command line makes no sense: one line that says why, without the program's name and a line end.
struct UsageError {
    std::string message;
};

using ParsedCommandLine =
    std::variant<Invocation, WatchInvocation, TranslateInvocation, TypesInvocation, FormatInvocation, FieldInvocation,
                 NotifyInvocation, NetworkInvocation, RecentInvocation, ObserveInvocation, PlainText, UsageError>;

/// `arguments` are those behind the program's name, in the encoding that they came in.
[[nodiscard]] ParsedCommandLine parseCommandLine(const std::vector<std::string>& arguments);

} // namespace qk::info
