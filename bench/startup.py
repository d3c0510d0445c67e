#!/usr/bin/python3
"""How long a start takes, with the page for usage statistics and without it.

    bench/startup.py FOLDER-OF-PROGRAMS [ROUNDS]

The two kinds of start take turns in one run. Measured are the time from the start of the process to its window on the
screen, and the processor time that the program itself uses in its first six seconds, in which the page starts: what the
page costs the window shows there. Medians. The statistics go to a closed port of this machine.
"""
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

TITLE = "Hours"
OBSERVED = 6.0
TICKS = os.sysconf("SC_CLK_TCK")


def without_page(programs, folder):
    """A copy of the program that finds no page beside itself."""
    (folder / "bin").mkdir(parents=True)
    (folder / "share").symlink_to(programs.parent / "share")
    return shutil.copy(programs / "pendra", folder / "bin" / "pendra")


def environment(home):
    (home / ".config" / "com.corvel.pendra").mkdir(parents=True)
    return {**os.environ, "HOME": str(home), "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_CACHE_HOME": str(home / ".cache"), "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8",
            "PENDRA_ANALYTICS_ADDRESS": "http://127.0.0.1:9/"}


def is_shown(env):
    return bool(subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{TITLE}$"], env=env,
                               capture_output=True, check=False).stdout)


def processor_seconds(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def measure(program, document, env):
    """Seconds to the window, and processor seconds of the first six."""
    begin = time.monotonic()
    process = subprocess.Popen([program, document], env=env, stderr=subprocess.DEVNULL)
    while not is_shown(env):
        if process.poll() is not None:
            sys.exit(f"{program} ended before its window came")
        time.sleep(0.002)
    shown = time.monotonic() - begin
    time.sleep(max(0.0, begin + OBSERVED - time.monotonic()))
    used = processor_seconds(process)
    process.terminate()
    process.wait()
    return shown, used


def main():
    programs, rounds = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) > 2 else 11
    read_end, write_end = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1000x24", "-nolisten", "tcp",
                               "-noreset"],
                              pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.environ["DISPLAY"] = ":" + os.read(read_end, 16).decode().strip()
    with tempfile.TemporaryDirectory(prefix="pendra-startup-") as scratch:
        folder = pathlib.Path(scratch)
        env = environment(folder / "home")
        document = folder / f"{TITLE}.pdr"
        subprocess.run([programs / "sample-document", document, "--entries", "2000", "--standalone"], check=True)
        kinds = {"with the page": programs / "pendra", "without": without_page(programs, folder / "bare")}
        measured = {kind: [] for kind in kinds}
        for turn in range(rounds + 1):
            for kind, program in kinds.items():
                sample = measure(program, document, env)
                if turn > 0:  # the first turn only warms the disk
                    measured[kind].append(sample)
    server.terminate()
    for kind, samples in measured.items():
        shown, used = (statistics.median(column) for column in zip(*samples))
        spread = [sample[0] for sample in samples]
        print(f"{kind:14}  window after {shown * 1000:5.0f} ms ({min(spread) * 1000:.0f} to {max(spread) * 1000:.0f})"
              f"   processor in {OBSERVED:.0f} s: {used * 1000:5.0f} ms")


if __name__ == "__main__":
    main()
