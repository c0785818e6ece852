// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Mounts.h"

#include "QKFoundation/platform/linux/parse/Text.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace qk::platform::parse {
namespace {

bool isOctal(char digit) {
    return digit >= '0' && digit <= '7';
}

// The kernel writes blanks, tabs, line feeds and backslashes as a backslash and three octal digits.
std::string unescaped(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '\\' && index + 3 < text.size() && isOctal(text[index + 1]) && isOctal(text[index + 2]) &&
            isOctal(text[index + 3])) {
            const int value = (text[index + 1] - '0') * 64 + (text[index + 2] - '0') * 8 + (text[index + 3] - '0');
            plain.push_back(static_cast<char>(value));
            index += 3;
        } else {
            plain.push_back(text[index]);
        }
    }
    return plain;
}

// Takes the word up to the next blank off the head of `line`; empty at the end.
std::string_view takeWord(std::string_view& line) {
    const std::size_t end = line.find(' ');
    const std::string_view word = line.substr(0, end);
    line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
    return word;
}

// "36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 - ext3 /dev/root rw": between the options and the hyphen stand any number
// of words.
std::optional<Mount> mount(std::string_view line) {
    static_cast<void>(takeWord(line)); // its number
    static_cast<void>(takeWord(line)); // its parent's
    Mount mount;
    mount.device = takeWord(line);
    mount.root = unescaped(takeWord(line));
    mount.path = unescaped(takeWord(line));
    static_cast<void>(takeWord(line)); // options of the mount
    while (!line.empty() && takeWord(line) != "-") {
    }
    mount.type = unescaped(takeWord(line));
    mount.source = unescaped(takeWord(line));
    mount.superOptions = unescaped(takeWord(line));
    if (mount.path.empty() || mount.path.front() != '/' || mount.type.empty()) {
        return std::nullopt;
    }
    return mount;
}

} // namespace

std::vector<Mount> mounts(std::string_view mountInfo) {
    std::vector<Mount> found;
    forEachLine(mountInfo, [&found](std::string_view line) {
        if (auto parsed = mount(line)) {
            found.push_back(*std::move(parsed));
        }
        return true;
    });
    return found;
}

std::vector<std::string> hiddenMounts(std::string_view userTable) {
    std::vector<std::string> paths;
    forEachLine(userTable, [&paths](std::string_view line) {
        std::string_view target;
        bool isHidden = false;
        while (!line.empty()) {
            std::string_view word = takeWord(line);
            if (word.starts_with("TARGET=")) {
                target = word.substr(word.find('=') + 1);
            } else if (word.starts_with("OPTS=")) {
                word.remove_prefix(word.find('=') + 1);
                isHidden = hasOption(word, "x-gvfs-hide");
            }
        }
        if (isHidden && !target.empty()) {
            paths.push_back(unescaped(target));
        }
        return true;
    });
    return paths;
}

bool hasOption(std::string_view options, std::string_view option) {
    for (std::size_t place = options.find(option); place != std::string_view::npos;
         place = options.find(option, place + 1)) {
        const std::size_t end = place + option.size();
        if ((place == 0 || options[place - 1] == ',') && (end == options.size() || options[end] == ',')) {
            return true;
        }
    }
    return false;
}

std::string_view deviceProperty(std::string_view record, std::string_view key) {
    std::string_view value;
    forEachLine(record, [&](std::string_view line) {
        if (line.starts_with(key)) {
            value = line.substr(key.size());
        }
        return true;
    });
    return value;
}

} // namespace qk::platform::parse
