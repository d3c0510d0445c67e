"""Help lands where the person is: F1 in every window, and on an item of a menu, opens the book at that place."""
import pathlib
import re
import urllib.parse

from desktop import Browser, Failure, run


def help_at(browser, app, *keys):
    """The anchor at which the book opens; the anchor must stand in it."""
    count = len(browser.opened())
    app.keys(*keys)
    page, _, anchor = browser.next(count).partition("#")
    book = pathlib.Path(urllib.parse.unquote(urllib.parse.urlparse(page).path)).read_text()
    if f'id="{anchor}"' not in book:
        raise Failure(f"the book has no place named {anchor!r}")
    return anchor


def expect_help(browser, app, title, anchor, *keys):
    app.focus_window(re.escape(title))
    found = help_at(browser, app, *(keys or ["F1"]))
    if found != anchor:
        raise Failure(f"help in {title} opens at {found!r}, not at {anchor!r}")


def test(desktop):
    browser = Browser(desktop)
    app = desktop.start()
    app.window("Set Up Pendra")
    expect_help(browser, app, "Set Up Pendra", "setup")
    app.kill()

    app = desktop.start(str(desktop.sample("Hours", "--standalone", "--entries", "20")))
    app.window("Hours")
    expect_help(browser, app, "Hours", "timer-window")
    for table, title, anchor in (("Activities", "Edit Activity", "activity-editor"),
                                 ("Time log", "Edit Time Entry", "time-entry-editor")):
        app.press("Edit", "table cell", within=app.find(table, "table"))
        expect_help(browser, app, title, anchor)
        app.keys("Escape")
    app.focus_window("Hours")
    app.keys("ctrl+shift+n")
    app.window("Add Activity")
    expect_help(browser, app, "Add Activity", "activity-editor")
    app.keys("Escape")
    app.focus_window("Hours")
    if (found := help_at(browser, app, "alt+a", "F1")) != "add-activity":
        raise Failure(f"help on the menu's first item opens at {found!r}")
    app.keys("Escape", "Escape")
    for item, title, anchor in (("Customers and Jobs…", "Customers and Jobs", "customers-and-jobs"),
                                ("Service Items…", "Service Items", "service-items"),
                                ("Preferences…", "Preferences", "preferences"),
                                ("About Pendra", "About Pendra", "about"),
                                ("Welcome to Pendra", "Welcome to Pendra", "welcome")):
        app.choose(item, "Hours")
        app.window(title)
        expect_help(browser, app, title, anchor)


run(test)
