"""A day beside Vantor: setup, services to offer, timers, sending; then Vantor's lists change and the activity that
lost its customer is repaired and sent. What Vantor received and what the document calls sent are the same time."""
import json
import pathlib
import re
import signal
import sqlite3
import subprocess
import time

from desktop import Browser, Failure, expect, run, wait_for

COMPANY = {
    "companyFileName": "/Books/Acme Ltd.cmp",
    "employees": ["Ann", "Ben"],
    "services": [{"name": "Design", "id": "s1"}, {"name": "Travel", "id": "s2"}],
    "customers": [{"name": "Baker", "id": "c1"}, {"name": "Miller", "id": "c2"}],
    "jobs": [{"name": "Roof", "id": "j1", "parent": "c1"}, {"name": "Barn", "id": "j2", "parent": "c2"}],
}
TITLE = "Acme Ltd-Ann"


class Vantor:
    """The stand-in for Vantor, beside the program."""

    def __init__(self, desktop):
        self.company = desktop.home / "company.json"
        self.records = desktop.home / "records"
        self.write(COMPANY)
        self.desktop = desktop
        self.process = None
        self.serve()

    def serve(self, *options):
        self.stop()
        program = pathlib.Path(self.desktop.program).with_name("vantor-sim")
        self.process = subprocess.Popen([program, "--company", self.company, "--records", self.records, *options],
                                        env=self.desktop.environment, stdout=subprocess.PIPE, text=True)
        expect("the stand-in serves", self.process.stdout.readline() == "ready\n")

    def stop(self):
        if self.process:
            self.process.kill()
            self.process.wait()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def write(self, company):
        self.company.write_text(json.dumps(company))

    def change(self, company):
        self.write(company)
        self.process.send_signal(signal.SIGHUP)

    def received(self):
        """(job, hours) of every record, in the order of arrival."""
        texts = [json.loads(line)["text"] for line in self.records.read_text().splitlines()]
        one = lambda text, key: re.search(f"<{key}>(.*)</{key}>", text)[1]
        return [(one(text, "job"), float(one(text, "duration"))) for text in texts]


