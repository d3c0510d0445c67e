"""A person who never leaves the keyboard: types what was worked on, reads what will be done, does it, takes it back."""
from desktop import Browser, Failure, run, wait_for


def expect(what, held):
    if not held:
        raise Failure(what)


def test(desktop):
    browser = Browser(desktop)
    document = desktop.sample("Work", "--activities", "3", "--entries", "4", "--standalone")
    counts = "SELECT (SELECT count(*) FROM Customer), (SELECT count(*) FROM Job), (SELECT count(*) FROM Service), " \
             "(SELECT count(*) FROM Activity), (SELECT count(*) FROM TimePeriod)"
    before = desktop.rows(document, counts)

    app = desktop.start(str(document))
    app.window("Work")
    app.focus_window("Work")
    app.keys("ctrl+r")
    app.window("Report")
    app.focus_window("Report")
    app.keys("ctrl+l")
    field = app.find("Quick entry", "text")
    app.type("Northgate, Attic: Dancing - steps yesterday @7:00-8:30")

    # What a screen reader says of the field is what stands below it.
    def read_out():
        return app.ask(field, "description") or ""
    said = wait_for("the reading", lambda: read_out() if "New service item “Dancing”" in read_out() else None)
    expect(f"it says when: {said}", said.startswith("Books 01:30:00, yesterday from 7:00 to 8:30\n"))
    expect(f"it says for what: {said}", "New activity: Northgate - Attic - Dancing, “steps”" in said)
    expect("the label says the same", app.ask(app.find("Quick entry reading"), "description") == said)
    expect("nothing has been done yet", desktop.rows(document, counts) == before)

    app.keys("Return")
    wait_for("the entry in the log", lambda: app.seen("Northgate", "table cell", app.find("Time log")))
    [(customer, job, service, notes, length, running)] = desktop.rows(
        document, "SELECT c.name, j.name, s.name, a.notes, t.duration, t.running FROM TimePeriod t JOIN Activity a "
        "ON a.id = t.activity JOIN Customer c ON c.id = a.customer JOIN Job j ON j.id = a.job JOIN Service s "
        "ON s.id = a.service WHERE t.id = (SELECT max(id) FROM TimePeriod)")
    expect("the file has it", (customer, job, service, notes, length, bool(running)) ==
           ("Northgate", "Attic", "Dancing", "steps", 5400, False))
    app.find("“Northgate”, “Attic” and “Dancing” are new in their lists.")

    app.keys("ctrl+z")
    wait_for("all of it is taken back", lambda: desktop.rows(document, counts) == before)
    wait_for("the log shows it no more", lambda: not app.seen("Northgate", "table cell"))

    # What is not understood is said and not done, and the book explains what would be.
    app.type("Northgate: Dancing @25")
    wait_for("the fault", lambda: read_out() == "“@25” is no time of day.")
    app.keys("Return")
    app.keys("F1")
    expect("the book opens at its page", browser.next(0).endswith("#quick-entry"))
    expect("nothing was done", desktop.rows(document, counts) == before)


run(test)
