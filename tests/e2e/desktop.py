"""A desktop for one program: its own display, session bus, accessibility bus and home folder.

A test starts it with `run(test)`, which runs the same file again inside a session bus of its own and hands
the test a Desktop. Names are those that people and assistive technology know the program by.
"""
import os
import pathlib
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

INSIDE = "PENDRA_E2E_INSIDE"


class Failure(AssertionError):
    """What the test wanted to see and did not."""


def expect(what, held):
    if not held:
        raise Failure(what)


def wait_for(what, condition, seconds=40.0):
    """The first true value of `condition`; a Failure that names `what` when there is none in time."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise Failure(f"did not see: {what}")
        time.sleep(0.05)


class Program:
    """The running program, seen through the accessibility bus and driven by the keyboard and its actions."""

    def __init__(self, desktop, *arguments):
        self.desktop = desktop
        self.found = None
        self.log_path = desktop.home / f"log-{time.monotonic_ns()}.txt"
        with self.log_path.open("w") as log:
            self.process = subprocess.Popen([desktop.program, *arguments], env=desktop.environment,
                                            stdout=log, stderr=log)

    def log(self):
        return self.log_path.read_text().splitlines()

    def root(self):
        """The program on the accessibility bus. Once found it is kept: the bus's own list of programs changes
        while one that was killed is still being taken off it."""
        from gi.repository import Atspi
        if not self.found:
            desktop = Atspi.get_desktop(0)
            desktop.clear_cache()  # or a program that has just started stays unknown
            children = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
            self.found = next((child for child in children if child and self.pid_of(child) == self.process.pid), None)
        if self.found:
            self.found.clear_cache()
        return self.found

    @staticmethod
    def pid_of(child):
        try:
            return child.get_process_id()
        except Exception:  # it went while it was asked
            return None

    def walk(self, node=None, depth=0):
        node = node or self.root()
        if node is None or depth > 24:
            return
        yield node
        try:
            count = node.get_child_count()
        except Exception:  # the object went while it was asked
            return
        for index in range(min(count, 2000)):
            try:
                child = node.get_child_at_index(index)
            except Exception:
                continue
            if child:
                yield from self.walk(child, depth + 1)

    @staticmethod
    def ask(node, what):
        """The node's name, role_name, description or state_set; none when it has gone meanwhile."""
        try:
            return getattr(node, f"get_{what}")()
        except Exception:
            return None

    def seen(self, name, role=None, within=None):
        for node in self.walk(within):
            try:
                if node.get_name() != name or (role and node.get_role_name() != role):
                    continue
                from gi.repository import Atspi
                if node.get_state_set().contains(Atspi.StateType.SHOWING):
                    return node
            except Exception:
                continue
        return None

    def shows(self, words):
        """Whether anything on the screen is named by these words, or by more that begins with them."""
        from gi.repository import Atspi
        named = [node for node in self.walk() if (self.ask(node, "name") or "").startswith(words)]
        states = [self.ask(node, "state_set") for node in named]
        return any(state and state.contains(Atspi.StateType.SHOWING) for state in states)

    def find(self, name, role=None, within=None, seconds=40.0):
        return wait_for(f"{role or 'something'} named {name!r}", lambda: self.seen(name, role, within), seconds)

    def windows(self):
        """Those that are shown; a sheet that closed is still there, hidden."""
        from gi.repository import Atspi
        root = self.root()
        children = [root.get_child_at_index(index) for index in range(root.get_child_count())] if root else []
        states = [(child, self.ask(child, "state_set")) for child in children if child]
        return [child for child, state in states if state and state.contains(Atspi.StateType.SHOWING)]

    def titles(self):
        return [self.ask(child, "name") for child in self.windows()]

    def window(self, title, seconds=40.0):
        return wait_for(f"a window titled {title!r}", lambda: next(
            (child for child in self.windows() if self.ask(child, "name") == title), None), seconds)

    def gone(self, title):
        """What is typed from now on goes to another window."""
        wait_for(f"no window titled {title!r}", lambda: title not in self.titles())

    def selected(self, count):
        """Keys take their time, and what is chosen from a menu does not wait for them."""
        listed = self.find("Listed time")
        self.find("selected", "label", listed)
        self.find(str(count), "label", listed)

    def names(self, within=None):
        return [name for node in self.walk(within) if (name := self.ask(node, "name"))]

    def press(self, name, role=None, within=None):
        node = self.find(name, role, within)
        action = node.get_action_iface()
        if not action:
            raise Failure(f"{name!r} cannot be pressed")
        try:
            action.do_action(0)
        except Exception:  # a press that opens a modal window answers only when that has closed
            pass

    def item(self, name, window):
        """An item of the menus of a window, once there is one of that name."""
        return wait_for(f"a menu item {name!r}", lambda: next(
            (node for node in self.walk(self.window(window))
             if self.ask(node, "name") == name and self.ask(node, "role_name") == "menu item"), None))

    def choose(self, item, window):
        """Chooses an item from the menus of a window, as assistive technology does."""
        try:
            self.item(item, window).get_action_iface().do_action(0)
        except Failure:
            raise
        except Exception:  # a choice that opens a modal window answers only when that has closed
            pass

    def focus(self, name, role=None, within=None):
        from gi.repository import Atspi
        Atspi.Component.grab_focus(self.find(name, role, within))

    def is_checked(self, node):
        from gi.repository import Atspi
        return node.get_state_set().contains(Atspi.StateType.CHECKED)

    def cells(self, table, column):
        """What a table's column reads, row by row."""
        from gi.repository import Atspi
        node = self.find(table, "table")
        heads = [Atspi.Table.get_column_description(node, at) for at in range(Atspi.Table.get_n_columns(node))]
        return [Atspi.Table.get_accessible_at(node, row, heads.index(column)).get_name()
                for row in range(Atspi.Table.get_n_rows(node))]

    def text(self, name, role=None, within=None):
        """What stands in a field."""
        from gi.repository import Atspi
        return Atspi.Text.get_text(self.find(name, role, within), 0, -1)

    def listens(self):
        """True when the keyboard goes to this program, and to the alert, panel or sheet that it shows, if any."""
        from gi.repository import Atspi
        shown = self.windows()
        asking = [child for child in shown if child.get_role_name() != "frame"]
        return any(child.get_state_set().contains(Atspi.StateType.ACTIVE) for child in (asking or shown))

    def keys(self, *keys):
        wait_for("the window that keys are for in front", self.listens)
        subprocess.run(["xdotool", "key", "--clearmodifiers", "--delay", "20", *keys],
                       env=self.desktop.environment, check=True)

    def type(self, text):
        wait_for("the window that is typed into in front", self.listens)
        subprocess.run(["xdotool", "type", "--delay", "15", text], env=self.desktop.environment, check=True)

    def focus_window(self, title):
        """Before a document's name may stand what runs in it."""
        found = wait_for(f"an X window titled {title!r}", lambda: subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--name", f"(^| - ){title}$"], env=self.desktop.environment,
            capture_output=True, text=True).stdout.split())
        # The window manager may not have come to the window yet.
        wait_for(f"{title!r} in front", lambda: subprocess.run(
            ["xdotool", "windowactivate", "--sync", found[-1]], env=self.desktop.environment, stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE, check=False).stderr == b"")

    def picture(self, path):
        subprocess.run(["import", "-window", "root", str(path)], env=self.desktop.environment, check=False)

    def ended(self, seconds=40.0):
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired as expired:
            raise Failure("the program did not end") from expired

    def kill(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()


class Desktop:
    """Folders, display and programs of one test; all of it goes when the test ends."""

    def __init__(self, program, display):
        self.program = program
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="pendra-e2e-"))
        self.documents = self.home / "Documents"
        self.documents.mkdir()
        (self.home / ".config").mkdir()
        (self.home / ".config" / "user-dirs.dirs").write_text('XDG_DOCUMENTS_DIR="$HOME/Documents"\n')
        # No test reaches a network: statistics are off before the first start, and go to a closed port.
        defaults = self.home / ".config" / "com.corvel.pendra"
        defaults.mkdir()
        (defaults / "defaults.ini").write_text("[General]\nVTAnalyticsTracker=false\n")
        self.environment = {**os.environ, "HOME": str(self.home), "DISPLAY": display,
                            "XDG_CONFIG_HOME": str(self.home / ".config"), "XDG_CACHE_HOME": str(self.home / ".cache"),
                            "XDG_DATA_HOME": str(self.home / ".local"), "XDG_STATE_HOME": str(self.home / ".local" / "state"),
                            "QT_QPA_PLATFORM": "xcb", "TZ": "Europe/Berlin",
                            "LC_ALL": "C.UTF-8", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_ACCESSIBILITY": "1",
                            "PENDRA_ANALYTICS_ADDRESS": "http://127.0.0.1:9/"}
        self.programs = []

    def start(self, *arguments):
        program = Program(self, *arguments)
        self.programs.append(program)
        return program

    def sample(self, name, *options):
        """A new document with sample data."""
        document = self.documents / f"{name}.pdr"
        subprocess.run([pathlib.Path(self.program).with_name("sample-document"), document, *options], check=True)
        return document

    def forget_defaults(self):
        """As on a first run, statistics included."""
        (self.home / ".config" / "com.corvel.pendra" / "defaults.ini").unlink()

    def defaults(self):
        path = self.home / ".config" / "com.corvel.pendra" / "defaults.ini"
        return dict(line.split("=", 1) for line in path.read_text().splitlines() if "=" in line)

    def set_default(self, key, value):
        """While no program runs, which would write its own over it."""
        with (self.home / ".config" / "com.corvel.pendra" / "defaults.ini").open("a") as defaults:
            defaults.write(f"{key}={value}\n")

    def rows(self, document, query):
        """What the file of a document holds at this moment."""
        with sqlite3.connect(f"file:{document}?mode=ro", uri=True) as database:
            return database.execute(query).fetchall()

    def close(self):
        for program in self.programs:
            program.kill()
        shutil.rmtree(self.home, ignore_errors=True)


