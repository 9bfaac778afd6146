"""Asks a terminal over the accessibility bus, as bus.py starts it."""

import subprocess
import sys
import time

import gi
import pyatspi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

DAY = "2026-11-19"  # of the simulated market
PATIENCE = 240  # seconds; the first start fills a store
NAMES = {"name": "浦发银行", "chart": "分时图"}


def pump():
    """Takes in what the bus has brought."""
    context = GLib.MainContext.default()
    while context.pending():
        context.iteration(False)


def wait_for(what, condition):
    """The first answer of a condition that holds; ends when it never does."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        pump()
        try:
            found = condition()
        except Exception:  # an object that has just gone
            found = None
        if found:
            return found
        time.sleep(0.05)
    sys.exit(f"never seen: {what}")


def descendants(accessible, depth=12):
    """All that is below, tables without their cells."""
    yield accessible
    if depth and accessible.getRole() != pyatspi.ROLE_TABLE:
        for i in range(accessible.childCount):
            child = accessible.getChildAtIndex(i)
            if child:
                yield from descendants(child, depth - 1)


def application(process):
    """The terminal's root, which may run in a child of the process."""
    if process.poll() is not None:
        sys.exit(f"the terminal has ended with {process.returncode}")
    desktop = pyatspi.Registry.getDesktop(0)
    desktop.set_cache_mask(Atspi.Cache.NONE)  # else a program that comes later is never seen
    return next((one for one in desktop if one and one.name == "timeshare-terminal"), None)


def first(root, role, name=""):
    return next((one for one in descendants(root) if one.getRole() == role and name in (one.name or "")), None)


def check(what, holds, seen):
    if not holds:
        sys.exit(f"{what}: {seen}")
    print(f"{what}: {seen}")


def main():
    told = []
    pyatspi.Registry.registerEventListener(
        lambda event: told.append((event.type, event.source.name, event.source.description)),
        "object:property-change:accessible-value", "object:state-changed:focused")
    terminal = subprocess.Popen([sys.argv[1], "--instrument", "SH600000", "--date", DAY, "--size",
                                 "1000x700"])
    try:
        root = wait_for("the terminal on the bus", lambda: application(terminal))
        chart = wait_for("the chart", lambda: first(root, pyatspi.ROLE_CHART, NAMES["chart"]))
        check("the chart is named", NAMES["name"] in chart.name, chart.name)
        table = wait_for("a table of minutes", lambda: first(chart, pyatspi.ROLE_TABLE, NAMES["chart"]))
        rows = wait_for("a whole day", lambda: table.queryTable().nRows >= 241 and table.queryTable().nRows)
        cells = table.queryTable()
        check("the first minute", cells.getAccessibleAt(0, 0).name == "09:30", cells.getAccessibleAt(0, 0).name)
        check("the last minute", cells.getAccessibleAt(240, 0).name == "15:00", cells.getAccessibleAt(240, 0).name)
        price = cells.getAccessibleAt(240, 1).name
        check("its price is a number", float(price) > 0, price)
        check("columns have heads", cells.getColumnDescription(0) == "时间", cells.getColumnDescription(0))
        for role, name in ((pyatspi.ROLE_LABEL, "左侧坐标轴"), (pyatspi.ROLE_LABEL, "时间轴"),
                           (pyatspi.ROLE_PUSH_BUTTON, "菜单")):
            check("there is", wait_for(name, lambda: first(chart, role, name)), name)
        strip = first(chart, pyatspi.ROLE_LABEL, "左侧坐标轴")
        check("a strip tells its labels", "." in strip.description, strip.description)

        window = subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--pid", str(terminal.pid)],
                                capture_output=True, text=True, check=True).stdout.split()[0]
        subprocess.run(["xdotool", "windowfocus", "--sync", window], check=True)
        wait_for("the focus on the chart", lambda: chart.getState().contains(pyatspi.STATE_FOCUSED))
        told.clear()
        for key in ("Home", "Right"):
            subprocess.run(["xdotool", "key", key], check=True)
        at = wait_for("the announcement of 09:31", lambda: next(
            (one for one in told if "accessible-value" in one[0] and one[2].startswith("09:31 ")), None))
        check("a key is announced by the chart", NAMES["chart"] in at[1], at)
        on = wait_for("the focus on the minute", lambda: next(
            (one for one in told if "focused" in one[0] and one[1] == "09:31"), None))
        check("which tells its lines", cells.getAccessibleAt(1, 1).name in on[2], on)
        check("its row is selected", cells.isRowSelected(1), cells.getSelectedRows())
        print(f"{rows} minutes were there")
    finally:
        terminal.terminate()
        terminal.wait()


if __name__ == "__main__":
    main()
