"""The program is killed after each command of a day, and none of them is lost."""
from desktop import expect, run, wait_for


def what_was_cut_off(desktop):
    """It is marked and asked about until it is answered, in one of three ways."""
    document = desktop.sample("Cut", "--standalone", "--activities", "2", "--entries", "1")
    entry = lambda: desktop.rows(
        document, "SELECT start, duration, running, haltedAt FROM TimePeriod ORDER BY id DESC LIMIT 1")[0]

    def open_again():
        app = desktop.start(str(document))
        app.window("Cut")
        app.focus_window("Cut")
        return app

    app = open_again()
    app.press("Start", "table cell")
    wait_for("it runs", lambda: entry()[2] == 1)
    start = entry()[0]
    app.kill()
    for _ in range(2):
        app = open_again()
        app.find("cut off, length?", "table cell")
        expect("no length was invented", entry()[:3] == (start, None, 0) and entry()[3] >= start)
        app.kill()

    app = open_again()
    app.press("Run On", "push button")
    wait_for("it runs as if nothing had happened", lambda: entry() == (start, None, 1, None))
    app.kill()
    app = open_again()
    alive = wait_for("what is known", lambda: next(
        (name for name in app.names() if name.startswith("Set to last save (")), None))
    app.press(alive, "push button")
    wait_for("it is set to the last sign of life", lambda: (entry()[1] or -1) >= 0 and entry()[3] is None)
    app.keys("ctrl+z")
    app.press("Type its length…", "push button")
    app.find("Duration", "text", app.window("Edit Time Entry"))
    app.type("1:30")
    app.keys("Return")
    wait_for("the typed length", lambda: entry()[1:] == (5400, 0, None))
    app.kill()


def test(desktop):
    what_was_cut_off(desktop)
    document = desktop.sample("Work", "--standalone", "--activities", "3", "--entries", "6")
    ask = lambda query: desktop.rows(document, query)
    periods = lambda where="1": ask(f"SELECT count(*) FROM TimePeriod WHERE {where}")[0][0]
    entries, activities = periods(), ask("SELECT count(*) FROM Activity")[0][0]

    def earlier(app):
        app.press("Start", "table cell")
        app.keys("ctrl+t")
        app.keys("ctrl+shift+t")
        app.window("Start Earlier")
        app.keys("Return")

    def stop_earlier(app):
        app.press("Start", "table cell")
        try:
            app.choose("Stop Earlier…", "Work")
        except Exception:  # it answers when the window that it opens has closed
            pass
        app.window("Stop Earlier")
        app.keys("Tab")
        app.type("now")
        app.keys("Return")

    def add_activity(app):
        app.keys("ctrl+shift+n")
        app.window("Add Activity")
        for name, next_field in (("Customer", ("Tab", "Tab")), ("Service", ("Tab",))):
            app.type(ask(f"SELECT name FROM {name} WHERE name NOT GLOB '*[^A-Za-z]*' AND shown = 1")[0][0])
            app.keys(*next_field)
        app.press("Add", "push button")

    def complete(app):
        app.press("Activity Complete", "table cell")

    def undo(app):
        complete(app)
        app.find("Undo", "push button")
        app.keys("ctrl+z")

    def quick_entry(app):
        app.keys("ctrl+l")
        app.type("Northgate: Dancing yesterday @7:00-8:30")
        app.find("Quick entry reading")
        app.keys("Return")

    before_split = []

    def split(app):
        before_split.append(periods())
        app.focus("Time log", "table")
        app.keys("End")
        app.selected(1)
        app.choose("Split at…", "Work")
        app.window("Split Entry")
        app.keys("Return")

    def restore(app):
        """The oldest backup, which is the one of the day's first change."""
        app.choose("Restore…", "Work")
        window = app.window("Restore")
        wait_for("the backups", lambda: all(app.cells("Backups", "Entries")))
        app.focus_window("Restore")
        app.keys("End")
        app.press("Restore…", "push button", within=window)
        app.press("Restore", "push button")

    def add_customer(app):
        app.choose("Customers and Jobs…", "Work")
        app.window("Customers and Jobs")
        app.press("Add customer", "push button")

    completed = lambda: ask("SELECT count(*) FROM Activity WHERE completed = 1")[0][0]
    customers = lambda: ask("SELECT count(*) FROM Customer")[0][0]
    done, known = completed(), customers()
    # What is done, and what the file holds from then on. What runs when the program is killed is cut off, and asked.
    day = [
        ("a start", lambda app: app.press("Start", "table cell"), lambda: periods() == entries + 1),
        ("a start and a stop by key", lambda app: (app.press("Start", "table cell"), app.keys("ctrl+t")),
         lambda: periods("duration IS NOT NULL") == entries + 1),
        ("a start earlier", earlier, lambda: periods() == entries + 4),
        ("a stop earlier", stop_earlier, lambda: periods("duration IS NOT NULL") == entries + 3),
        ("an activity", add_activity, lambda: ask("SELECT count(*) FROM Activity")[0][0] == activities + 1),
        ("a completion", complete, lambda: completed() == done + 1),
        ("a completion and its undo", undo, lambda: completed() == done + 1),
        ("a customer", add_customer, lambda: customers() == known + 1),
        ("a quick entry with names that are new", quick_entry,
         lambda: (customers(), ask("SELECT count(*) FROM Service WHERE name = 'Dancing'")) == (known + 2, [(1,)])),
        ("a split", split, lambda: periods() == before_split[0] + 1),
        ("a restoring of the day's first backup", restore, lambda: customers() == known),
    ]
    for what, act, holds in day:
        app = desktop.start(str(document))
        app.window("Work")
        app.focus_window("Work")
        act(app)
        wait_for(f"{what} is in the file of the running program", holds)
        app.kill()
        expect(f"{what} is in the file of the killed program", holds())
        expect("the file is whole", ask("PRAGMA integrity_check") == [("ok",)])


run(test)
