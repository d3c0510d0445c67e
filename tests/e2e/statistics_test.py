"""What Pendra reports about its use, and when it does not: the real program and page, with a recorder on this machine
in the place of the statistics service."""
import http.server
import json
import pathlib
import shutil
import signal
import threading
import time

from desktop import expect, run, wait_for


PAGE_DELAY = 3.0  # seconds; twice what the page would wait before it starts


class Recorder(http.server.ThreadingHTTPServer):
    """Takes every event for good, as the service does, and keeps it."""

    class Handler(http.server.BaseHTTPRequestHandler):
        def do_OPTIONS(self):  # the engine asks whether the page may post
            self.answer()

        def do_POST(self):
            body = self.rfile.read(int(self.headers["Content-Length"])).decode()
            self.server.bodies.append(body)
            self.answer()

        def answer(self):
            self.send_response(200)
            self.send_header("Access-Control-Allow-Origin", "*")
            self.send_header("Access-Control-Allow-Headers", "content-type")
            self.send_header("Content-Length", "0")
            self.end_headers()

        def log_message(self, *_):
            pass

    def __init__(self):
        super().__init__(("127.0.0.1", 0), self.Handler)
        self.bodies = []
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def address(self):
        return f"http://127.0.0.1:{self.server_port}/"

    def events(self):
        return [event for body in list(self.bodies) for event in json.loads(body)["events"]]

    def names(self):
        return [event["event_type"] for event in self.events()]

    def wait(self, name):
        wait_for(f"the event {name} among {self.names()}", lambda: name in self.names(), 40)


def add_activity(app, window):
    app.focus_window(window)
    app.keys("ctrl+shift+n")
    app.window("Add Activity")
    app.focus_window("Add Activity")
    app.keys("Escape")
    wait_for("the sheet closes", lambda: "Add Activity" not in app.titles())


def helpers(app):
    """The processes that the program has started and that still run."""
    return [child for task in pathlib.Path(f"/proc/{app.process.pid}/task").iterdir()
            for child in (task / "children").read_text().split()]


def is_small(app):
    """Whether under 60 MiB are resident; not asked of a program whose memory is watched."""
    process = pathlib.Path(f"/proc/{app.process.pid}")
    resident = int((process / "status").read_text().split("VmRSS:")[1].split()[0])
    return resident < 60 * 1024 or "libasan" in (process / "maps").read_text()


def quit_program(app):
    app.process.send_signal(signal.SIGTERM)
    expect("it ends well", app.ended() == 0)


def counts_until_told_not_to(desktop, recorder, document):
    app = desktop.start(str(document))
    app.window(document.stem)
    add_activity(app, document.stem)
    # A first run says that there are statistics; until that is answered nothing is even ready to send them.
    time.sleep(PAGE_DELAY)
    expect("nothing was started for them", not helpers(app) and not recorder.bodies)
    app.press("OK", "push button", within=app.window(document.stem))
    recorder.wait("Pendra_PENDRA_APP_LAUNCHED")
    wait_for("the program is alone again", lambda: not helpers(app), 40)
    add_activity(app, document.stem)
    recorder.wait("Pendra_ADD_ACTIVITY")

    app.focus_window(document.stem)
    app.keys("ctrl+comma")
    app.window("Preferences")
    app.press("Statistics", "page tab")
    app.press("Send usage statistics", "check box")
    recorder.wait("Pendra_DISABLE_FEEDBACK")
    expect("the refusal is kept", desktop.defaults()["VTAnalyticsTracker"] == "false")
    add_activity(app, "Preferences")
    app.press("Send usage statistics", "check box")
    recorder.wait("Pendra_ENABLE_FEEDBACK")
    expect(f"nothing was sent in between, but {recorder.names()}",
           recorder.names() == [f"Pendra_{name}" for name in ("PENDRA_APP_LAUNCHED", "ADD_ACTIVITY", "DISABLE_FEEDBACK",
                                                              "ENABLE_FEEDBACK")])
    app.press("Send usage statistics", "check box")
    wait_for("the second refusal", lambda: recorder.names().count("Pendra_DISABLE_FEEDBACK") == 2, 40)
    quit_program(app)

    sent = len(recorder.bodies)
    app = desktop.start(str(document))
    app.window(document.stem)
    expect("a program without a page is small", is_small(app))
    add_activity(app, document.stem)
    time.sleep(PAGE_DELAY)
    expect("who said no has one program and sends nothing", not helpers(app) and len(recorder.bodies) == sent)
    quit_program(app)


def tells_nothing_of_the_user(desktop, recorder, document):
    sent = "\n".join(recorder.bodies)
    private = {name for table in ("Customer", "Job", "Service")
               for name, in desktop.rows(document, f"SELECT name FROM {table}") if name != "All"}
    told = [text for text in {*private, document.stem, str(desktop.home)} if text in sent]
    expect(f"the user's words stay here, but {told} was sent", not told)
    expect("nothing but what the preference says",
           {key for event in recorder.events() for key in event["event_properties"]} ==
           {"app_version", "app_version_major", "app_version_norel", "appearance", "feature", "model", "os",
            "screen_resolution"})


def works_without_the_page(desktop, recorder, document):
    bare = desktop.home / "bare" / "bin" / "pendra"
    installation = pathlib.Path(desktop.program).parents[1]
    for name in ("bin/pendra", "libexec/pendra/pendra-terminal", "libexec/pendra/pendra-windows"):
        copy = bare.parents[1] / name
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(installation / name, copy)
    (bare.parents[1] / "share").symlink_to(installation / "share")
    desktop.program = str(bare)
    before = len(recorder.bodies)
    preferences = desktop.home / ".config" / "com.corvel.pendra" / "defaults.ini"
    preferences.write_text(preferences.read_text().replace("VTAnalyticsTracker=false", "VTAnalyticsTracker=true"))
    app = desktop.start(str(document))
    app.window(document.stem)
    wait_for("the line in the log",
             lambda: any(line.startswith("could not start tracking: ") for line in app.log()))
    add_activity(app, document.stem)
    quit_program(app)
    expect("nothing was sent", len(recorder.bodies) == before)


def test(desktop):
    recorder = Recorder()
    desktop.environment["PENDRA_ANALYTICS_ADDRESS"] = recorder.address()
    desktop.forget_defaults()
    document = desktop.sample("Hours", "--standalone", "--entries", "40")
    counts_until_told_not_to(desktop, recorder, document)
    tells_nothing_of_the_user(desktop, recorder, document)
    works_without_the_page(desktop, recorder, document)


run(test)
