"""Nobody is there while time runs: who tells of it are a scripted compositor and a scripted login service."""
import subprocess
import time

from desktop import expect, run, wait_for

AWAY = 12 * 60


class Presence:
    """Says for how long nobody has touched the machine, and tells of sleep on a system bus of its own."""

    def __init__(self, desktop):
        import gi
        gi.require_version("Gio", "2.0")
        from gi.repository import Gio, GLib
        self.Gio, self.GLib = Gio, GLib
        self.idle = 0
        self.asked = 0
        self.daemon = subprocess.Popen(["dbus-daemon", "--session", "--print-address", "--nofork"],
                                       stdout=subprocess.PIPE, text=True)
        address = self.daemon.stdout.readline().strip()
        desktop.environment["DBUS_SYSTEM_BUS_ADDRESS"] = address
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.system = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        Gio.bus_own_name_on_connection(self.system, "org.freedesktop.login1", 0, None, None)
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(
            "<node><interface name='org.gnome.Mutter.IdleMonitor'><method name='GetIdletime'>"
            "<arg direction='out' type='t'/></method></interface></node>").interfaces[0]
        session.register_object("/org/gnome/Mutter/IdleMonitor/Core", interface, self.answer, None, None)
        Gio.bus_own_name_on_connection(session, "org.gnome.Mutter.IdleMonitor", 0, None, None)
        self.turn()

    def answer(self, _bus, _who, _path, _interface, _method, _arguments, call):
        self.asked += 1
        call.return_value(self.GLib.Variant("(t)", (self.idle * 1000,)))

    def turn(self):
        """Answers whoever has asked meanwhile."""
        context = self.GLib.MainContext.default()
        for _ in range(20):
            context.iteration(False)
            time.sleep(0.005)

    def see(self, what, condition):
        def look():
            self.turn()
            return condition()
        return wait_for(what, look)

    def lock(self, idle):
        """The machine goes to sleep and wakes, and nobody has touched it for so many seconds."""
        self.idle = idle
        for begins in (True, False):
            self.system.emit_signal(None, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                    "PrepareForSleep", self.GLib.Variant("(b)", (begins,)))
        asked = self.asked
        self.see("the program asks whether somebody is there", lambda: self.asked >= asked + 2)

    def close(self):
        self.daemon.terminate()
        self.daemon.wait()


def test(desktop):
    presence = Presence(desktop)
    try:
        journey(desktop, presence)
    finally:
        presence.close()


def journey(desktop, presence):
    document = desktop.sample("Work", "--standalone", "--activities", "3", "--entries", "4")
    entries = lambda what: desktop.rows(document, f"SELECT {what} FROM TimePeriod WHERE id > {last} ORDER BY id")
    last = desktop.rows(document, "SELECT max(id) FROM TimePeriod")[0][0]
    app = desktop.start(str(document))
    app.window("Work")
    time.sleep(3)
    presence.turn()
    expect("while nothing runs nobody is asked for", presence.asked == 0)

    # The first activity was begun fifteen minutes ago.
    app.focus_window("Work")
    app.keys("Down", "ctrl+shift+t")
    app.window("Start Earlier")
    app.press("15 minutes ago", "radio button")
    app.keys("Return")
    wait_for("the timer runs since then", lambda: len(entries("id")) == 1)
    start = entries("start")[0][0]
    presence.turn()

    presence.lock(AWAY)
    presence.lock(0)
    presence.see("the entry is marked", lambda: entries("awayTo")[0][0] is not None)
    away_from, away_to, running, duration = entries('awayFrom, awayTo, running, duration')[0]
    expect("with twelve minutes", abs(away_to - away_from - AWAY) < 30)
    expect("and counts until it is answered", (running, duration) == (1, None))
    app.find("Take Off", "push button")

    app.press("Take Off", "push button")
    wait_for("a new entry runs on", lambda: len(entries("id")) == 2)
    expect("the first one ends where the absence began",
           abs(entries("duration")[0][0] - (away_from - start)) < 0.01)
    expect("the second one began where it ended", abs(entries("start")[1][0] - away_to) < 0.01)
    app.focus_window("Work")
    app.keys("ctrl+z")
    wait_for("both are one again", lambda: len(entries("id")) == 1)
    expect("and it is asked again", entries("awayFrom, awayTo, running")[0] == (away_from, away_to, 1))

    app.press("Dismiss", "push button")  # that the first one runs on
    app.press("Decide…", "push button")
    window = app.window("Time Away")
    app.press("Take it off and book it to", "radio button", within=window)
    app.press("Book", "push button", within=window)
    wait_for("it is booked", lambda: len(entries("id")) == 3)
    rows = entries("activity, start, duration, running")
    expect(f"to another activity, and none of it twice: {rows}",
           len({row[0] for row in rows}) == 2 and
           [row for row in rows if abs(row[1] - away_from) < 0.01 and abs((row[2] or 0) - (away_to - away_from)) < 0.01])
    expect("nothing is asked any more", not [row for row in entries("awayFrom") if row[0] is not None])
    expect("the window has gone", "Time Away" not in app.titles())


run(test)
