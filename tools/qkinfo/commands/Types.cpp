// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Types.h"

#include "QKFoundation/platform/values/Value.h"
#include "QKFoundation/system_info/QKUTIUtils.h"

#include "tools/qkinfo/DisplayText.h"

#include <algorithm>
#include <array>

namespace qk::info {

namespace {

std::vector<NSString> declaredParents(const NSString& type) {
    std::vector<NSString> parents;
    const NSDictionary declaration = QKUTIUtils::typeDeclarationForTypeIdentifier(type);
    if (const auto* list = declaration.get<NSArray>("UTTypeConformsTo")) {
        for (const Value& parent : *list) {
            parents.push_back(parent.description());
        }
    }
    return parents;
}

// A type that was made for an extension was declared nowhere; it is asked whether it is one of the general ones.
std::vector<NSString> parentsOf(const NSString& type) {
    static constexpr std::array<std::u16string_view, 7> kGeneral{u"public.text",  u"public.image",  u"public.audio",
                                                                 u"public.video", u"public.folder", u"public.directory",
                                                                 u"public.data"};
    std::vector<NSString> parents = declaredParents(type);
    if (parents.empty() && type.hasPrefix("dyn.")) {
        for (const std::u16string_view general : kGeneral) {
            if (QKUTIUtils::typeIdentifier(type, NSString(general))) {
                parents.emplace_back(general);
                break;
            }
        }
    }
    return parents;
}

// All that the type conforms to, the nearest first.
Names conformance(const NSString& type) {
    std::vector<NSString> reached{type};
    for (std::size_t next = 0; next < reached.size(); ++next) {
        for (const NSString& parent : parentsOf(NSString(reached[next]))) {
            if (std::ranges::find(reached, parent) == reached.end()) {
                reached.push_back(parent);
            }
        }
    }
    Names names;
    std::transform(reached.begin() + 1, reached.end(), std::back_inserter(names), wellFormedUTF8);
    return names;
}

Facts factsOf(const std::string& name) {
    const NSString extension = extensionMeant(name);
    const NSString type = QKUTIUtils::typeIdentifierForPathExtension(extension);
    const std::vector<NSString> all = QKUTIUtils::typeIdentifiersForPathExtension(extension);
    Names identifiers;
    std::ranges::transform(all, std::back_inserter(identifiers), wellFormedUTF8);
    const auto names = [&type](Names of) {
        return type.isEmpty() ? std::nullopt : std::optional<Content>(std::move(of));
    };
    return {
        {"name", "Name", textContent(NSString::fromUTF8Lossy(name)), Audience::Programs},
        {"extension", "Extension", textContent(extension)},
        {"identifier", "Type", textContent(type)},
        {"identifiers", "All types", names(std::move(identifiers))},
        {"description", "Description", textContent(QKUTIUtils::typeDescriptionForTypeIdentifier(type))},
        {"conforms_to", "Conforms to", names(conformance(type))},
    };
}

} // namespace

NSString extensionMeant(const std::string& name) {
    const NSString text = NSString::fromUTF8Lossy(name);
    if (text.contains(u"/")) {
        return text.pathExtension();
    }
    const std::optional<std::size_t> dot = text.findLast(u".");
    return dot.has_value() ? text.substringFromIndex(*dot + 1) : text;
}

Section typesSection(const TypesOptions& options) {
    List list{{}, "No names.", "name", "names"};
    for (const std::string& name : options.names) {
        list.records.push_back(factsOf(name));
    }
    return {"types", "Types", std::move(list)};
}

std::vector<Section> typesSections(const TypesOptions& options) {
    std::vector<Section> sections;
    for (const std::string& name : options.names) {
        sections.push_back({"types", name, factsOf(name)});
    }
    return sections;
}

} // namespace qk::info
