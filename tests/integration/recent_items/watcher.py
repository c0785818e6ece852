# SPDX-License-Identifier: Apache-2.0
"""The process that watches, and the users as whom to run it."""
import os
import selectors
import shutil
import subprocess
import sys
import tempfile
import time
import traceback

PATIENCE = int(os.environ.get("QK_PATIENCE", "120"))  # seconds
UNKNOWN_USER = 64_321


class Watcher:
    """A process over a home folder. It is asked by lines and answers by lines."""

    def __init__(self, program, home):
        environment = {"PATH": "/usr/bin:/bin", "HOME": home, "LC_ALL": "C.UTF-8"}
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS"):
            if name in os.environ:
                environment[name] = os.environ[name]
        self.process = subprocess.Popen([program, home], env=environment, cwd="/", bufsize=0, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)
        self.waiter = selectors.DefaultSelector()
        self.waiter.register(self.process.stdout, selectors.EVENT_READ)
        self.rest = b""
        self.last = {}  # of each kind of line: its fields
        self.changed = set()  # all names that were told of
        self.told = 0
        self.until(lambda: "ready" in self.last, "it is ready")

    def read(self, seconds):
        """Takes the lines that come within that time; whether any did."""
        if not self.waiter.select(seconds):
            return False
        data = os.read(self.process.stdout.fileno(), 1 << 20)
        if not data:
            raise AssertionError(f"the watching process ended with {self.process.wait()}")
        *lines, self.rest = (self.rest + data).split(b"\n")
        for line in lines:
            kind, *fields = os.fsdecode(line).split("\t")
            self.last[kind] = fields
            self.told += 1
            if kind == "changed":
                self.changed.update(fields)
        return True

    def until(self, holds, what, otherwise=None):
        """Waits until that holds of what was told."""
        limit = time.monotonic() + PATIENCE
        while not holds():
            if time.monotonic() > limit:
                raise AssertionError(f"not told in {PATIENCE} s: {what}" + (f"\n{otherwise()}" if otherwise else ""))
            self.read(1)

    def ask(self, command):
        answer = f"did {command.split()[0]}"
        self.last.pop(answer, None)
        self.process.stdin.write(command.encode() + b"\n")
        self.until(lambda: answer in self.last, f"the answer to {command}")

    def items(self, kind):
        """The pairs of path and date that were told last; 0 for what had no date, as a file that was just removed."""
        fields = self.last.get(kind, [])
        return list(zip(fields[1::2], (0 if date == "-" else int(date) for date in fields[0::2])))

    def descriptors(self):
        folder = f"/proc/{self.process.pid}/fd"
        kinds = (kind_of(os.path.join(folder, name)) for name in os.listdir(folder))
        return sorted(kind for kind in kinds if kind is not None)

    def means(self):
        descriptors = self.descriptors()
        return "fanotify" if "anon_inode:[fanotify]" in descriptors else "inotify"

    def memory(self):
        """What is resident, in KiB."""
        with open(f"/proc/{self.process.pid}/status", encoding="utf-8") as status:
            return next(int(line.split()[1]) for line in status if line.startswith("VmRSS:"))

    def end(self):
        """The process lets go of everything first and ends then; how it ends is a part of the test."""
        self.ask("end")
        left = self.descriptors()
        self.process.stdin.close()
        status = self.process.wait()
        self.process.stdout.close()
        if status != 0:
            raise AssertionError(f"the watching process ended with {status}")
        return left

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        for stream in (self.process.stdin, self.process.stdout):
            stream.close()


def kind_of(descriptor):
    """"anon_inode:[inotify]", "pipe", the path of a file; nothing of one that has just been closed."""
    try:
        target = os.readlink(descriptor)
    except FileNotFoundError:
        return None
    return target if target.startswith(("anon_inode:", "/")) else target.split(":")[0]


def users():
    """The users to test as. Root may watch with other means than everybody; the home folder of a user whom nobody knows
    is $HOME."""
    return [0, UNKNOWN_USER] if os.geteuid() == 0 else [os.geteuid()]


def as_each_user(program, test):
    """Calls `test` with the path of the program and a folder of its own as each of the users, each in a process of its
    own. The status to exit with."""
    status = 0
    for user in users():
        folder = os.path.realpath(tempfile.mkdtemp(prefix="qkfoundation-recent-"))
        copied = shutil.copy(program, os.path.join(folder, "watch"))  # where everybody may reach it
        os.chown(folder, user, -1)
        sys.stdout.flush()
        child = os.fork()
        if child == 0:
            result = 1
            try:
                if user != os.geteuid():
                    os.setgroups([])
                    os.setresgid(user, user, user)
                    os.setresuid(user, user, user)
                result = test(copied, folder)
            except BaseException:
                traceback.print_exc()
            finally:
                sys.stdout.flush()
                sys.stderr.flush()
                os._exit(result)
        status |= os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])
        shutil.rmtree(folder, ignore_errors=True)
    return status
