"""Everything that a hand does is taken back and done again from the Edit menu, which names it."""
from desktop import run, wait_for

TABLES = ("Activity", "Customer", "Job", "Service", "TimePeriod")


def test(desktop):
    document = desktop.sample("Work", "--standalone", "--activities", "3", "--entries", "6")
    everything = lambda: [desktop.rows(document, f"SELECT * FROM {table} ORDER BY id") for table in TABLES]
    app = desktop.start(str(document))
    app.window("Work")
    app.focus_window("Work")

    def in_log(*keys):
        app.focus("Time log", "table")
        app.keys(*keys)

    def delete():
        in_log("End", "shift+Up", "shift+Up", "Delete")
        app.press("Delete", "push button")

    def split():
        in_log("End")
        app.selected(1)
        app.choose("Split at…", "Work")
        app.window("Split Entry")
        app.keys("Return")

    def type_notes():
        in_log("End", "F2")
        app.find("Notes", "text")
        app.keys("ctrl+a")
        app.type("Letters")
        app.keys("Return")

    def earlier():
        app.keys("ctrl+shift+t")
        app.window("Start Earlier")
        app.keys("Return")

    def add_customer():
        app.choose("Customers and Jobs…", "Work")
        app.press("Add customer", "push button", within=app.window("Customers and Jobs"))
        wait_for("a customer more", lambda: everything()[1] != states[-1][1])
        app.keys("Escape")  # its name stays as it is
        app.focus_window("Work")

    steps = [
        ("Start", lambda: app.press("Start", "table cell")),
        ("Stop", lambda: app.keys("ctrl+t")),
        ("Start Earlier", earlier),
        ("Favourite", lambda: app.choose("Favourite", "Work")),
        ("Edit of an Entry", type_notes),
        ("Split of an Entry", split),
        ("Merge of 2 Entries", lambda: (in_log("End", "shift+Up"), app.selected(2), app.choose("Merge", "Work"))),
        ("Duplicate of an Entry", lambda: in_log("End", "ctrl+d")),
        ("Delete of 3 Entries", delete),
        ("Activity Complete", lambda: app.press("Activity Complete", "table cell")),
        ("Add Customer", add_customer),
    ]
    states = [everything()]
    for name, act in steps:
        act()
        wait_for(f"{name} in the file", lambda: everything() != states[-1])
        app.item(f"Undo {name}", "Work")
        after = everything()
        app.choose(f"Undo {name}", "Work")
        wait_for(f"the file as it was before {name}", lambda: everything() == states[-1])
        app.choose(f"Redo {name}", "Work")
        wait_for(f"the file as it was after {name}", lambda: everything() == after)
        states.append(after)

    for (name, _), before in zip(reversed(steps), reversed(states[:-1])):
        app.choose(f"Undo {name}", "Work")
        wait_for(f"the file as it was before {name}, of all", lambda: everything() == before)
    app.item("Undo", "Work")
    for (name, _), after in zip(steps, states[1:]):
        app.choose(f"Redo {name}", "Work")
        wait_for(f"the file as it was after {name}, of all", lambda: everything() == after)


run(test)