class Browser:
    """Stands where the desktop's own opener would be, and notes what it is asked to open."""

    def __init__(self, desktop):
        folder = desktop.home / "bin"
        folder.mkdir()
        self.notes = desktop.home / "opened"
        self.notes.touch()
        opener = folder / "xdg-open"
        opener.write_text(f'#!/bin/sh\necho "$1" >>"{self.notes}"\n')
        opener.chmod(0o755)
        desktop.environment["PATH"] = f"{folder}:{desktop.environment['PATH']}"

    def opened(self):
        return self.notes.read_text().splitlines()

    def next(self, count):
        return wait_for("the browser is asked to open something",
                        lambda: self.opened()[count] if len(self.opened()) > count else None)


def run(test):
    """Runs `test(desktop)`; the program's path is the first argument. Exits 0 when it held."""
    if not os.environ.get(INSIDE):
        os.environ[INSIDE] = "1"
        # The buses' sockets lie here: two sessions that shared the folder would take each other's.
        os.environ["XDG_RUNTIME_DIR"] = tempfile.mkdtemp(prefix="pendra-e2e-run-")
        os.execvp("dbus-run-session", ["dbus-run-session", "--", sys.executable, *sys.argv])
    read_end, write_end = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1000x24", "-nolisten", "tcp"],
                              pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.close(write_end)
    display = ":" + os.read(read_end, 16).decode().strip()
    os.environ["DISPLAY"] = display
    # Without a window manager the keyboard would not come back from a dialog that closes.
    manager = subprocess.Popen(["openbox"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    # Before there is one the tool says "0" as well, but fails.
    wait_for("a window manager", lambda: subprocess.run(["xdotool", "get_desktop"], capture_output=True, check=False)
             .returncode == 0)
    desktop = Desktop(os.path.abspath(sys.argv[1]), display)
    try:
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        Atspi.set_timeout(1500, 15000)
        test(desktop)
    except Failure as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        for program in desktop.programs:
            print("\n".join(program.log()), file=sys.stderr)
            print("on the screen:", program.names(), file=sys.stderr)
        picture = os.environ.get("PENDRA_E2E_PICTURE")
        if picture and desktop.programs:
            desktop.programs[-1].picture(picture)
        sys.exit(1)
    finally:
        desktop.close()
        manager.terminate()
        manager.wait()
        server.terminate()
        server.wait()
        shutil.rmtree(os.environ["XDG_RUNTIME_DIR"], ignore_errors=True)
