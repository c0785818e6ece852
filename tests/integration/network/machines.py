# SPDX-License-Identifier: Apache-2.0
"""Machines that are network namespaces. A script enters a world of its own first: nothing that it makes is seen
outside, and all of it is gone with the script, however that ends."""
import itertools
import json
import os
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77  # the return code that says so to ctest
INSIDE = "QK_INSIDE_OWN_NAMESPACES"


def skip(reason):
    print(f"Skipped: {reason}")
    sys.exit(SKIPPED)


def program():
    return os.path.abspath(sys.argv[1])


def enter(*needed):
    """Starts this script anew in its own network, mounts and host name, as root or as what this user may call so.
    `needed` are the programs without which there is nothing to test."""
    if len(sys.argv) != 2:
        sys.exit(f"usage: {sys.argv[0]} DESCRIBE_NETWORK_PROGRAM")
    os.environ["PATH"] = os.environ.get("PATH", "") + ":/usr/sbin:/sbin"
    for each in ("ip", "unshare", "mount", *needed):
        if shutil.which(each) is None:
            skip(f"there is no {each} here")
    if os.environ.get(INSIDE) is None:
        command = ["unshare", "--mount", "--net", "--uts"]
        if os.geteuid() != 0:
            command += ["--user", "--map-root-user"]
        needs = "mount -t tmpfs tmpfs /run && ip netns add tried && ip netns exec tried true"
        tried = subprocess.run([*command, "sh", "-c", needs], capture_output=True, text=True)
        if tried.returncode != 0:
            skip(f"namespaces are not allowed here: {tried.stderr.strip()}")
        os.environ[INSIDE] = "1"
        os.execvp("unshare", [*command, sys.executable, "-B", *sys.argv])
    # What this system runs, its network manager and its bus first of all, is not that of the machines.
    subprocess.run(["mount", "-t", "tmpfs", "tmpfs", "/run"], check=True)
    for variable in ("DBUS_SYSTEM_BUS_ADDRESS", "http_proxy", "https_proxy", "HTTP_PROXY", "HTTPS_PROXY", "no_proxy"):
        os.environ.pop(variable, None)
    resolv_conf = os.path.realpath("/etc/resolv.conf")
    if not os.path.exists(resolv_conf):  # a link to where that system keeps it
        os.makedirs(os.path.dirname(resolv_conf), exist_ok=True)
        open(resolv_conf, "w", encoding="utf-8").close()


def run(*words, **options):
    done = subprocess.run(words, capture_output=True, text=True, **options)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(words)}: {done.stderr.strip()}")
    return done.stdout


class Machine:
    """A network namespace with its loopback interface up, and files that its programs see in the place of the system's:
    `files` by path."""
    numbers = itertools.count(1)

    def __init__(self):
        self.name = f"qk{os.getpid()}-{next(self.numbers)}"
        self.folder = tempfile.mkdtemp(prefix="qk-machine-")
        self.files = {}
        self.variables = {}
        run("ip", "netns", "add", self.name)
        self.ip("link set lo up")
        self.write_sysctl("net/ipv6/conf/all/accept_dad", 0)  # addresses hold at once
        self.write_sysctl("net/ipv6/conf/default/accept_dad", 0)
        self.set_file("/etc/resolv.conf", "")

    def remove(self):
        subprocess.run(["ip", "netns", "delete", self.name], check=False)
        shutil.rmtree(self.folder, ignore_errors=True)

    def set_file(self, path, text):
        """The file at `path` as the programs of this machine see it."""
        kept = os.path.join(self.folder, str(len(self.files)) + "-" + os.path.basename(path))
        with open(kept, "w", encoding="utf-8") as file:
            file.write(text)
        self.files[path] = kept

    def write_sysctl(self, name, value):
        self.run("sh", "-c", f"echo {value} > /proc/sys/{name}")

    def ip(self, *lines):
        """Each line is one command of ip."""
        for line in lines:
            run("ip", "-n", self.name, *line.split())

    def can(self, line):
        """Whether that command of ip worked, which it does not where the kernel lacks a kind of links."""
        return subprocess.run(["ip", "-n", self.name, *line.split()], capture_output=True).returncode == 0

    def ask(self, line):
        return json.loads(run("ip", "-n", self.name, "-j", *line.split()) or "[]")

    def command(self, *words):
        """What starts a program on this machine."""
        mounts = [f'mount --bind "{kept}" "{path}"' for path, kept in self.files.items()]
        return ["ip", "netns", "exec", self.name, "sh", "-c", " && ".join([*mounts, 'exec "$@"']), "sh", *words]

    def environment(self):
        return {**os.environ, **self.variables}

    def run(self, *words):
        return run(*self.command(*words), env=self.environment())

    def start(self, *words, **options):
        return subprocess.Popen(self.command(*words), text=True, env=self.environment(), **options)

    def describe(self, *mode):
        return json.loads(self.run(program(), *mode))
