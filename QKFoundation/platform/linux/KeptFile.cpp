// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/KeptFile.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace qk::platform {

KeptFile::KeptFile(const std::string& path) : file_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}

ssize_t KeptFile::read(std::span<char> buffer, std::size_t offset) const {
    ssize_t count = -1;
    do {
        count = ::pread(file_.get(), buffer.data(), buffer.size(), static_cast<off_t>(offset));
    } while (count < 0 && errno == EINTR);
    return count;
}

bool KeptFile::hasChanged() const {
    pollfd watched{file_.get(), POLLPRI, 0};
    return ::poll(&watched, 1, 0) > 0 && (watched.revents & (POLLPRI | POLLERR)) != 0;
}

} // namespace qk::platform
