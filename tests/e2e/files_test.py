"""What others do to the file while a person works: copies put in its place, another version, its folder away."""
import os
import shutil
import signal

from desktop import expect, run, wait_for


def put_in_place(document, source):
    """As programs do that keep folders the same on two computers."""
    beside = document.with_name("beside")
    shutil.copy(source, beside)
    os.rename(beside, document)


def said(app, words):
    return wait_for(f"a notice with {words!r}", lambda: any(words in name for name in app.names()))


def test(desktop):
    document = desktop.sample("Work", "--activities", "3", "--entries", "4")
    older = shutil.copy(document, desktop.home / "older.pdr")
    entries = lambda file: desktop.rows(file, "SELECT count(*) FROM TimePeriod WHERE running = 0")[0][0]
    before = entries(document)
    app = desktop.start(str(document))
    app.window("Work")
    app.focus_window("Work")

    for times in range(10):
        if times == 0:
            app.press("Start", "table cell")  # which also selects the activity
        else:
            app.keys("ctrl+t")
        wait_for("the timer runs", lambda: desktop.rows(document, "SELECT 1 FROM TimePeriod WHERE running = 1"))
        put_in_place(document, document)
        app.keys("ctrl+t")
        wait_for("the timer's end is stored", lambda: entries(document) == before + times + 1)
    said(app, "keeps putting copies")

    put_in_place(document, older)
    app.keys("ctrl+t")
    said(app, "is not saved: another version has taken its place")
    app.keys("ctrl+t")
    picture = os.environ.get("PENDRA_E2E_PICTURE")
    if picture:
        app.picture(picture)
    app.press("Keep Both", "push button")
    both = document.with_name("Work1.pdr")
    wait_for("both are there", lambda: both.exists() and entries(both) == before + 11)
    expect("the other version is untouched", entries(document) == before)
    app.window("Work1")

    os.rename(desktop.documents, desktop.home / "Away")
    desktop.documents.mkdir()
    app.keys("ctrl+t")
    said(app, "was moved to")
    app.process.send_signal(signal.SIGTERM)
    app.find("OK", "push button")  # about the timer, which nobody answers
    expect("it ends by itself", app.ended() == 0)
    rescued = desktop.documents / "Work1 (rescued).pdr"
    expect("what could not be saved is beside it", entries(rescued) == before + 12)

    app = desktop.start()
    app.window("Work1 (rescued)")
    said(app, "could not save your document. All of it is in")


run(test)
