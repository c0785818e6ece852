// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/StandardFolders.h"
#include "QKFoundation/platform/services/Dispatch.h"
#include "QKFoundation/platform/services/FSEvents.h"
#include "QKFoundation/platform/services/MetadataIndex.h"
#include "QKFoundation/platform/services/UniformTypes.h"

#include <memory>
#include <utility>

namespace qk::platform {

/// No index that is kept, but a walk through the scopes for each search, and the file-system events of them from then
/// on. The walk runs on the background queue; the events are waited for before it begins, so nothing is missed.
///
/// - Files and folders below the scopes, and symbolic links, which are never followed. What begins with a dot is not
///   searched, nor what is below it, nor what cannot be read. Without scopes the home folder is searched.
/// - "kMDItemContentType" goes by the extension of the name: "public.folder" for every folder, "public.symlink" for a
///   link, "public.data" for an extension that nobody knows and for none.
/// - "kMDItemLastUsedDate" is that of the list that the desktop's toolkits keep ("recently-used.xbel" with the
///   application support files), else the date of the last access as the file system keeps it. That a file is only read
///   is no event: such a date is seen when something else is.
/// - Results change at most every half second, when the events come; where nothing can be watched, the scopes are
///   walked through every minute.
///
/// Threads: any; a search belongs to the thread that begins it, whose run loop tells the results.
class LinuxMetadataIndex final : public MetadataIndex {
public:
    LinuxMetadataIndex(LinuxRoot root, std::shared_ptr<Dispatch> dispatch, std::shared_ptr<FSEvents> events,
                       std::shared_ptr<UniformTypes> types, StandardFolders folders)
        : root_(std::move(root)),
          dispatch_(std::move(dispatch)),
          events_(std::move(events)),
          types_(std::move(types)),
          folders_(std::move(folders)) {}

    [[nodiscard]] std::unique_ptr<MetadataSearchRun> begin(const MetadataSearch& search,
                                                           MetadataListener listener) override;

private:
    LinuxRoot root_;
    std::shared_ptr<Dispatch> dispatch_;
    std::shared_ptr<FSEvents> events_;
    std::shared_ptr<UniformTypes> types_;
    StandardFolders folders_;
};

} // namespace qk::platform
