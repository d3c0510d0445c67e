"""The program is killed after each command of a day, and none of them is lost."""
from desktop import expect, run, wait_for


def test(desktop):
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
