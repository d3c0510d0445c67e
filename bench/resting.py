#!/usr/bin/python3
"""What the program holds in memory when nothing is done: with an empty document, beside a bare window with a table.

    bench/resting.py FOLDER-OF-PROGRAMS [SECONDS]

Measured so many seconds after the window has come: the proportional share of all that the process uses, in which what
many programs have in common counts in parts, and what it alone holds and no file could give back. Medians of a few
processes that take turns.
"""
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

from startup import BARE, Screen, environment, on_display, sample, session_bus

AIM = 2.0
ROUNDS = 3


def resting(screen, command, env, seconds):
    """Mebibytes: the share, and what is its own."""
    screen.forget()
    process = subprocess.Popen(command, env=env, stderr=subprocess.DEVNULL)
    screen.wait_for_window()
    time.sleep(seconds)
    sizes = {}
    for line in pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text().splitlines()[1:]:
        name, size = line.split()[:2]
        sizes[name.rstrip(":")] = int(size) / 1024
    process.terminate()
    process.wait()
    return sizes["Pss"], sizes["Private_Dirty"]


def main():
    programs, seconds = pathlib.Path(sys.argv[1]).resolve(), float(sys.argv[2]) if len(sys.argv) > 2 else 10.0
    with on_display() as display, tempfile.TemporaryDirectory(prefix="pendra-resting-") as scratch:
        screen, folder = Screen(display), pathlib.Path(scratch)
        env = environment(folder / "home")
        bus = session_bus(env)
        kinds = {BARE: [programs / "bare-window"],
                 "an empty document": [programs / "pendra", sample(programs, folder / "Empty.pdr", 0)]}
        measured = {kind: [] for kind in kinds}
        for _ in range(ROUNDS):
            for kind, command in kinds.items():
                measured[kind].append(resting(screen, command, env, seconds))
        bus.terminate()
        bus.wait()
        time.sleep(1)  # what the bus had started goes with it, and takes what it had mounted away
    medians = {kind: [statistics.median(column) for column in zip(*samples)] for kind, samples in measured.items()}
    for kind, (share, own) in medians.items():
        print(f"{kind:28}  its share {share:6.1f} MiB, its own {own:6.1f} MiB")
    for what, bare, full in zip(("share", "own"), *medians.values()):
        print(f"{what:28}  {full / bare:.2f} times (aim {AIM}){'  MISSED' if full > AIM * bare else ''}")


if __name__ == "__main__":
    main()
