// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/UniformTypes.h"

#include <utility>

namespace qk::platform {

/// The types that the platform declares, dynamic ones ("dyn.a..."), which conform to what they say and to "public.data"
/// at least, and MIME types, which conform to the type declared for them and to what the shared MIME database
/// (/usr/share/mime) says they are. A MIME type that none is declared for is at least what its first word says: text,
/// an image, audio, a movie, an item that is no file ("inode/..."), else data. Threads: any.
class LinuxUniformTypes final : public UniformTypes {
public:
    explicit LinuxUniformTypes(LinuxRoot root = {}) : root_(std::move(root)) {}

    [[nodiscard]] bool typeConformsTo(const NSString& type, const NSString& conformsTo) const override;
    /// The types that are declared for the extension, the "public." ones first. One that is declared for none but known
    /// to the shared MIME database has a dynamic identifier, of text, an image, sound or video as its MIME type says,
    /// else of data; one that nobody knows has none.
    [[nodiscard]] std::vector<NSString> typesForExtension(const NSString& extension) const override;
    /// In English.
    [[nodiscard]] std::optional<NSString> descriptionOfType(const NSString& type) const override;
    [[nodiscard]] std::optional<NSDictionary> declarationOfType(const NSString& type) const override;

private:
    LinuxRoot root_;
};

} // namespace qk::platform
