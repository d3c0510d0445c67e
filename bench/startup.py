#!/usr/bin/python3
"""How long a start takes: beside a bare window, and with and without the page for usage statistics.

    bench/startup.py FOLDER-OF-PROGRAMS [ROUNDS]

The kinds of start take turns in one run. Measured are the time from the start of the process to its window on the
screen, and, for the page, the processor time that the program itself uses in its first six seconds, in which the page
starts: what the page costs the window shows there. Medians. The statistics go to a closed port of this machine.
"""
import contextlib
import ctypes
import os
import pathlib
import select
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

OBSERVED = 6.0
PATIENCE = 60.0
TICKS = os.sysconf("SC_CLK_TCK")
BARE = "a bare window with a table"
AIMS = {"a small document": 1.5, "200,000 entries": 5.5}


class MapEvent(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("sent", ctypes.c_int),
                ("display", ctypes.c_void_p), ("event", ctypes.c_ulong), ("window", ctypes.c_ulong),
                ("passing", ctypes.c_int), ("room", ctypes.c_long * 24)]


class Screen:
    """Says when a window comes."""
    SUBSTRUCTURE_NOTIFY = 1 << 19
    MAP_NOTIFY = 19

    def __init__(self, display):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(display.encode()))
        self.x.XSelectInput(self.display, ctypes.c_ulong(self.x.XDefaultRootWindow(self.display)),
                            ctypes.c_long(self.SUBSTRUCTURE_NOTIFY))
        self.x.XSync(self.display, 0)

    def forget(self):
        self.x.XSync(self.display, 1)

    def wait_for_window(self):
        event = MapEvent()
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            while self.x.XPending(self.display):
                self.x.XNextEvent(self.display, ctypes.byref(event))
                if event.type == self.MAP_NOTIFY and not event.passing:
                    return
            select.select([self.x.XConnectionNumber(self.display)], [], [], 1.0)
        sys.exit("no window came")


@contextlib.contextmanager
def on_display():
    """A display of its own, which every program that is started here opens on; its name."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1000x24", "-nolisten", "tcp",
                               "-noreset"],
                              pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.environ["DISPLAY"] = ":" + os.read(read_end, 16).decode().strip()
    try:
        yield os.environ["DISPLAY"]
    finally:
        server.terminate()
        server.wait()


def without_page(programs, folder):
    """A copy of the program that finds no page beside itself."""
    for name in ("bin/pendra", "libexec/pendra/pendra-terminal", "libexec/pendra/pendra-windows"):
        (folder / name).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(programs.parent / name, folder / name)
    (folder / "share").symlink_to(programs.parent / "share")
    return folder / "bin" / "pendra"


def environment(home):
    (home / ".config" / "com.corvel.pendra").mkdir(parents=True)
    (home / "run").mkdir(mode=0o700)
    return {**os.environ, "HOME": str(home), "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_CACHE_HOME": str(home / ".cache"), "XDG_RUNTIME_DIR": str(home / "run"), "QT_QPA_PLATFORM": "xcb",
            "LC_ALL": "C.UTF-8", "PENDRA_ANALYTICS_ADDRESS": "http://127.0.0.1:9/"}


def session_bus(env):
    """A bus as every desktop has one; without it each start would wait for one to be launched."""
    bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], env=env,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    env["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()
    return bus


def processor_seconds(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def measure(screen, command, env, observed=0.0):
    """Seconds to the window, and processor seconds as long as it is observed."""
    screen.forget()
    begin = time.monotonic()
    process = subprocess.Popen(command, env=env, stderr=subprocess.DEVNULL)
    screen.wait_for_window()
    shown = time.monotonic() - begin
    time.sleep(max(0.0, begin + observed - time.monotonic()))
    used = processor_seconds(process)
    process.terminate()
    process.wait()
    return shown, used


def in_turn(screen, kinds, rounds, env, observed=0.0):
    measured = {kind: [] for kind in kinds}
    for turn in range(rounds + 1):
        for kind, command in kinds.items():
            sample = measure(screen, command, env, observed)
            if turn > 0:  # the first turn only warms the disk
                measured[kind].append(sample)
    return measured


def sample(programs, path, entries):
    subprocess.run([programs / "sample-document", path, "--entries", str(entries), "--standalone"], check=True)
    return path


def report_starts(measured):
    bare = statistics.median(shown for shown, _ in measured[BARE])
    for kind, samples in measured.items():
        shown = statistics.median(sample[0] for sample in samples)
        aim = AIMS.get(kind)
        against = f"   {shown / bare:.2f} times the bare one (aim {aim})" if aim else ""
        print(f"{kind:28}  window after {shown * 1000:5.0f} ms{against}{'  MISSED' if aim and shown > aim * bare else ''}")


def report_page(measured):
    for kind, samples in measured.items():
        shown, used = (statistics.median(column) for column in zip(*samples))
        print(f"{kind:28}  window after {shown * 1000:5.0f} ms   processor in {OBSERVED:.0f} s: {used * 1000:5.0f} ms")


def main():
    programs, rounds = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) > 2 else 11
    with on_display() as display, tempfile.TemporaryDirectory(prefix="pendra-startup-",
                                                              ignore_cleanup_errors=True) as scratch:
        screen, folder = Screen(display), pathlib.Path(scratch)
        env = environment(folder / "home")
        bus = session_bus(env)
        pendra = programs / "pendra"
        report_starts(in_turn(screen, {
            BARE: [programs / "bare-window"],
            "a small document": [pendra, sample(programs, folder / "Small.pdr", 200)],
            "200,000 entries": [pendra, sample(programs, folder / "Large.pdr", 200000)],
        }, rounds, env))
        hours = sample(programs, folder / "Hours.pdr", 2000)
        report_page(in_turn(screen, {
            "with the page": [pendra, hours],
            "without": [without_page(programs, folder / "bare"), hours],
        }, rounds, env, OBSERVED))
        bus.terminate()
        bus.wait()
        time.sleep(1)  # what the bus had started goes with it, and takes what it had mounted away


if __name__ == "__main__":
    main()
