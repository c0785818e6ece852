// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace qk::platform {

/// What became of a request to the desktop's portal.
enum class PortalAnswer {
    Absent,  ///< there is no session bus or no portal that runs, it does not open such things, or this build has no
             ///< libsystemd
    Opened,  ///< it has taken the request over; it may still ask the user for an application
    Unknown, ///< it has the request and has not said what became of it
};

/// Asks org.freedesktop.portal.OpenURI on the session bus at `address` ("unix:path=...") to open the URL `url`. A
/// portal that does not run is not started, and one that does not answer at all is given up after 200 ms. Any thread.
[[nodiscard]] PortalAnswer openURLWithPortal(const std::string& address, const std::string& url);

/// As `openURLWithPortal`, for the file or folder at `path`: the portal is handed the open file and not its name.
[[nodiscard]] PortalAnswer openFileWithPortal(const std::string& address, const std::string& path);

} // namespace qk::platform
