"""What is asked of Pendra from a terminal and over the session bus, with and without a program that runs."""
import json
import os
import pathlib
import shutil
import signal
import sqlite3
import subprocess
import time

from desktop import Failure, run, wait_for

NAME, OBJECT, TIMING = "com.corvel.pendra", "/com/corvel/pendra", "com.corvel.pendra.Timing1"


def expect(what, held):
    if not held:
        raise Failure(what)


def process_on(bus):
    """Which process owns Pendra's name; none when it has none."""
    from gi.repository import GLib
    try:
        return bus.call_sync("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                             GLib.Variant("(s)", (NAME,)), None, 0, 5000, None).unpack()[0]
    except GLib.Error:
        return None


def as_killed_while_saving(document, copy):
    """A copy with the journal of a save that did not come to its end."""
    database = sqlite3.connect(document, isolation_level=None)
    database.execute("PRAGMA cache_size = 1")
    database.execute("BEGIN IMMEDIATE")
    database.execute("UPDATE TimePeriod SET notes = hex(zeroblob(100000))")
    for suffix in ("", "-journal"):
        shutil.copy(f"{document}{suffix}", f"{copy}{suffix}")
    database.execute("ROLLBACK")
    database.close()
    return copy


def test(desktop):
    import gi
    gi.require_version("Gio", "2.0")
    from gi.repository import Gio, GLib
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    document = desktop.sample("Work", "--activities", "3", "--entries", "4")
    with sqlite3.connect(document) as database:
        database.execute("UPDATE Activity SET notes = CASE id WHEN (SELECT min(id) FROM Activity WHERE completed = 0)"
                         " THEN 'the one that is meant' END")

    def ask(*words, status=0):
        done = subprocess.run([desktop.program, *words, "--json"], env=desktop.environment, capture_output=True,
                              text=True, timeout=60, cwd=desktop.home)
        expect(f"{words} ends with {status}, not {done.returncode}: {done.stdout}{done.stderr}",
               done.returncode == status and done.stderr in ("", "**IPCMgr invalidate\n"))
        return json.loads(done.stdout)

    # Whoever waits for an answer waits for no library that it does not need.
    programs = pathlib.Path(desktop.program).parents[1]
    for name, library in (("bin/pendra", b"libQt6"), ("libexec/pendra/pendra-ask", b"libQt6"),
                          ("libexec/pendra/pendra-terminal", b"libQt6DBus")):
        expect(f"{name} does without {library}", library not in (programs / name).read_bytes())

    # Without a program the file is read, or held while something is done with it; nothing is started by that.
    before = document.read_bytes()
    expect("no document was opened", ask("status", status=4)["error"] == "NoDocument")
    here = ["--document", "Documents/Work.pdr"]
    expect("nothing runs", ask("status", *here)["running"] == [])
    expect("nothing is near", ask("start", "zzzzz", *here, status=1)["error"] == "NoMatch")
    expect("nothing is to be stopped", ask("stop", *here, status=1)["error"] == "NoMatch")
    expect("nobody is there to be sent anything", ask("send", *here, status=5)["error"] == "NoVantor")
    entries = len(ask("log", *here))
    expect("all of the log is listed", entries == desktop.rows(document, "SELECT count(*) FROM TimePeriod")[0][0])
    names = desktop.rows(document, "SELECT c.name, s.name FROM Activity a JOIN Customer c ON c.id = a.customer "
                         "JOIN Service s ON s.id = a.service WHERE a.completed = 0 ORDER BY a.id")
    text = '"{}": "{}" - booked '.format(*(name.replace('"', '""') for name in names[0]))
    expect("nothing is booked in the future", ask("add", text + "tomorrow @1-2", *here, status=2)["error"] == "WrongUsage")
    expect("the file is as it was", document.read_bytes() == before and process_on(bus) is None)
    added = ask("add", text + "2026-03-29 @1:30-3:30", *here)["added"]
    expect(f"it is booked, the hour that was not is not: {added}", (added["seconds"], added["notes"], added["sent"]) ==
           (3600, "booked", None) and added["start"] == "2026-03-29T01:30:00+01:00")
    entries += 1
    before = document.read_bytes()
    written = ask("backup", "copy.pdrbackup", *here)["written"]
    expect("a backup lies where it was asked for", os.path.samefile(written, desktop.home / "copy.pdrbackup"))
    expect("the file is as it was", document.read_bytes() == before and process_on(bus) is None)

    broken = as_killed_while_saving(document, desktop.home / "broken.pdr")
    before = broken.read_bytes()
    told = ask("status", "--document", str(broken), status=4)
    expect(f"what is half written is not told, but {told}", "cut off" in told["message"])
    expect("and not mended by who only asks", broken.read_bytes() == before)

    # `start` brings the program up, and does not keep waiting whoever waits for its own end.
    meant = ask("start", "MEANT", *here)["started"]
    expect("what was meant runs", meant["notes"] == "the one that is meant")
    expect("it runs in the file", [one["id"] for one in ask("status")["running"]] == [meant["id"]])

    # A start while the program is ending, because nobody answers its question, opens it again when it has ended.
    ending = process_on(bus)
    os.kill(ending, signal.SIGTERM)
    expect("what is started meanwhile hands over", desktop.start().ended() == 0)
    wait_for("the program again", lambda: process_on(bus) not in (None, ending))
    wait_for("the document again", lambda: ask("status")["document"] == str(document))
    expect("what ran was stopped", ask("status")["running"] == [])
    os.kill(process_on(bus), signal.SIGTERM)
    wait_for("the program has ended", lambda: process_on(bus) is None)

    app = desktop.start(str(document))
    app.window("Work")
    app.press("Begin", "push button") if app.seen("Begin", "push button") else None
    proxy = Gio.DBusProxy.new_sync(bus, Gio.DBusProxyFlags.NONE, None, NAME, OBJECT, TIMING)
    expect("the document is told", os.path.samefile(proxy.get_cached_property("Document").unpack(), document))
    described = bus.call_sync(NAME, OBJECT, "org.freedesktop.DBus.Introspectable", "Introspect", None, None, 0, 5000,
                              None).unpack()[0]
    methods = Gio.DBusNodeInfo.new_for_xml(described).lookup_interface(TIMING).methods
    expect("it can be looked into", {method.name for method in methods} ==
           {"Start", "Stop", "Running", "Add", "Export", "BackUp", "Send"})
    told = []
    proxy.connect("g-signal", lambda *news: told.append(news[2]))

    ask("start", "meant", "that")
    expect("it runs already", "runs already" in ask("start", "meant", status=1)["message"])
    expect("what runs cannot be exported", ask("export", "log.txt", status=4)["error"] == "Refused")
    app.find("Stop", "table cell")
    stopped = ask("stop")["stopped"]
    [[duration]] = desktop.rows(document, "SELECT duration FROM TimePeriod ORDER BY id DESC LIMIT 1")
    expect("what was stopped is stored as it was told", stopped[0]["seconds"] == duration)
    loop = GLib.MainContext.default()
    wait_for("both changes are told", lambda: loop.iteration(False) or told == ["RunningChanged"] * 2)
    expect("nothing runs now", proxy.call_sync("Running", None, 0, 5000, None).unpack() == ([],))
    expect("the log is written", ask("export", "log.txt")["entries"] == entries + 2)
    expect("and never over something", "left alone" in ask("export", "log.txt", status=4)["message"])

    # Without an option the running program is asked the quick way, else through the interface that others call too.
    for way in [], ["--document", "Documents/Work.pdr"]:
        expect("it starts", ask("start", "meant", "that", *way)["started"] == meant)
        expect("it runs already", "runs already" in ask("start", "meant", *way, status=1)["message"])
        stopped = ask("stop", *way)["stopped"]
        expect(f"it stops: {stopped}", [meant | {"seconds": one["seconds"]} for one in stopped] == stopped != [])
        expect("nothing runs", ask("stop", *way, status=1)["error"] == "NoMatch")
        expect("it is not used so", "used" in ask("start", *way, status=2)["message"])
        expect("it books", ask("add", text + "2026-03-29 @1:30-3:30", *way)["added"] | {"remarks": 0} == added | {"remarks": 0})
    plain = subprocess.run([desktop.program, b"stop", b"caf\xe9"], env=desktop.environment, capture_output=True, check=False)
    expect(f"what is no text is refused: {plain}", plain.returncode == 4 and b"UTF-8" in plain.stderr)
    plain = subprocess.run([desktop.program, "stop"], env=desktop.environment, capture_output=True, check=False)
    expect(f"it is refused in a line: {plain}", (plain.returncode, plain.stdout, plain.stderr) ==
           (1, b"", b"pendra: nothing runs\n"))

    other = desktop.sample("Other", "--activities", "1", "--entries", "1")
    expect("another document is left alone", ask("stop", "--document", str(other), status=4)["error"] == "Refused")

    expect("the program books, too", ask("add", text + "90m")["added"]["running"] is False)
    expect("it says what it does not know", ask("add", "Nobody: " + text.split(": ")[1], status=1)["error"] == "NoMatch")
    expect("it says what it does not understand", ask("add", text + "@25", status=2)["error"] == "WrongUsage")
    started = ask("add", text + "-10")["started"]
    expect("it runs since then", 600 <= ask("status")["running"][0]["seconds"] < 700 and started["notes"] == "booked")
    app.focus_window("Work")
    app.keys("ctrl+z")
    wait_for("it can be taken back", lambda: not ask("status")["running"])

    # While a person is asked, nothing changes under the question.
    app.focus_window("Work")
    app.keys("ctrl+shift+n")
    app.find("Add", "push button")
    expect("a sheet stands", "question waits" in ask("start", "meant", status=4)["message"])
    expect("asking goes on", ask("status")["running"] == [])
    app.press("Cancel", "push button")
    wait_for("the sheet has gone", lambda: not app.seen("Add", "push button"))
    ask("start", "meant")
    app.keys("ctrl+z")
    wait_for("it is a step like any other", lambda: not ask("status")["running"])

    # Who is cut off in the middle of asking does not know what was done, and never does it a second time.
    os.kill(app.process.pid, signal.SIGSTOP)
    asking = subprocess.Popen([desktop.program, "start", "meant"], env=desktop.environment, stderr=subprocess.PIPE)
    wait_for("it is asked", lambda: pathlib.Path(f"/proc/{asking.pid}/comm").read_text() == "pendra-ask\n" and
             "poll" in pathlib.Path(f"/proc/{asking.pid}/wchan").read_text())
    time.sleep(1)  # by then it no longer waits for the bus to let it in
    os.kill(app.process.pid, signal.SIGKILL)
    expect("it says so", b"does not answer" in asking.communicate()[1] and asking.returncode == 4)
    expect("nobody has started it", process_on(bus) is None and not ask("status")["running"])


run(test)
