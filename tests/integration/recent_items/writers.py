# SPDX-License-Identifier: Apache-2.0
"""Processes that make, change, rename and remove files and folders below a home folder, at random."""
import os
import random
import select
import shutil
import signal
import socket
import sys
import time
import traceback

ENDINGS = (".txt", ".pdf", ".png", ".zip", ".qk7")
MOST_FILES = 1500
MOST_FOLDERS = 60
MOST_FOLDERS_OF_HOME = 3
PACE = 400  # changes a second, but for bursts
RETURNED = ".returned"  # ends the name of a folder that has left the home and come back, before the count of names then


def came_along(path):
    """Whether it was in a folder when that came back from elsewhere: of such a folder only itself is told."""
    count = os.path.splitext(os.path.basename(path))[0].rpartition("-")[2]
    ends = (os.path.splitext(part)[1] for part in os.path.dirname(path).split("/"))
    return any(end.startswith(RETURNED) and int(count) < int(end[len(RETURNED):]) for end in ends)


class Writer:
    """No name is ever used twice, so that each is told of one item."""

    def __init__(self, home, away, name, seed):
        self.home = home
        self.away = away
        self.name = name
        self.random = random.Random(seed)
        self.count = 0
        self.changes = 0
        self.tops = []
        self.folders = [os.path.join(home, "Shared")]
        self.files = []
        self.kinds = {self.make_file: 30, self.write: 25, self.use: 7, self.save: 5, self.rename_file: 10,
                      self.remove_file: 15, self.make_folder: 5, self.rename_folder: 3, self.remove_folder: 2,
                      self.leave_and_come_back: 2, self.make_folder_of_home: 0.4, self.burst: 0.2,
                      self.make_file_in_home: 1}

    def step(self):
        """One change."""
        kinds, weights = zip(*self.kinds.items())
        self.random.choices(kinds, weights)[0]()
        if len(self.files) > MOST_FILES:
            self.remove_folder()
            while len(self.files) > MOST_FILES:
                self.remove_file()
        if len(self.folders) > MOST_FOLDERS:
            self.remove_folder()
        self.changes += 1

    def new_name(self, ending=""):
        self.count += 1
        return f"{self.name}-{self.count}{ending}"

    def place(self, ending=""):
        return os.path.join(self.random.choice(self.folders), self.new_name(ending))

    def fill(self, path):
        with open(path, "wb") as file:
            file.write(b"x" * self.random.choice((0, 1, 5000)))

    def make_file(self):
        path = self.place(self.random.choice(ENDINGS))
        self.fill(path)
        self.files.append(path)

    def make_file_in_home(self):
        path = os.path.join(self.home, self.new_name(".txt"))
        self.fill(path)
        self.files.append(path)

    def write(self):
        if self.files:
            with open(self.random.choice(self.files), "ab") as file:
                file.write(b"more")

    def use(self):
        if self.files:
            os.utime(self.random.choice(self.files))

    def save(self):
        if self.files:
            path = self.random.choice(self.files)
            new = os.path.join(os.path.dirname(path), self.new_name(".new"))
            self.fill(new)
            os.rename(new, path)

    def rename_file(self):
        if self.files:
            index = self.random.randrange(len(self.files))
            path = self.place(os.path.splitext(self.files[index])[1])
            os.rename(self.files[index], path)
            self.files[index] = path

    def remove_file(self):
        if self.files:
            index = self.random.randrange(len(self.files))
            self.files[index], self.files[-1] = self.files[-1], self.files[index]
            os.remove(self.files.pop())

    def make_folder(self):
        path = self.place()
        os.mkdir(path)
        self.folders.append(path)
        for _ in range(self.random.randrange(4)):  # before anybody can have looked
            path = os.path.join(self.folders[-1], self.new_name(self.random.choice(ENDINGS)))
            self.fill(path)
            self.files.append(path)

    def make_folder_of_home(self):
        path = os.path.join(self.home, self.new_name())
        os.mkdir(path)
        self.folders.append(path)
        self.tops.append(path)
        if len(self.tops) > MOST_FOLDERS_OF_HOME:
            self.remove(self.tops.pop(0))

    def a_folder(self):
        """One that is no folder of the home itself."""
        return self.random.choice([each for each in self.folders[1:] if each not in self.tops] or [None])

    def remove_folder(self):
        folder = self.a_folder()
        if folder is not None:
            self.remove(folder)

    def remove(self, folder):
        shutil.rmtree(folder)
        self.moved(folder, None)

    def rename_folder(self):
        folder = self.a_folder()
        if folder is not None:
            into = self.random.choice([each for each in self.folders if not (each + "/").startswith(folder + "/")])
            self.move(folder, os.path.join(into, self.new_name(os.path.splitext(folder)[1])))

    def leave_and_come_back(self):
        folder = self.a_folder()
        if folder is not None:
            away = os.path.join(self.away, self.new_name())
            self.move(folder, away)
            if self.random.random() < 0.5:
                time.sleep(self.random.random() / 5)
            into = self.random.choice([each for each in self.folders if not (each + "/").startswith(away + "/")])
            self.move(away, os.path.join(into, self.new_name(f"{RETURNED}{self.count + 1}")))

    def move(self, old, new):
        os.rename(old, new)
        self.moved(old, new)

    def moved(self, old, new):
        def renamed(paths):
            for path in paths:
                if not (path + "/").startswith(old + "/"):
                    yield path
                elif new is not None:
                    yield new + path[len(old):]
        self.folders = list(renamed(self.folders))
        self.files = list(renamed(self.files))
        self.tops = list(renamed(self.tops))

    def burst(self):
        """Many files in one folder at once, some of which go at once."""
        folder = self.random.choice(self.folders)
        for number in range(self.random.randrange(100, 3000)):
            path = os.path.join(folder, self.new_name(".txt"))
            os.close(os.open(path, os.O_CREAT | os.O_WRONLY))
            if number % 4 == 0:
                self.files.append(path)
            else:
                os.remove(path)
            self.changes += 1


class Writers:
    """Some of them, which rest until they are told to go on."""

    def __init__(self, home, away, count, seed):
        os.mkdir(os.path.join(home, "Shared"))
        self.ends = []
        self.children = []
        for number in range(count):
            ours, theirs = socket.socketpair()
            child = os.fork()
            if child == 0:
                work(Writer(home, away, f"w{number}", f"{seed} {number}"), theirs)
            theirs.close()
            self.ends.append(ours)
            self.children.append(child)

    def go_on(self):
        for end in self.ends:
            end.send(b"go on")

    def rest(self):
        """How many changes they have made, once all of them rest."""
        for end in self.ends:
            end.send(b"rest")
        return sum(int(end.recv(100)) for end in self.ends)

    def end(self):
        for child in self.children:
            os.kill(child, signal.SIGKILL)
            os.waitpid(child, 0)


def work(writer, end):
    """What a child does; it is ended by its parent."""
    try:
        end.recv(100)
        while True:
            writer.step()
            time.sleep(writer.random.expovariate(PACE))
            if select.select([end], [], [], 0)[0]:
                end.recv(100)
                end.send(str(writer.changes).encode())
                end.recv(100)
    except BaseException:
        traceback.print_exc()
    finally:
        sys.stderr.flush()
        os._exit(1)
