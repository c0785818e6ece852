// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// What keeps a hostile property list away from a parser that recurses and copies shared parts.
namespace qk::platform {

/// Whether the XML property list has its end and no value of it lies deeper than a real one would. A list with few
/// containers always passes; one with many must be written plainly enough (no comments, no CDATA, no attributes) for
/// its depth to be seen.
[[nodiscard]] bool isTameXMLPropertyList(std::string_view bytes);

/// Whether the binary property list is whole, free of cycles, not too deep, and unfolds into a bounded number of
/// values: a few hundred bytes can name a container twice on each of many levels.
[[nodiscard]] bool isTameBinaryPropertyList(std::string_view bytes);

} // namespace qk::platform
