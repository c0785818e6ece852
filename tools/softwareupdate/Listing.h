// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/softwareupdate/PendingUpdate.h"

#include <string>
#include <string_view>

namespace qk::softwareupdate {

/// The text that lists `updates`, two lines each:
///
///        * bash-5.2.15‑2+b13
///     <tab>bash (5.2.15‑2+b13), 1456K [recommended]
///
/// A reader of this text takes what is behind the last "-" of the first line for the version, so a "-" within a version
/// is written as U+2011, the hyphen that does not break: it looks the same, nothing else in a version can be mistaken
/// for it, and replacing it by "-" gives the package manager's version back. Names stay exactly as they are. A size is
/// in units of 1024 bytes, rounded up; an unknown one is left out. Updates whose name or version this form cannot carry
/// (`isListable`) are skipped. Without any update the text says that there is no new software.
[[nodiscard]] std::string listing(const PendingUpdates& updates);

/// Whether a name or a version survives the way through the listing: not empty, no white space or control character, no
/// comma and no parenthesis. All that package managers allow does.
[[nodiscard]] bool isListable(std::string_view word);

} // namespace qk::softwareupdate
