#!/usr/bin/python3
"""How long an answer takes in a terminal: beside a plain read of the file, and beside another program that times.

    bench/terminal.py FOLDER-OF-PROGRAMS [ROUNDS]

`pendra status` beside `plain-read`, which reads every row of the same file and does nothing else; `pendra start` and
`stop` with the program running, beside `timew start` and `stop` where Timewarrior is installed. All take turns in one
run. Medians, of the whole process each. What `start` and `stop` did is in the file when they return: that is checked.
Timewarrior counts whole seconds and refuses an interval of none: each of the four begins in a second of its own, and
the wait for that is no part of what is measured. Where the machine has something else to do, too,
`chrt -f 10 ionice -c1 bench/terminal.py ...`, as root, puts all of them before it alike.
"""
import json
import os
import pathlib
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

INSIDE = "PENDRA_BENCH_INSIDE"
READING, STARTING = 1.5, 2.0  # the aims


def timed(command, env, status=0):
    begin = time.monotonic()
    done = subprocess.run(command, env=env, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                          check=False)
    if done.returncode != status:
        sys.exit(f"{command} ended with {done.returncode}: {done.stdout.decode()}")
    return time.monotonic() - begin, done.stdout


def await_next_second():
    time.sleep(1.01 - time.time() % 1)


def in_turn(kinds, rounds):
    """The median of each kind, which is a function that gives its seconds."""
    measured = {kind: [] for kind in kinds}
    for turn in range(rounds + 1):
        for kind, measure in kinds.items():
            seconds = measure()
            if turn > 0:  # the first turn only warms the disk
                measured[kind].append(seconds)
    return {kind: statistics.median(samples) for kind, samples in measured.items()}


def tell(what, seconds, against=None, aim=None):
    ratio = f"   {seconds / against:5.2f} times, aim {aim}{'  MISSED' if seconds > aim * against else ''}" if against else ""
    print(f"{what:44} {seconds * 1000:7.1f} ms{ratio}")


def reading(programs, folder, env, rounds):
    for entries in (2000, 60000):
        document = folder / f"{entries}.pdr"
        subprocess.run([programs / "sample-document", document, "--entries", str(entries), "--standalone"], check=True)
        medians = in_turn({
            "plain": lambda: timed([programs / "plain-read", document], env)[0],
            "status": lambda: timed([programs / "pendra", "status", "--json", "--document", document], env)[0],
        }, rounds)
        tell(f"a plain read of {entries} entries", medians["plain"])
        tell("pendra status", medians["status"], medians["plain"], READING)


def running(programs, document, env):
    """The program with that document, once it can be asked."""
    program = subprocess.Popen([programs / "pendra", document], env={**env, "QT_QPA_PLATFORM": "offscreen"},
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    ask = ["gdbus", "call", "--session", "--dest", "com.corvel.pendra", "--object-path", "/com/corvel/pendra", "--method",
           "com.corvel.pendra.Timing1.Running"]
    for _ in range(600):
        if subprocess.run(ask, env=env, capture_output=True, check=False).returncode == 0:
            return program
        time.sleep(0.1)
    sys.exit("the program does not answer")


def starting(programs, folder, env, rounds):
    document = folder / "2000.pdr"
    activity = subprocess.run(["sqlite3", document, "SELECT id FROM Activity WHERE completed = 0 LIMIT 1"], check=True,
                              capture_output=True, text=True).stdout.strip()
    subprocess.run(["sqlite3", document, f"UPDATE Activity SET notes = 'quitespecial' WHERE id = {activity}"], check=True)
    program = running(programs, document, env)

    def runs():
        return len(json.loads(timed([programs / "pendra", "status", "--json"], env)[1])["running"])

    def pendra(verb, then):
        def measure():
            await_next_second()
            seconds, _ = timed([programs / "pendra", verb, "quitespecial"], env)
            if runs() != then:
                sys.exit(f"the file does not hold what {verb} did")
            return seconds
        return measure

    kinds = {"pendra start": pendra("start", 1), "pendra stop": pendra("stop", 0)}
    other = shutil.which("timew")
    if other:
        timew = {**env, "TIMEWARRIORDB": str(folder / "timew")}
        (folder / "timew" / "data").mkdir(parents=True)
        (folder / "timew" / "timewarrior.cfg").touch()

        def theirs(verb):
            def measure():
                await_next_second()
                return timed([other, verb, "special"], timew)[0]
            return measure

        kinds |= {"timew start": theirs("start"), "timew stop": theirs("stop")}
    medians = in_turn(kinds, rounds)
    program.send_signal(signal.SIGTERM)
    program.wait()
    for verb in ("start", "stop"):
        if other:
            tell(f"timew {verb}", medians[f"timew {verb}"])
        tell(f"pendra {verb}", medians[f"pendra {verb}"], medians.get(f"timew {verb}"), STARTING)
    if not other:
        print("Timewarrior is not installed; there is nothing to compare start and stop with")


def main():
    if not os.environ.get(INSIDE):
        os.environ[INSIDE] = "1"
        os.execvp("dbus-run-session", ["dbus-run-session", "--", sys.executable, *sys.argv])
    programs, rounds = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) > 2 else 21
    with tempfile.TemporaryDirectory(prefix="pendra-terminal-") as scratch:
        folder = pathlib.Path(scratch)
        (folder / ".config" / "com.corvel.pendra").mkdir(parents=True)
        (folder / ".config" / "com.corvel.pendra" / "defaults.ini").write_text("[General]\nVTAnalyticsTracker=false\n")
        env = {**os.environ, "HOME": scratch, "XDG_CONFIG_HOME": str(folder / ".config"),
               "XDG_CACHE_HOME": str(folder / ".cache"), "LC_ALL": "C.UTF-8"}
        reading(programs, folder, env, rounds)
        starting(programs, folder, env, rounds)


if __name__ == "__main__":
    main()
