// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxUsers.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/UserDatabase.h"
#include "QKFoundation/platform/linux/parse/Sessions.h"

#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

namespace qk::platform {
namespace {

std::optional<ConsoleUser> named(const std::optional<std::string>& name, std::uint32_t uid) {
    return name.has_value() ? std::optional(ConsoleUser{stringWithFileSystemRepresentation(*name), uid}) : std::nullopt;
}

std::optional<std::string> nameInDatabase(std::uint32_t uid) {
    const std::optional<PasswordEntry> entry = userdatabase::passwordEntry(uid);
    return entry.has_value() ? entry->name : std::nullopt;
}

} // namespace

std::uint32_t LinuxUsers::getuid() const {
    return ::getuid();
}

std::uint32_t LinuxUsers::geteuid() const {
    return ::geteuid();
}

bool LinuxUsers::seteuid(std::uint32_t uid) {
    return ::seteuid(uid) == 0;
}

std::optional<PasswordEntry> LinuxUsers::getpwuid(std::uint32_t uid) const {
    return userdatabase::passwordEntry(uid);
}

std::optional<GroupEntry> LinuxUsers::getgrnam(const std::string& name) const {
    return userdatabase::groupEntry(name);
}

std::optional<ConsoleUser> LinuxUsers::copyConsoleUser() const {
    const std::optional<std::string> seat = readBytes(root_.path("/run/systemd/seats/seat0"));
    return seat.has_value() ? userOfSeat(*seat) : ownerOfTerminal();
}

std::optional<ConsoleUser> LinuxUsers::userOfSeat(std::string_view seat) const {
    const std::optional<parse::ActiveSession> active = parse::activeSession(seat);
    if (!active.has_value()) {
        return std::nullopt;
    }
    if (!active->id.empty()) {
        const std::optional<std::string> session = readBytes(root_.path("/run/systemd/sessions/" + active->id));
        if (session.has_value() && !parse::isOfUser(*session)) {
            return std::nullopt;
        }
    }
    const std::optional<std::string> user = readBytes(root_.path("/run/systemd/users/" + std::to_string(active->uid)));
    std::optional<std::string> name = user.has_value() ? parse::userName(*user) : std::nullopt;
    return named(name.has_value() ? name : nameInDatabase(active->uid), active->uid);
}

std::optional<ConsoleUser> LinuxUsers::ownerOfTerminal() const {
    const std::optional<std::string> active = readBytes(root_.path("/sys/class/tty/tty0/active"));
    const std::optional<std::string> terminal = active.has_value() ? parse::activeTerminal(*active) : std::nullopt;
    struct stat status {};
    if (!terminal.has_value() || ::stat(root_.path("/dev/" + *terminal).c_str(), &status) != 0 || status.st_uid == 0) {
        return std::nullopt; // root owns a terminal that nobody is logged in at
    }
    return named(nameInDatabase(status.st_uid), status.st_uid);
}

} // namespace qk::platform
