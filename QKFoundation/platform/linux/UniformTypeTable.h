// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The uniform type identifiers that are declared by the platform itself.
namespace qk::platform::types {

/// A declared type. Lists have commas between their elements.
struct Declaration {
    std::string_view identifier;
    std::string_view conformsTo; ///< identifiers
    std::string_view extensions; ///< of file names, the preferred one first
    std::string_view mimeTypes;
    std::string_view description; ///< in English; "" when it has none
};

/// All of them, ascending by identifier in lower case.
[[nodiscard]] std::span<const Declaration> declarations();

/// The declaration of a type, in whatever letter case; null when there is none.
[[nodiscard]] const Declaration* declarationOf(std::string_view identifier);

/// The type declared for a MIME type in lower case, a "public." one when there are several; null when there is none.
[[nodiscard]] const Declaration* declarationForMIMEType(std::string_view mimeType);

/// The types declared for an extension in lower case, the "public." ones first.
[[nodiscard]] std::vector<const Declaration*> declarationsForExtension(std::string_view extension);

/// ASCII letters in lower case, everything else as it is.
[[nodiscard]] std::string lowerCased(std::string_view text);

/// Calls `visit` with each element of a list with commas.
template <typename Visitor>
void forEachElement(std::string_view list, Visitor&& visit) {
    while (!list.empty()) {
        const std::string_view element = list.substr(0, list.find(','));
        visit(element);
        list.remove_prefix(element.size() == list.size() ? element.size() : element.size() + 1);
    }
}

} // namespace qk::platform::types