class Day:
    """The person at the desk."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.document = desktop.documents / "Pendra" / f"{TITLE}.pdr"
        self.app = None

    def rows(self, query):
        return self.desktop.rows(self.document, query)

    def choose(self, item):
        """Chooses a menu item, wherever its menu is."""
        for node in self.app.walk(self.app.window(TITLE)):
            if node.get_name() == item and node.get_role_name() == "menu item":
                return self.act(node)
        raise Failure(f"no menu item {item!r}")

    @staticmethod
    def act(node, action=0):
        try:
            node.get_action_iface().do_action(action)
        except Exception:  # what opens a modal window answers only when that has closed
            pass

    def set_up(self):
        self.app = self.desktop.start()
        self.app.window("Set Up Pendra")
        self.app.focus_window("Set Up Pendra")
        self.app.find("Acme Ltd.cmp")
        self.app.press("OK", "push button")
        self.app.find("File name:")
        self.app.keys("Return")
        self.app.window(TITLE)
        self.app.press("Begin", "push button")

    def offer_all_services(self):
        self.choose("Service Items…")
        services = self.app.window("Service Items")
        self.app.find("Travel", "table cell", within=services)
        self.app.press("Mark all shown", within=services)
        wait_for("all services are offered", lambda: all(
            one.get_state_set().contains(self.checked()) for one in self.app.walk(services)
            if one.get_role_name() == "table cell" and one.get_name() == "Shown"))
        self.app.focus_window("Service Items")
        self.app.keys("ctrl+w")

    @staticmethod
    def checked():
        from gi.repository import Atspi
        return Atspi.StateType.CHECKED

    def add_activity(self, customer, job, service):
        self.app.focus_window(TITLE)
        self.app.keys("ctrl+shift+n")
        sheet = self.app.window("Add Activity")
        for name in (customer, job, service):
            self.app.type(name)
            self.app.keys("Tab")
        self.app.press("Add", "push button", within=sheet)
        wait_for("the sheet is gone", lambda: not self.app.seen("Add Activity", "dialog"))

    def come_back_later(self, lengths):
        """Quits, which stops all timers; what they timed becomes `lengths`, in seconds. Starts again."""
        self.app.focus_window(TITLE)
        self.app.keys("ctrl+q")
        self.app.find("Pendra needs to stop all timers")
        self.app.press("OK", "push button")
        expect("it ends well", self.app.ended() == 0)
        with sqlite3.connect(self.document) as database:
            unsent = database.execute("SELECT id FROM TimePeriod WHERE NOT dateSubmitted > 1 ORDER BY id").fetchall()
            expect("an entry for each timer", len(unsent) == len(lengths))
            for (entry,), seconds in zip(unsent, lengths):
                database.execute("UPDATE TimePeriod SET duration = ? WHERE id = ?", (seconds, entry))
        self.app = self.desktop.start()
        self.app.window(TITLE)
        self.app.find("Activities")

    def cell(self, name, table):
        return self.app.find(name, "table cell", within=self.app.find(table, "table"))

    def cells(self, table):
        return [one for one in self.app.walk(self.app.find(table, "table"))
                if self.app.ask(one, "role_name") == "table cell"]

    def marks(self):
        """What the marked activities say."""
        told = (self.app.ask(one, "description") for one in self.cells("Activities"))
        return [one for one in told if one]

    def toggle_row(self, cell):
        # The last action of a cell is to select its row.
        self.act(cell, cell.get_action_iface().get_n_actions() - 1)

    def send(self):
        """Presses "Send Time" and confirms the summary; gives its lines."""
        self.app.press("Send time", "push button")
        sheet = self.app.window("Send Time")
        cells = [one.get_name() for one in self.app.walk(sheet) if one.get_role_name() == "table cell"]
        self.app.press("Send", "push button", within=sheet)
        lines = [cells[at:at + 5] for at in range(0, len(cells), 5)]
        expect("the last line is the sum", lines.pop()[0] == "Sum")
        return [(customer, job, service, duration) for customer, job, service, _, duration in lines]

    def send_from_terminal(self, status=0):
        done = subprocess.run([self.desktop.program, "send", "--json", "--document", self.document], timeout=120,
                              env=self.desktop.environment, capture_output=True, text=True)
        expect(f"sending ends with {status}, not {done.returncode}: {done.stdout}{done.stderr}", done.returncode == status)
        return json.loads(done.stdout)

    def dismiss(self, message):
        self.app.find(message)
        self.app.press("OK", "push button")
        wait_for(f"{message!r} is gone", lambda: not self.app.seen(message))

    def stamped_hours(self):
        ((seconds,),) = self.rows("SELECT total(duration) FROM TimePeriod WHERE dateSubmitted > 1")
        return seconds / 3600


def a_day_of_timers(day):
    day.set_up()
    expect("it is linked to the company", day.rows("SELECT employeeName, companyFileName FROM Identity")
           == [("Ann", "/Books/Acme Ltd.cmp")])
    day.offer_all_services()
    day.add_activity("Baker", "Roof", "Design")
    day.add_activity("Miller", "Barn", "Design")
    day.add_activity("Baker", "", "Travel")
    day.come_back_later([9000, 5400, 1800])


def look_up(day, vantor, browser):
    """F1 in the summary and in an alert opens the book where that is explained."""
    def help_is_at(anchor):
        count = len(browser.opened())
        day.app.keys("F1")
        expect(f"help opens at {anchor}", browser.next(count).endswith(f"#{anchor}"))

    day.app.press("Send time", "push button")
    day.app.window("Send Time")
    day.app.focus_window("Send Time")
    help_is_at("send-time")
    day.app.keys("Escape")
    vantor.change({**COMPANY, "companyFileName": "/Books/Other.cmp"})
    day.choose("Update Lists from Vantor")
    day.app.find("Please open the correct company and try again")
    help_is_at("vantor-not-found")
    day.dismiss("Please open the correct company and try again")
    vantor.change(COMPANY)


def send_a_selection_then_all(day, vantor):
    day.toggle_row(day.cell("01:30:00", "Time log"))
    expect("the summary shows the selection", day.send() == [("Miller", "Barn", "Design", "01:30:00")])
    day.dismiss("Time Sent")
    expect("only the selection went out", vantor.received() == [("j2", 1.5)])
    expect("the summary shows the rest", sorted(day.send()) == [("Baker", "", "Travel", "00:30:00"),
                                                                ("Baker", "Roof", "Design", "02:30:00")])
    day.dismiss("Time Sent")
    expect("the rest went out", sorted(vantor.received()) == [("(null)", 0.5), ("j1", 2.5), ("j2", 1.5)])


def work_on(day, lengths):
    for _ in lengths:
        day.app.press("Start", "table cell")
    day.come_back_later(lengths)


def lists_change(day, vantor):
    vantor.change({**COMPANY, "customers": COMPANY["customers"][:1],
                   "jobs": [{"name": "Roof and gutter", "id": "j1", "parent": "c1"}]})
    day.choose("Update Lists from Vantor")
    day.dismiss("Your lists are now up to date")
    day.cell("Roof and gutter", "Activities")
    wait_for("the activity that lost its customer is marked", lambda: day.marks() == [
        "Its customer and job are no longer in the lists and were cleared. Edit the activity to choose others."])


def repair(day):
    day.send()
    day.dismiss("A customer, job, or service is inactive or deleted in Vantor")
    day.toggle_row(next(one for one in day.cells("Activities") if one.get_description()))
    day.choose("Edit Activity…")
    sheet = day.app.window("Edit Activity")
    day.app.focus_window("Edit Activity")
    day.app.keys("shift+Tab", "shift+Tab")  # from the notes to the customer; without one there is no job
    day.app.type("Baker")
    day.app.keys("Tab")
    day.app.press("Save", "push button", within=sheet)
    wait_for("the mark is gone", lambda: not day.marks())


def a_vantor_that_does_not_answer(day, vantor):
    """The window stays alive, Cancel ends the asking, and a signal ends the program."""
    vantor.serve("--fault", "silent:1+")
    day.choose("Update Lists from Vantor")
    panel = day.app.find("Progress")
    day.app.find("Asking Vantor…", within=panel)
    day.choose("Add Activity…")
    day.app.find("“Add Activity” was not done, because Vantor is being asked. Wait for the answer, or cancel.")
    day.app.press("Cancel", "push button", within=panel)
    day.app.find("“Update Lists from Vantor” was not finished: it was cancelled.")
    day.choose("Update Lists from Vantor")
    day.app.find("Progress")
    begun = time.monotonic()
    day.app.process.send_signal(signal.SIGTERM)
    expect("a signal ends it at once", day.app.ended() == 0 and time.monotonic() - begun < 3)


def sending_without_a_program(day, vantor):
    """Nobody is there to be asked, so nothing is sent twice and nothing in doubt."""
    def change(column, value):
        with sqlite3.connect(day.document) as database:
            database.execute(f"UPDATE TimePeriod SET {column} = ? WHERE id = (SELECT min(id) FROM TimePeriod)", (value,))

    change("dateSubmitted", 0)
    before = len(vantor.received())
    vantor.serve("--fault", "silent:4+")
    expect("Vantor takes no record", day.send_from_terminal(5)["error"] == "NoVantor")
    vantor.serve()
    change("sendingSince", 1.0)
    expect("a person has to answer", "Did the time for" in day.send_from_terminal(4)["message"])
    expect("nothing has left", len(vantor.received()) == before)
    change("sendingSince", None)
    expect("the file alone is sent", day.send_from_terminal() == {"inDoubt": 0, "sent": 1})
    expect("once", len(vantor.received()) == before + 1)


def killed_while_sending(day, vantor):
    """What was on its way is in doubt from then on, and a person is asked before it goes out again."""
    with sqlite3.connect(day.document) as database:
        database.execute("UPDATE TimePeriod SET dateSubmitted = 0 WHERE id = (SELECT max(id) FROM TimePeriod)")
    before = len(vantor.received())
    vantor.serve("--fault", "silent:12")  # the call that carries the record
    day.app = day.desktop.start()
    day.app.window(TITLE)
    day.app.press("Send time", "push button")
    day.app.press("Send", "push button", within=day.app.window("Send Time"))
    in_doubt = lambda: day.rows("SELECT count(*) FROM TimePeriod WHERE sendingSince IS NOT NULL") == [(1,)]
    wait_for("it is on its way", in_doubt)
    day.app.kill()
    vantor.serve()
    expect("and in doubt", in_doubt() and "Did the time for" in day.send_from_terminal(4)["message"])
    expect("so it is sent once at most", len(vantor.received()) <= before + 1)


def test(desktop):
    (desktop.home / ".cache").mkdir()
    browser = Browser(desktop)
    with Vantor(desktop) as vantor:
        day = Day(desktop)
        a_day_of_timers(day)
        look_up(day, vantor, browser)
        send_a_selection_then_all(day, vantor)
        work_on(day, [3600, 7200, 900])
        lists_change(day, vantor)
        repair(day)
        ((unsent,),) = day.rows("SELECT count(*) FROM TimePeriod WHERE NOT dateSubmitted > 1")
        expect("the terminal sends the rest", unsent > 0 and day.send_from_terminal() == {"inDoubt": 0, "sent": unsent})
        expect("nothing is left", day.send_from_terminal(1)["error"] == "NoMatch")
        expect("every entry is sent once", len(vantor.received()) == 6
               and day.rows("SELECT count(*) FROM TimePeriod WHERE dateSubmitted > 1") == [(6,)]
               and day.rows("SELECT count(*) FROM TimePeriod") == [(6,)])
        expect("what arrived is what is stamped",
               sum(hours for _, hours in vantor.received()) == day.stamped_hours() == 4.5 + 3.25)
        a_vantor_that_does_not_answer(day, vantor)
        sending_without_a_program(day, vantor)
        killed_while_sending(day, vantor)


run(test)
