"""An hour that was noted wrongly is corrected in the log by keyboard: typed over, split, merged, and all taken back."""
from desktop import expect, run, wait_for

ENTRIES = "SELECT id, start, duration, notes, running, dateSubmitted FROM TimePeriod ORDER BY id"
LATEST = "SELECT id, duration FROM TimePeriod ORDER BY start DESC LIMIT 1"


def says(app, field, words):
    wait_for(f"{field!r} saying {words!r}", lambda: words in (app.find(field, "text").get_description() or ""))


def correct_in_place(app, desktop, document):
    app.focus("Time log", "table")
    app.keys("Down", "F2")
    app.find("Notes", "text")
    app.keys("Tab")
    app.find("Start", "text")
    app.keys("Tab", "Tab")
    app.find("Duration", "text")
    app.type("soon")
    says(app, "Duration", "A length is typed as 1:30, 1h30 or 90m.")
    app.keys("Return")
    says(app, "Duration", "Esc leaves it as it was.")
    app.keys("ctrl+a")
    app.type("1h30")
    says(app, "Duration", "Stored as 01:30:00, was ")
    app.keys("Return")
    return wait_for("the length in the file", lambda: [
        row for row in desktop.rows(document, ENTRIES) if row[2] == 5400])


def split_and_merge(app, desktop, document, count):
    def hours():
        return sum(row[2] for row in desktop.rows(document, ENTRIES))

    before = hours()
    app.choose("Split at…", "Work")
    app.window("Split Entry")
    says(app, "Time", " until ")
    app.keys("Return")
    wait_for("one entry more", lambda: len(desktop.rows(document, ENTRIES)) == count + 1)
    expect("no second was lost", hours() == before)
    app.gone("Split Entry")
    app.keys("shift+Up")  # the later part stands above
    app.selected(2)
    app.choose("Merge", "Work")
    wait_for("one entry again", lambda: len(desktop.rows(document, ENTRIES)) == count)
    app.find("2 entries are one of 01:30:00 now.")


def test(desktop):
    document = desktop.sample("Work", "--activities", "3", "--entries", "9", "--standalone")
    before = desktop.rows(document, ENTRIES)
    app = desktop.start(str(document))
    app.window("Work")
    app.focus_window("Work")
    corrected = correct_in_place(app, desktop, document)
    expect("one entry was corrected, the latest", [row[0] for row in corrected] == [desktop.rows(document, LATEST)[0][0]])
    split_and_merge(app, desktop, document, len(before))
    expect("its length is what it was", desktop.rows(document, LATEST)[0][1] == 5400)
    app.focus("Time log", "table")
    app.keys("ctrl+z", "ctrl+z", "ctrl+z")
    wait_for("the document as it was", lambda: desktop.rows(document, ENTRIES) == before)


run(test)
