// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/UniformTypeTable.h"

#include <algorithm>

namespace qk::platform::types {
namespace {

constexpr Declaration kDeclarations[]{
#include "UniformTypeTable.inc"
};

constexpr char lowerCased(char unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit + ('a' - 'A')) : unit;
}

} // namespace

std::span<const Declaration> declarations() {
    return kDeclarations;
}

std::string lowerCased(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char unit) { return lowerCased(unit); });
    return result;
}

const Declaration* declarationOf(std::string_view identifier) {
    const std::string wanted = lowerCased(identifier);
    const auto key = [](const Declaration& declaration) { return lowerCased(declaration.identifier); };
    const auto found = std::ranges::lower_bound(declarations(), wanted, {}, key);
    return found != declarations().end() && key(*found) == wanted ? &*found : nullptr;
}

const Declaration* declarationForMIMEType(std::string_view mimeType) {
    const Declaration* result = nullptr;
    for (const Declaration& declaration : kDeclarations) {
        bool isDeclaredFor = false;
        forEachElement(declaration.mimeTypes,
                       [&](std::string_view element) { isDeclaredFor = isDeclaredFor || element == mimeType; });
        const bool isBetter = result == nullptr || !result->identifier.starts_with("public.");
        if (isDeclaredFor && isBetter && (result == nullptr || declaration.identifier.starts_with("public."))) {
            result = &declaration;
        }
    }
    return result;
}

std::vector<const Declaration*> declarationsForExtension(std::string_view extension) {
    std::vector<const Declaration*> result;
    for (const Declaration& declaration : kDeclarations) {
        bool isDeclaredFor = false;
        forEachElement(declaration.extensions, [&](std::string_view element) {
            isDeclaredFor = isDeclaredFor || lowerCased(element) == extension;
        });
        if (isDeclaredFor) {
            result.push_back(&declaration);
        }
    }
    std::stable_partition(result.begin(), result.end(), [](const Declaration* declaration) {
        return declaration->identifier.starts_with("public.");
    });
    return result;
}

} // namespace qk::platform::types
