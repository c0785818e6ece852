// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/InotifyFolders.h"

#include <utility>

namespace qk::platform {

std::size_t InotifyFolders::Hash::operator()(const Key& key) const noexcept {
    constexpr std::size_t kOdd = 0x9E3779B97F4A7C15; // spreads addresses over all bits
    return std::hash<std::string_view>{}(key.second) ^ (reinterpret_cast<std::size_t>(key.first) * kOdd);
}

InotifyFolder& InotifyFolders::take() {
    InotifyFolder* folder = nullptr;
    if (free_.empty()) {
        folder = &memory_.emplace_back();
    } else {
        folder = free_.back();
        free_.pop_back();
        *folder = {};
    }
    folder->serial = ++lastSerial_;
    ++count_;
    return *folder;
}

InotifyFolder& InotifyFolders::addRoot(std::string path) {
    InotifyFolder& folder = take();
    folder.isRoot = true;
    folder.name = std::move(path);
    return folder;
}

InotifyFolder& InotifyFolders::add(InotifyFolder& parent, std::string_view name) {
    InotifyFolder& folder = take();
    attach(folder, parent, name);
    return folder;
}

InotifyFolder* InotifyFolders::find(const InotifyFolder& parent, std::string_view name) const {
    const auto found = byName_.find(Key(&parent, name));
    return found != byName_.end() ? *found : nullptr;
}

InotifyFolder* InotifyFolders::findWatch(int watch) const {
    const auto found = byWatch_.find(watch);
    return found != byWatch_.end() ? found->second : nullptr;
}

void InotifyFolders::setWatch(InotifyFolder& folder, int watch) {
    if (folder.watch >= 0 && folder.watch != watch) {
        byWatch_.erase(folder.watch);
    }
    folder.watch = watch;
    if (watch >= 0) {
        InotifyFolder*& owner = byWatch_[watch];
        if (owner != nullptr && owner != &folder) {
            owner->watch = -1;
        }
        owner = &folder;
    }
}

void InotifyFolders::detach(InotifyFolder& folder) {
    if (folder.parent == nullptr) {
        return;
    }
    byName_.erase(&folder);
    (folder.previous != nullptr ? folder.previous->next : folder.parent->firstChild) = folder.next;
    if (folder.next != nullptr) {
        folder.next->previous = folder.previous;
    }
    folder.parent = nullptr;
    folder.next = nullptr;
    folder.previous = nullptr;
}

void InotifyFolders::attach(InotifyFolder& folder, InotifyFolder& parent, std::string_view name) {
    folder.name = name;
    folder.parent = &parent;
    folder.next = parent.firstChild;
    if (folder.next != nullptr) {
        folder.next->previous = &folder;
    }
    parent.firstChild = &folder;
    byName_.insert(&folder);
}

void InotifyFolders::remove(InotifyFolder& folder, const std::function<void(int watch)>& dropWatch) {
    for (InotifyFolder* each : subtree(folder)) {
        if (const int watch = each->watch; watch >= 0) {
            setWatch(*each, -1);
            dropWatch(watch);
        }
        if (each != &folder) {
            byName_.erase(each);
        }
    }
    detach(folder);
    for (InotifyFolder* each : subtree(folder)) {
        each->serial = 0;
        each->names = {};
        free_.push_back(each);
        --count_;
    }
}

std::optional<std::string> InotifyFolders::path(const InotifyFolder& folder) {
    std::size_t length = 0;
    const InotifyFolder* top = &folder;
    for (; top->parent != nullptr; top = top->parent) {
        length += top->name.size() + 1;
    }
    if (!top->isRoot) {
        return std::nullopt;
    }
    const bool isSlash = top->name == "/";
    std::string path(isSlash ? length : top->name.size() + length, '/');
    std::size_t end = path.size();
    for (const InotifyFolder* each = &folder; each->parent != nullptr; each = each->parent) {
        end -= each->name.size();
        path.replace(end, each->name.size(), each->name);
        --end; // the slash in front of it
    }
    return isSlash && length == 0 ? "/" : path.replace(0, end, isSlash ? "" : top->name);
}

InotifyFolder& InotifyFolders::top(InotifyFolder& folder) {
    InotifyFolder* each = &folder;
    while (each->parent != nullptr) {
        each = each->parent;
    }
    return *each;
}

std::vector<InotifyFolder*> InotifyFolders::subtree(InotifyFolder& folder) {
    std::vector<InotifyFolder*> found{&folder};
    for (std::size_t at = 0; at < found.size(); ++at) {
        for (InotifyFolder* child = found[at]->firstChild; child != nullptr; child = child->next) {
            found.push_back(child);
        }
    }
    return found;
}

} // namespace qk::platform
