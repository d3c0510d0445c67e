"""A deletion that was noticed too late, and the backups that had made themselves: looked into, restored, taken back."""
from desktop import expect, run, wait_for

ENTRIES = "SELECT id, activity, start, duration, notes, running FROM TimePeriod ORDER BY id"


def test(desktop):
    document = desktop.sample("Work", "--standalone", "--activities", "3", "--entries", "6")
    entries = lambda file=document: desktop.rows(file, ENTRIES)
    backups = lambda: sorted((desktop.home / ".local" / "state").rglob("*.pdrbackup"))

    app = desktop.start(str(document))
    app.window("Work")
    app.focus_window("Work")
    expect("nothing has changed, and nothing is copied", not backups())
    app.press("Start", "table cell")
    wait_for("a backup at the day's first change", lambda: len(backups()) == 1)
    app.keys("ctrl+t")
    wait_for("the entry's end", lambda: len(entries()) == 7 and not entries()[-1][-1])
    app.keys("ctrl+q")
    expect("it ends well", app.ended() == 0)
    whole = entries()
    expect("and a backup when it ends, which holds all", len(backups()) == 2 and entries(backups()[-1]) == whole)

    app = desktop.start(str(document))
    app.window("Work")
    app.focus_window("Work")
    app.focus("Time log", "table")
    app.keys("ctrl+a", "Delete")
    app.press("Delete", "push button")
    wait_for("everything gone", lambda: not entries())
    app.choose("Restore…", "Work")
    window = app.window("Restore")
    app.focus_window("Restore")
    wait_for("the entries of the backups", lambda: "7" in app.cells("Backups", "Entries"))
    expect("why each was made", set(app.cells("Backups", "Why")) == {"Daily"})
    wait_for("what has changed since", lambda: "7 entries deleted" in app.ask(app.find("Since then"), "description"))
    app.press("Look Inside", "push button", within=window)
    app.find("This is a backup. You can look and copy; nothing here can be changed.")
    app.press("Close", "push button")
    app.press("Restore…", "push button", within=window)
    app.press("Restore", "push button")
    wait_for("everything back", lambda: entries() == whole)
    expect("the state before is kept", any("restore" in backup.name for backup in backups()))
    wait_for("what was done", lambda: app.shows("“Work” is as it was on "))
    app.press("Undo", "push button")
    wait_for("the restoring taken back", lambda: not entries())
    app.focus_window("Work")
    app.keys("ctrl+shift+z")
    wait_for("and done again", lambda: entries() == whole)
    app.keys("ctrl+q")
    expect("it ends well again", app.ended() == 0)

    # The disk with the chosen folder was taken out.
    desktop.set_default("PendraBackupFolder", desktop.home / "Disk")
    app = desktop.start(str(document))
    app.window("Work")
    app.focus_window("Work")
    app.press("Start", "table cell")
    is_missing = lambda: app.shows("No backup of “Work” could be made in")
    wait_for("that no backup could be made", is_missing)
    app.press("Dismiss", "push button")
    app.keys("ctrl+t", "ctrl+t", "ctrl+t")
    wait_for("further changes", lambda: len(entries()) == 9 and not entries()[-1][-1])
    expect("it is said once", not is_missing())
    expect("nothing was made in its place", not (desktop.home / "Disk").exists())

    # A backup that is opened as a file becomes a document of its own.
    chosen = backups()[1]
    expect("a second start hands over", desktop.start(str(chosen)).ended() == 0)
    for question in ("Close current file?", "Open Backup File?"):
        app.find(question)
        app.press("Continue", "push button")
        wait_for(f"{question!r} answered", lambda: not app.seen(question))
    app.find("File name:")
    copy = desktop.documents / "Back.pdr"
    app.keys("ctrl+a")
    app.type(str(copy))
    app.keys("Return")
    app.find("File restored")
    app.press("OK", "push button")
    app.window("Back")
    expect("it holds what the backup holds", entries(copy) == entries(chosen))


run(test)
