// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxUniformTypes.h"

#include "QKFoundation/platform/linux/DynamicTypes.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/UniformTypeTable.h"
#include "QKFoundation/platform/linux/parse/Text.h"

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

} // namespace

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
