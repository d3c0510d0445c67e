"""A bare Debian 12 in a folder. Whatever runs in it runs in mount and process namespaces of its own: when it ends, its
mounts and processes are gone, and the machine around it has seen none of them."""
import os
import pathlib
import shutil
import subprocess

MIRROR = os.environ.get("PENDRA_MIRROR", "http://deb.debian.org/debian")
USER = "tess"
HOME = f"/home/{USER}"
# The rest of the environment stays outside.
ENVIRONMENT = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL": "C.UTF-8", "DEBIAN_FRONTEND": "noninteractive"}
# What changes by itself with every installation of anything: caches, logs, and the package manager's own books.
BOOKS = ("var/cache", "var/log", "var/lib/apt", "var/lib/dpkg", "var/backups", "run", "tmp", "proc", "sys", "dev",
         "etc/ld.so.cache", "root")
APART = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--propagation", "private", "--"]


class Root:
    def __init__(self, folder):
        self.folder = pathlib.Path(folder)

    def make(self):
        """Downloads and unpacks it: what every Debian has, and one user."""
        with open(self.folder.with_suffix(".log"), "w", encoding="utf-8") as log:
            subprocess.run([*APART, "debootstrap", "--variant=minbase", "bookworm", self.folder, MIRROR], check=True,
                           stdout=log, stderr=log)
        shutil.copy("/etc/resolv.conf", self.folder / "etc" / "resolv.conf")
        self.run("useradd", "--create-home", USER)

    def command(self, *words, user=None, environment=None):
        """The command that runs these words in it."""
        folder = str(self.folder)
        enter = 'mount -t proc proc "$0/proc" && mount -t tmpfs tmpfs "$0/dev/shm" && exec chroot "$@"'
        whom = ["--userspec", f"{user}:{user}", folder] if user else [folder]
        inside = {**ENVIRONMENT, "HOME": HOME if user else "/root", **(environment or {})}
        settings = [f"{name}={value}" for name, value in inside.items()]
        return [*APART, "sh", "-c", enter, folder, *whom, "env", "-i", *settings, *words]

    def run(self, *words, user=None, **options):
        """Runs these words in it and returns what they print; ends the trial with it when they fail."""
        done = subprocess.run(self.command(*words, user=user, environment=options.pop("environment", None)), text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, **options)
        if done.returncode != 0:
            raise SystemExit(f"{' '.join(words)} ended with {done.returncode}:\n{done.stdout}")
        return done.stdout

    def take(self, file):
        """Lays a file of the machine into its /tmp and returns its name there."""
        shutil.copy(file, self.folder / "tmp")
        return f"/tmp/{pathlib.Path(file).name}"

    def files(self):
        """Every file and folder in it, but the books."""
        found = set()
        for where, folders, files in os.walk(self.folder):
            here = os.path.relpath(where, self.folder)
            path = "" if here == "." else here + "/"
            folders[:] = [name for name in folders if path + name not in BOOKS]
            found |= {path + name for name in [*folders, *files] if path + name not in BOOKS}
        return found

    def contents(self, folder):
        """What the files of a folder hold, by their paths."""
        base = self.folder / folder.lstrip("/")
        return {str(path.relative_to(base)): path.read_bytes() for path in base.rglob("*") if path.is_file()}
