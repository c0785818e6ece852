// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/network/Machine.h"

#include "benchmarks/network/Register.h"

#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>

extern char** environ;

namespace qk::bench {
namespace {

constexpr const char* kThisNetwork = "/proc/thread-self/ns/net";

void write(const std::string& path, const std::string& text) {
    std::ofstream(path) << text;
}

// Runs ip with a command on each line.
bool runIP(const std::string& lines) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return false;
    }
    const int child = start({"ip", "-batch", "-"}, ends[0], -1);
    ::close(ends[0]);
    bool isWritten = child != 0;
    for (std::size_t done = 0; isWritten && done < lines.size();) {
        const ssize_t count = ::write(ends[1], lines.data() + done, lines.size() - done);
        isWritten = count > 0;
        done += static_cast<std::size_t>(isWritten ? count : 0);
    }
    ::close(ends[1]);
    int status = -1;
    return child != 0 && ::waitpid(child, &status, 0) == child && isWritten && status == 0;
}

// A network of its own for this thread, under a name that ip knows.
bool makeNetwork(const std::string& name) {
    ::mkdir("/run/netns", 0755);
    const std::string path = "/run/netns/" + name;
    write(path, "");
    return ::unshare(CLONE_NEWNET) == 0 && ::mount(kThisNetwork, path.c_str(), nullptr, MS_BIND, nullptr) == 0;
}

} // namespace

int start(const std::vector<std::string>& words, int input, int output) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (input >= 0) {
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    }
    if (output >= 0) {
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    } else {
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    std::vector<char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t child = 0;
    const int error = posix_spawnp(&child, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : 0;
}

bool leaveThisSystem() {
    const std::string user = "0 " + std::to_string(::geteuid()) + " 1";
    const std::string group = "0 " + std::to_string(::getegid()) + " 1";
    const bool isRoot = ::geteuid() == 0;
    if (::unshare(CLONE_NEWNS | CLONE_NEWNET | (isRoot ? 0 : CLONE_NEWUSER)) != 0) {
        return false;
    }
    if (!isRoot) {
        write("/proc/self/setgroups", "deny");
        write("/proc/self/uid_map", user);
        write("/proc/self/gid_map", group);
    }
    ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("tmpfs", "/run", "tmpfs", 0, nullptr) == 0;
}

Machine::Machine(std::size_t interfaces) : interfaces_(interfaces) {
    const std::string far = "far" + std::to_string(interfaces);
    std::string farLines;
    std::string lines = "link set lo up\n";
    for (std::size_t number = 0; number < interfaces; ++number) {
        const std::string digits = std::to_string(number);
        const std::string name = "n" + digits;
        lines.append("link add " + name + " type veth peer name " + name + " netns " + far + "\n");
        lines.append("link set " + name + " addrgenmode none\n");
        lines.append("link set " + name + " up\n");
        lines.append("addr add 10." + digits + ".0.1/24 brd + dev " + name + "\n");
        lines.append("addr add 2001:db8:" + digits + "::1/64 dev " + name + " nodad\n");
        farLines.append("link set " + name + " up\n");
    }
    lines.append("route add default via 10.0.0.2\n");
    lines.append("neigh add 10.0.0.2 lladdr 02:00:5e:00:00:02 dev n0 nud permanent\n");
    if (!makeNetwork(far)) {
        return;
    }
    const int farNetwork = ::open(kThisNetwork, O_RDONLY | O_CLOEXEC);
    isThere_ = makeNetwork("near" + std::to_string(interfaces)) && runIP(lines);
    network_ = ::open(kThisNetwork, O_RDONLY | O_CLOEXEC);
    isThere_ = isThere_ && ::setns(farNetwork, CLONE_NEWNET) == 0 && runIP(farLines);
    ::close(farNetwork);
}

Machine::~Machine() {
    ::close(network_);
}

void Machine::enter() const {
    ::setns(network_, CLONE_NEWNET);
}

} // namespace qk::bench
