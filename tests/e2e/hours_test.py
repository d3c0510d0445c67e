"""A person who bills: last week's unsent hours of one customer, one of them corrected, all of it on a page for them.
By keyboard, as seen by assistive technology; what the page says is what the file holds."""
import datetime
import os
import sqlite3
import subprocess
import time

from desktop import expect, run, wait_for


def as_text(seconds):
    return f"{int(seconds) // 3600:02}:{int(seconds) // 60 % 60:02}:{int(seconds) % 60:02}"


def last_week():
    """Its first instant and the one after it, as a document counts them."""
    monday = datetime.date.today() - datetime.timedelta(days=datetime.date.today().weekday() + 7)
    midnights = [datetime.datetime.combine(monday + datetime.timedelta(days=days), datetime.time()) for days in (0, 7)]
    return [midnight.timestamp() - 978307200 for midnight in midnights]


def focus(node):
    from gi.repository import Atspi
    Atspi.Component.grab_focus(node)


def choose(app, pop_up, item, within):
    """Moves down through a pop-up until it says what is wanted."""
    def says():
        return app.ask(app.find(pop_up, "combo box", within), "description")
    node = app.find(pop_up, "combo box", within)
    items = [app.ask(child, "name") for child in app.walk(node) if app.ask(child, "role_name") == "list item"]
    focus(node)
    app.keys("Home", *["Down"] * items.index(item))
    wait_for(f"{pop_up} says {item}", lambda: says() == item)


def test(desktop):
    os.environ["TZ"] = desktop.environment["TZ"]
    time.tzset()
    document = desktop.sample("Work", "--customers", "3", "--activities", "4", "--entries", "120",
                              "--today", datetime.date.today().isoformat())
    with sqlite3.connect(document) as database:
        database.execute("UPDATE TimePeriod SET dateSubmitted = NULL WHERE id % 3")
    begin, end = last_week()
    here = ("FROM TimePeriod t JOIN Activity a ON a.id = t.activity JOIN Customer c ON c.id = a.customer "
            f"WHERE t.start >= {begin} AND t.start < {end}")
    customer, = desktop.rows(
        document, f"SELECT c.name {here} AND t.dateSubmitted IS NULL GROUP BY c.name ORDER BY count(*) DESC")[0]

    def lengths(condition):
        return [length for length, in desktop.rows(
            document, f"SELECT t.duration {here} AND c.name = '{customer}' AND {condition} ORDER BY t.start DESC")]

    def unsent():
        return lengths("t.dateSubmitted IS NULL")

    app = desktop.start(str(document))
    window = app.window("Work")
    app.focus_window("Work")
    choose(app, "Range", "Last Week", window)
    choose(app, "Customer filter", customer, window)
    focus(app.find("Hide sent", "check box"))
    app.keys("space")
    wait_for("what is listed is what is not sent", lambda: app.cells("Time log", "Duration") ==
             [as_text(length) for length in unsent()])

    focus(app.find("Time log", "table"))
    app.keys("Down", "F2")
    app.find("Notes", "text")
    app.keys("Tab", "Tab", "Tab")
    app.find("Duration", "text")
    app.type("2h05")
    app.keys("Return")
    wait_for("the corrected length in the file", lambda: 7500 in unsent())
    wait_for("it is listed", lambda: "02:05:00" in app.cells("Time log", "Duration"))

    app.focus_window("Work")
    app.keys("ctrl+r")
    report = app.window("Report")
    app.focus_window("Report")
    focus(app.find("Week", "radio button", report))
    app.keys("space", "alt+Left")
    choose(app, "Customer filter", customer, report)
    sums = [as_text(sum(lengths("1"))), as_text(sum(unsent()))]
    wait_for("the sums of the week", lambda: [app.ask(app.find(name, "label", report), "description")
                                              for name in ("All hours", "Not sent")] == sums)
    app.press("Save PDF…", "push button", report)
    app.find("File name:")
    page = desktop.home / "hours.pdf"
    app.keys("ctrl+a")
    app.type(str(page))
    app.keys("Return")
    wait_for("a page", page.exists)
    text = subprocess.run(["pdftotext", "-layout", page, "-"], capture_output=True, text=True, check=True).stdout
    for words in (customer, *sums):
        expect(f"the page says {words!r}:\n{text}", words in text)


run(test)
