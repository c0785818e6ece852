// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxUniformTypes.h"

#include "QKFoundation/platform/linux/DynamicTypes.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/UniformTypeTable.h"
#include "QKFoundation/platform/linux/parse/Globs.h"
#include "QKFoundation/platform/linux/parse/Text.h"
#include "QKFoundation/platform/values/Value.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

bool isMIMEType(std::string_view type) {
    return type.find('/') != std::string_view::npos;
}

// What the types conform to at once. The MIME database is read when it is first asked for.
class Parents {
public:
    explicit Parents(const LinuxRoot& root) : root_(root) {}

    std::vector<std::string> of(std::string_view type) {
        std::vector<std::string> parents;
        if (const types::Declaration* declaration = types::declarationOf(type); declaration != nullptr) {
            types::forEachElement(declaration->conformsTo, [&parents](std::string_view parent) {
                parents.push_back(types::lowerCased(parent));
            });
        } else if (types::isDynamic(type)) {
            for (const std::string_view parent : types::dynamicConformance(type)) {
                parents.push_back(types::lowerCased(parent));
            }
        } else if (isMIMEType(type)) {
            parents = ofMIMEType(type);
        }
        return parents;
    }

private:
    std::vector<std::string> ofMIMEType(std::string_view type) {
        std::vector<std::string> parents = pairsWith(aliases_, "/usr/share/mime/aliases", type);
        std::vector<std::string> more = pairsWith(subclasses_, "/usr/share/mime/subclasses", type);
        parents.insert(parents.end(), more.begin(), more.end());
        if (const types::Declaration* declared = types::declarationForMIMEType(type); declared != nullptr) {
            parents.push_back(types::lowerCased(declared->identifier));
        } else {
            parents.emplace_back(generalType(type));
        }
        return parents;
    }

    // What the first word of a MIME type says.
    static std::string_view generalType(std::string_view type) {
        constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kTypes{
            {{"inode/directory", "public.folder"},
             {"inode/", "public.item"},
             {"text/", "public.text"},
             {"image/", "public.image"},
             {"audio/", "public.audio"},
             {"video/", "public.movie"}}};
        for (const auto& [prefix, general] : kTypes) {
            if (type.starts_with(prefix)) {
                return general;
            }
        }
        return "public.data";
    }

    // The second words of the file's lines whose first word is `first`.
    std::vector<std::string> pairsWith(std::optional<std::string>& file, std::string_view path,
                                       std::string_view first) {
        if (!file.has_value()) {
            file = readBytes(root_.path(path)).value_or("");
        }
        std::vector<std::string> found;
        parse::forEachLine(*file, [&found, first](std::string_view line) {
            const auto words = parse::splitAt(line, ' ');
            if (words.has_value() && types::lowerCased(words->first) == first) {
                found.push_back(types::lowerCased(words->second));
            }
            return true;
        });
        return found;
    }

    const LinuxRoot& root_;
    std::optional<std::string> aliases_;
    std::optional<std::string> subclasses_;
};

NSString text(std::string_view ascii) {
    return NSString::fromUTF8Lossy(ascii);
}

NSArray array(std::string_view list) {
    std::vector<NSString> elements;
    types::forEachElement(list, [&elements](std::string_view element) { elements.push_back(text(element)); });
    return NSArray(elements);
}

void addList(NSMutableDictionary& dictionary, const NSString& key, std::string_view list) {
    if (!list.empty()) {
        dictionary.setObject(array(list), key);
    }
}

const types::Declaration* declared(const NSString& type) {
    const std::optional<std::string> identifier = type.utf8();
    return identifier.has_value() ? types::declarationOf(*identifier) : nullptr;
}

} // namespace

std::vector<NSString> LinuxUniformTypes::typesForExtension(const NSString& extension) const {
    const std::optional<std::string> bytes = extension.utf8();
    if (!bytes.has_value() || bytes->empty()) {
        return {};
    }
    const std::string folded = types::lowerCased(*bytes);
    std::vector<NSString> found;
    for (const types::Declaration* declaration : types::declarationsForExtension(folded)) {
        found.push_back(text(declaration->identifier));
    }
    if (!found.empty()) {
        return found;
    }
    const std::optional<std::string> globs = readBytes(root_.path("/usr/share/mime/globs2"));
    const auto mimeType = globs.has_value() ? parse::typeForExtension(*globs, *bytes) : std::nullopt;
    if (!mimeType.has_value()) {
        return {};
    }
    constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kMeanings{
        {{"public.text", "public.text"},
         {"public.image", "public.image"},
         {"public.audio", "public.audio"},
         {"public.movie", "public.video"}}};
    std::string_view meaning = "public.data";
    for (const auto& [general, lettered] : kMeanings) {
        if (typeConformsTo(text(*mimeType), text(general))) {
            meaning = lettered;
            break;
        }
    }
    return {text(types::dynamicIdentifier(meaning, folded))};
}

std::optional<NSString> LinuxUniformTypes::descriptionOfType(const NSString& type) const {
    const types::Declaration* declaration = declared(type);
    return declaration != nullptr && !declaration->description.empty() ? std::optional(text(declaration->description))
                                                                       : std::nullopt;
}

std::optional<NSDictionary> LinuxUniformTypes::declarationOfType(const NSString& type) const {
    const types::Declaration* declaration = declared(type);
    if (declaration == nullptr) {
        return std::nullopt;
    }
    NSMutableDictionary tags;
    addList(tags, "public.filename-extension", declaration->extensions);
    addList(tags, "public.mime-type", declaration->mimeTypes);
    NSMutableDictionary result;
    result.setObject(text(declaration->identifier), "UTTypeIdentifier");
    addList(result, "UTTypeConformsTo", declaration->conformsTo);
    if (!declaration->description.empty()) {
        result.setObject(text(declaration->description), "UTTypeDescription");
    }
    if (tags.count() != 0) {
        result.setObject(tags.copy(), "UTTypeTagSpecification");
    }
    return result.copy();
}

bool LinuxUniformTypes::typeConformsTo(const NSString& type, const NSString& conformsTo) const {
    const std::optional<std::string> identifier = type.utf8();
    const std::optional<std::string> other = conformsTo.utf8();
    if (!identifier.has_value() || !other.has_value()) {
        return type == conformsTo; // no type that is known has lone surrogates
    }
    const std::string wanted = types::lowerCased(*other);
    std::vector<std::string> reached{types::lowerCased(*identifier)};
    Parents parents(root_);
    for (std::size_t next = 0; next < reached.size(); ++next) {
        if (reached[next] == wanted) {
            return true;
        }
        for (std::string& parent : parents.of(reached[next])) {
            if (std::ranges::find(reached, parent) == reached.end()) {
                reached.push_back(std::move(parent));
            }
        }
    }
    return false;
}

} // namespace qk::platform
