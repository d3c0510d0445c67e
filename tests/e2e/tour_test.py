"""Without a display the program says what it can still do, and does it: it draws its windows into pictures."""
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

WINDOWS = {"setup", "timer-window", "timer-window-empty", "activity-editor", "time-entry-editor", "send-time",
           "customers-and-jobs", "service-items", "preferences", "restore", "time-away", "report",
           "completed-activities", "welcome", "about", "start-earlier",
           *(f"preferences-{page}" for page in ("timing", "appearance", "backups", "vantor", "statistics"))}
DAY = [f"day-{step}-{name}" for step, name in enumerate(
    ("set-up", "add", "add", "time", "correct", "take-back", "send", "sent", "back-up", "report"), 1)]


def expect(what, held):
    if not held:
        sys.exit(f"FAILED: {what}")


def size_of(picture):
    return struct.unpack(">II", picture.read_bytes()[16:24])


def test(program, folder):
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
    environment.update(HOME=str(folder / "home"), XDG_CONFIG_HOME=str(folder / "home" / "config"),
                       XDG_CACHE_HOME=str(folder / "home" / "cache"), TZ="Asia/Tokyo", LC_ALL="de_DE.UTF-8")

    refused = subprocess.run([program], env=environment, capture_output=True, text=True)
    expect("it ends with 2", refused.returncode == 2)
    expect("one line names the way out", refused.stderr.count("\n") == 1 and "./pendra --tour DIR" in refused.stderr)

    album = folder / "new" / "album"
    drawn = subprocess.run([program, "--tour", str(album)], env=environment, capture_output=True, text=True, timeout=120)
    expect(f"the tour ends well, not with {drawn.returncode}:\n{drawn.stderr}", drawn.returncode == 0)
    expect("every window in both looks at both scales", {picture.name for picture in album.iterdir()} == {
        f"{window}-{look}{scale}.png" for window in [*WINDOWS, *DAY] for look in ("light", "dark")
        for scale in ("", "@2x")} | {"tour.md"})
    story = (album / "tour.md").read_text()
    expect("the day is told step by step", re.findall(r"\((.*)-light\.png\)", story) == DAY)
    expect("Vantor has what was timed", "Timed: 2.5 hours. Received by Vantor: 2.5 hours in 2 records." in story)
    for window in WINDOWS:
        light, dark, fine = (album / f"{window}-{ending}.png" for ending in ("light", "dark", "light@2x"))
        expect(f"{window} is twice as fine at scale 2", size_of(fine) == tuple(2 * side for side in size_of(light)))
        expect(f"{window} has two looks", light.read_bytes() != dark.read_bytes())
    expect("nothing of the user's was touched", not list((folder / "home").rglob("com.corvel.pendra*")))
    expect("what cannot be written is told",
           subprocess.run([program, "--tour", "/dev/null/album"], env=environment, capture_output=True).returncode == 1)


with tempfile.TemporaryDirectory(prefix="pendra-tour-") as scratch:
    test(os.path.abspath(sys.argv[1]), pathlib.Path(scratch))
