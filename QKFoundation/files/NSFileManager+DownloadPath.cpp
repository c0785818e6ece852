// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+DownloadPath.h"
#include "QKFoundation/files/internal/StandardPaths.h"

#include <string>

namespace qk {

NSString internal::downloadPath(const platform::Services& services) {
    const auto paths = services.fileManager->searchPaths(NSSearchPathDirectory::NSDownloadsDirectory,
                                                         NSSearchPathDomainMask::NSUserDomainMask);
    return !paths.empty() ? paths.front()
                          : services.fileManager->homeDirectory().stringByAppendingPathComponent("Downloads");
}

NSString NSFileManager_DownloadPath::downloadPath(const NSFileManager& /*self*/) {
    return internal::downloadPath(*platform::services());
}

} // namespace qk

const char* qk_getDownloadPath(void) {
    thread_local std::string text;
    text = qk::NSFileManager_DownloadPath::downloadPath(*qk::NSFileManager::defaultManager()).utf8Lossy();
    return text.c_str();
}
