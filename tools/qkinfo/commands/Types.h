// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Facts.h"

#include <string>
#include <vector>

namespace qk::info {

/// What the types of files are asked of: extensions, or names of files, in the encoding that they came in.
struct TypesOptions {
    std::vector<std::string> names;
};

/// The extension that is meant: of a name with "/" or "." in it what stands behind its last dot, else all of it.
[[nodiscard]] NSString extensionMeant(const std::string& name);

/// The types that files with each extension are of, as a list for the JSON: a record for each name.
[[nodiscard]] Section typesSection(const TypesOptions& options);

/// The same for people: a section for each name, titled with it. The sections refer to `options`.
[[nodiscard]] std::vector<Section> typesSections(const TypesOptions& options);

} // namespace qk::info
