# SPDX-License-Identifier: Apache-2.0
"""What is to be found below a home folder, by looking through it."""
import os

SEARCHED = (".txt", ".pdf", ".png", ".html", ".zip")  # what the tests make of content and archives
LISTED = 40
TOLD = 20


class Item:
    def __init__(self, path, facts):
        self.path = path
        self.modified = facts.st_mtime_ns
        self.used = facts.st_atime_ns

    def key(self):
        """The order of the search: latest first. The library's dates are numbers of seconds, so these are too."""
        return -seconds(self.modified), -seconds(self.used), os.fsencode(self.path)


def seconds(nanoseconds):
    whole, part = divmod(nanoseconds, 10**9)
    return float(whole) + float(part) * 1e-9


def below(folder):
    """All visible files and folders below it. Looking is no use of a folder, so its date is left alone."""
    waiting = [folder]
    while waiting:
        path = waiting.pop()
        try:
            opened = os.open(path, os.O_RDONLY | os.O_DIRECTORY | os.O_NOFOLLOW | os.O_NOATIME)
        except PermissionError:
            continue
        try:
            with os.scandir(opened) as entries:
                for entry in entries:
                    if entry.name.startswith("."):
                        continue
                    each = os.path.join(path, entry.name)
                    yield Item(each, entry.stat(follow_symlinks=False)), entry.is_dir(follow_symlinks=False)
                    if entry.is_dir(follow_symlinks=False):
                        waiting.append(each)
        finally:
            os.close(opened)


def scopes(home):
    for name in sorted(os.listdir(home)):
        path = os.path.join(home, name)
        if (not name.startswith(".") and name != "Library" and os.path.isdir(path) and not os.path.islink(path)
                and os.access(path, os.R_OK)):
            yield path


def listed(home):
    """The first items of the search that the list of recent files is made of."""
    home = os.path.realpath(home)
    # A search without scopes is one of everything that the user has.
    items = [item for scope in list(scopes(home)) or [home] for item, is_folder in below(scope)
             if not os.path.islink(item.path) and (is_folder or item.path.endswith(SEARCHED))]
    return sorted(items, key=Item.key)[:LISTED]


def recent(home):
    """The paths of the recent files, latest first."""
    return [item.path for item in sorted(listed(home), key=lambda item: -item.used)[:TOLD]]


def newest(home, count):
    """The newest of everything."""
    return sorted((item for item, _ in below(os.path.realpath(home))), key=Item.key)[:count]
