// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FactCache.h"
#include "QKFoundation/platform/services/FileManager.h"
#include "QKFoundation/platform/services/Locale.h"
#include "QKFoundation/platform/services/NSBundle.h"
#include "QKFoundation/platform/services/PropertyListSerialization.h"
#include "QKFoundation/platform/services/internal/NamedList.h"
#include "QKFoundation/platform/services/internal/StringTable.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>

namespace qk::internal {

/// What a bundle has read of its folder. What is returned by reference lives as long as this object.
/// Threads: any, at the same time. What has been asked for before is found without a lock.
class BundleContents {
public:
    using FileManager = std::shared_ptr<platform::FileManager>;
    using PropertyLists = std::shared_ptr<platform::PropertyListSerialization>;
    using Locale = std::shared_ptr<platform::Locale>;
    using LanguageFolder = std::shared_ptr<NSBundle>; // null when there is none

    /// The bundle of the folder at `path`; null when there is no folder.
    [[nodiscard]] static std::shared_ptr<NSBundle> open(const NSString& path, const FileManager& fileManager,
                                                        const PropertyLists& propertyLists, const Locale& locale);

    BundleContents(const NSString& path, FileManager fileManager, PropertyLists propertyLists, Locale locale);

    [[nodiscard]] const NSString& path() const noexcept { return path_; }

    [[nodiscard]] std::optional<NSString> pathForResource(const NSString& name, const NSString& ofType) const;

    [[nodiscard]] const LanguageFolder& languageFolder(const NSString& name) const {
        const LanguageFolder* const known = languages_.find(name);
        return known != nullptr ? *known : openLanguageFolder(name);
    }

    /// The table "Localizable"; an empty one when it is missing or damaged.
    [[nodiscard]] const StringTable& defaultTable() const {
        const StringTable* const known = defaultTable_.load(std::memory_order_acquire);
        return known != nullptr ? *known : openDefaultTable();
    }

    /// The table of that name, which is not empty; an empty table when it is missing or damaged.
    [[nodiscard]] const StringTable& table(const NSString& name) const {
        const StringTable* const known = tables_.find(name);
        return known != nullptr ? *known : openTable(name);
    }

    /// The information list; empty when there is none.
    [[nodiscard]] const NSDictionary& infoDictionary() const;

    /// The table "InfoPlist" of the most preferred language that has a folder; an empty one when none has.
    [[nodiscard]] const StringTable& localizedInfo() const;

private:
    [[nodiscard]] const LanguageFolder& openLanguageFolder(const NSString& name) const;
    [[nodiscard]] const StringTable& openDefaultTable() const;
    [[nodiscard]] const StringTable& openTable(const NSString& name) const;
    [[nodiscard]] std::optional<NSDictionary> readDictionary(const NSString& path) const;
    [[nodiscard]] NSDictionary readInfoDictionary() const;
    [[nodiscard]] bool isTooMuchMissing() const;

    FileManager fileManager_;
    PropertyLists propertyLists_;
    Locale locale_;
    NSString path_;
    NSString resources_;
    LanguageFolder noFolder_;
    StringTable noTable_;

    mutable platform::OnceFact<NSDictionary> infoDictionary_;
    mutable std::mutex mutex_; // of adding
    mutable NamedList<LanguageFolder> languages_;
    mutable NamedList<StringTable> tables_;
    mutable std::size_t missing_ = 0; // folders and tables
    mutable std::atomic<const StringTable*> defaultTable_{nullptr};
};

} // namespace qk::internal
