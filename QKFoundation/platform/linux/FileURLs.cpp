// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileURLs.h"

#include <algorithm>
#include <array>

namespace qk::platform {
namespace {

// Types of file systems on another machine, and the scheme of their URLs.
struct RemoteType {
    std::string_view type;
    std::string_view scheme;
};
constexpr std::array kRemoteTypes{
    RemoteType{"9p", "9p"},
    RemoteType{"afs", "afs"},
    RemoteType{"ceph", "ceph"},
    RemoteType{"cifs", "smb"},
    RemoteType{"davfs", "dav"},
    RemoteType{"fuse.curlftpfs", "ftp"},
    RemoteType{"fuse.davfs", "dav"},
    RemoteType{"fuse.davfs2", "dav"},
    RemoteType{"fuse.glusterfs", "glusterfs"},
    RemoteType{"fuse.rclone", "rclone"},
    RemoteType{"fuse.s3fs", "s3"},
    RemoteType{"fuse.sshfs", "sftp"},
    RemoteType{"gfs2", "gfs2"},
    RemoteType{"glusterfs", "glusterfs"},
    RemoteType{"lustre", "lustre"},
    RemoteType{"ncpfs", "ncp"},
    RemoteType{"nfs", "nfs"},
    RemoteType{"nfs4", "nfs"},
    RemoteType{"ocfs2", "ocfs2"},
    RemoteType{"smb3", "smb"},
    RemoteType{"smbfs", "smb"},
};

const RemoteType* remoteType(std::string_view type) {
    const auto* const found = std::ranges::find(kRemoteTypes, type, &RemoteType::type);
    return found != kRemoteTypes.end() ? found : nullptr;
}

bool staysInPath(char byte) {
    static constexpr std::string_view kPlain = "/-._~!$&'()*+,;=:@";
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           kPlain.find(byte) != std::string_view::npos;
}

std::string escaped(std::string_view bytes) {
    static constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes) {
        if (staysInPath(byte)) {
            text.push_back(byte);
        } else {
            const auto value = static_cast<unsigned char>(byte);
            text.append({'%', kDigits[value >> 4U], kDigits[value & 15U]});
        }
    }
    return text;
}

std::optional<NSURL> urlWith(const std::string& text) {
    return NSURL::URLWithString(NSString::fromUTF8Lossy(text)); // all of it is ASCII
}

} // namespace

NSURL folderURL(std::string_view path) {
    while (path.ends_with('/')) {
        path.remove_suffix(1);
    }
    return urlWith("file://" + escaped(path) + "/").value();
}

std::optional<NSURL> remountURL(std::string_view type, std::string_view source) {
    const RemoteType* known = remoteType(type);
    if (known == nullptr) {
        return std::nullopt;
    }
    std::string place; // "host:/path" and "//host/share" alike become "host/path"
    if (source.starts_with("//")) {
        place = source.substr(2);
    } else if (const std::size_t end = source.find(":/"); end != std::string_view::npos) {
        place = std::string(source.substr(0, end)) + std::string(source.substr(end + 1));
    } else {
        place = source;
    }
    return urlWith(std::string(known->scheme) + "://" + escaped(place));
}

bool isRemoteType(std::string_view type) {
    return remoteType(type) != nullptr;
}

} // namespace qk::platform
