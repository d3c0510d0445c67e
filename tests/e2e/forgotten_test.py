"""Starts and stops that were forgotten: one activity at a time, a reminder, and times that are said afterwards."""
import datetime
import os
import time

from desktop import expect, run, wait_for

MINUTE = 60
EPOCH = 978307200


def test(desktop):
    os.environ["TZ"] = desktop.environment["TZ"]
    time.tzset()
    for key, value in (("PendraOneAtATime", "true"), ("PendraReminder", "true"), ("PendraRemindMinutes", "1"),
                       ("PendraRemindFrom", "0:00"), ("PendraRemindUntil", "23:59")):
        desktop.set_default(key, value)
    document = desktop.sample("Work", "--standalone", "--activities", "3", "--entries", "2")
    last = desktop.rows(document, "SELECT max(id) FROM TimePeriod")[0][0]

    def entries():
        return desktop.rows(document, "SELECT activity, start, start + duration, running FROM TimePeriod "
                            f"WHERE id > {last} ORDER BY id")

    app = desktop.start(str(document))
    app.window("Work")
    app.focus_window("Work")
    is_working_day = datetime.date.today().weekday() < 5
    is_reminded = lambda: app.shows("Nothing has run for ")
    if is_working_day:
        wait_for("a reminder", is_reminded, seconds=120)

    def read(window):
        """What the chosen moment means."""
        chosen = next(node for node in app.walk(window) if app.ask(node, "role_name") == "radio button" and
                      app.is_checked(node))
        return app.ask(chosen, "description") or ""

    # Begun a quarter of an hour ago and never started.
    app.focus("Activities", "table")
    app.keys("Down", "ctrl+shift+t")
    window = app.window("Start Earlier")
    app.press("15 minutes ago", "radio button", within=window)
    wait_for("since when it will run", lambda: "15 min ago" in read(window))
    app.keys("Return")
    wait_for("it runs since then", lambda: len(entries()) == 1)
    now = time.time() - EPOCH
    expect("a quarter of an hour", abs(now - entries()[0][1] - 15 * MINUTE) < MINUTE)
    wait_for("and nobody is reminded", lambda: not is_reminded())

    # Another one was begun five minutes ago: the first one ends there.
    app.keys("Down", "ctrl+shift+t")
    window = app.window("Start Earlier")
    wait_for("what it stops", lambda: "at the same time" in read(window))
    app.keys("Return")
    wait_for("both", lambda: len(entries()) == 2)
    (_, _, end, runs), (_, start, _, _) = entries()
    expect("one at a time, without a gap", not runs and abs(end - start) < 1)
    app.keys("ctrl+z")
    wait_for("one step", lambda: len(entries()) == 1 and entries()[0][3])
    app.keys("ctrl+shift+z")
    wait_for("done again", lambda: len(entries()) == 2)

    # It was over two minutes after it began.
    app.choose("Stop Earlier…", "Work")
    window = app.window("Stop Earlier")
    app.keys("Tab")
    typed = datetime.datetime.fromtimestamp(start + EPOCH + 2 * MINUTE).replace(second=0)
    app.type(f"{typed:%H:%M}")
    wait_for("its length", lambda: "its length is" in read(window))
    app.keys("Return")
    wait_for("the typed end", lambda: not entries()[1][3] and abs(entries()[1][2] + EPOCH - typed.timestamp()) < 1)

    # Since the evening before, over everything that was noted since: it is shown, and not refused.
    app.keys("Up", "ctrl+shift+t")
    window = app.window("Start Earlier")
    app.keys("Tab")
    app.type("yesterday 22:30")
    wait_for("when, and what it overlaps", lambda: "22:30" in read(window) and "overlaps" in read(window))
    app.keys("Return")
    wait_for("it runs over midnight", lambda: len(entries()) == 3)
    evening = datetime.datetime.combine(datetime.date.today() - datetime.timedelta(days=1), datetime.time(22, 30))
    expect("since the evening before", abs(entries()[2][1] + EPOCH - evening.timestamp()) < 1 and entries()[2][3])


run(test)
