// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Output.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace qk::info {

void occupyStandardStreams() {
    for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
        if (fcntl(fd, F_GETFD) == -1 && errno == EBADF) {
            // The lowest free descriptor is this one. It is open the wrong way around: reading and writing fail as
            // before.
            const int occupied = open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
            static_cast<void>(occupied);
        }
    }
}

int writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(fd, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            pollfd ready{fd, POLLOUT, 0};
            poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

} // namespace qk::info
