"""A person's first day without Vantor: setup, a first activity by keyboard, timers, quitting and coming back."""
import shutil
import signal

from desktop import expect, run, wait_for


def elapsed(app):
    """The large elapsed time, as assistive technology reads it."""
    return app.find("Elapsed time").get_description()


def set_up_standalone(desktop):
    app = desktop.start()
    app.window("Set Up Pendra")
    app.focus_window("Set Up Pendra")
    app.press("Work standalone", "radio button")
    app.press("OK", "push button")
    app.find("File name:")
    expect("the proposed name stands in the panel", app.seen("File name:", "text") is not None)
    app.keys("Return")
    app.window("Pendra File")
    app.press("Begin", "push button")
    wait_for("the introduction gone", lambda: not app.seen("Begin", "push button"))
    return app


def agree(app, question):
    """Leaves the field, which asks, and waits until the keyboard is back in the sheet."""
    app.keys("Tab")
    app.find(question, within=app.window("Pendra"))
    app.keys("Return")
    app.gone("Pendra")


def ask_to_end(app):
    """A question that stands for three seconds only, so it is looked for where it is."""
    app.process.send_signal(signal.SIGTERM)
    alert = app.window("Pendra")
    app.find("Pendra needs to stop all timers", within=alert)
    return alert


def add_first_activity(app):
    app.focus_window("Pendra File")
    app.keys("ctrl+shift+n")
    app.window("Add Activity")
    app.type("Acme")
    agree(app, 'Add "Acme" to the Customers list?')
    app.type("Roof")
    agree(app, 'Add "Roof" to the Jobs list?')
    app.type("Design")
    agree(app, 'Add "Design" to the Services list?')
    for name, text in (("Customer", "Acme"), ("Job", "Roof"), ("Service", "Design")):
        expect(f"{name} shows its text", app.text(name, "combo box", within=app.window("Add Activity")) == text)
    app.type("Sketches")
    app.press("Add", "push button")
    app.find("Stop")  # the cell of the running activity says what a press does


def test(desktop):
    document = desktop.documents / "Pendra" / "Pendra File.pdr"
    app = set_up_standalone(desktop)
    add_first_activity(app)
    window = app.window("Pendra File")
    for name in ("Activities", "Time log", "Elapsed time", "Selected activity", "Start or stop timer", "Add activity",
                 "Customer filter", "Job filter", "Service filter", "From date", "To date", "Range",
                 "Document state", "Pendra", "File", "Edit", "Activity", "Lists", "Window", "Help"):
        app.find(name, within=window)
    expect("standalone hides sending", not any(app.seen(name, within=window) for name in ("Send time", "Hide sent")))
    wait_for("a running second", lambda: elapsed(app) >= "00:00:02")

    app.press("Cancel", "push button", within=ask_to_end(app))
    expect("a signal stores what there is before it asks",
           desktop.rows(document, "SELECT running, Activity.notes, aliveAt > start + 1 FROM Document, TimePeriod "
                        "JOIN Activity ON Activity.id = activity") == [(1, "Sketches", 1)])
    wait_for("the timer runs on", lambda: elapsed(app) >= "00:00:05")
    app.press("OK", "push button", within=ask_to_end(app))
    expect("it ends well", app.ended() == 0)

    expect("one customer, offered from now on",
           desktop.rows(document, "SELECT name, vtObjectID, shown FROM Customer") == [("Acme", "0", 1)])
    (running, duration, notes), = desktop.rows(
        document, "SELECT running, duration, Activity.notes FROM TimePeriod JOIN Activity ON Activity.id = activity")
    expect("the timer was stopped with its length", running == 0 and duration >= 4 and notes == "Sketches")
    expect("the last document is remembered", desktop.defaults()["PendraLastURL"] == str(document))
    expect("merging is on after a launch", desktop.defaults()["PendraMergeSubmissions"] == "true")

    again = desktop.start()
    again.window("Pendra File")
    again.find("Acme")
    second = desktop.start(str(document))
    expect("a second start hands over and ends", second.ended() == 0)
    other = document.with_name("Other.pdr")
    shutil.copy(document, other)
    expect("so does one with another document", desktop.start(str(other)).ended() == 0)
    again.find("Close current file?")
    again.press("Cancel", "push button")
    again.focus_window("Pendra File")
    again.keys("ctrl+shift+n")
    again.window("Add Activity")
    again.process.send_signal(signal.SIGTERM)
    expect("a signal waits for the open sheet", again.process.poll() is None)
    again.keys("Escape")
    expect("and then ends it without a question when nothing runs", again.ended() == 0)


run(test)
