"""Asks a terminal over the accessibility bus, as bus.py starts it: its tree, the chart at the cross line, and what is announced
when a key moves that.

    client.py REGISTRY TERMINAL
"""

import os
import subprocess
import sys
import time

import gi
import pyatspi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib

DAY = "2026-11-19"  # of the simulated market: a whole day
PATIENCE = 240  # seconds; the first start fills a store
CHART, INSTRUMENT = "分时图", "浦发银行"
EVENTS = ("object:property-change:accessible-value", "object:state-changed:focused")


def wait_for(what, condition):
    """The first answer of a condition that holds, asked anew whenever the bus has brought something; ends when it never does."""
    context = GLib.MainContext.default()
    end = time.monotonic() + PATIENCE
    fault = None
    GLib.timeout_add(50, lambda: time.monotonic() < end)  # not all that is waited for is told
    while time.monotonic() < end:
        try:
            found = condition()
        except GLib.Error as error:  # an object that has just gone
            found, fault = None, error
        if found is not None and found is not False:
            return found
        context.iteration(True)
    sys.exit(f"never seen: {what}" + (f" ({fault.message})" if fault else ""))


def ask(bus, name, path, method, *texts):
    """What a service on a bus answers."""
    interface, _, member = method.rpartition(".")
    words = GLib.Variant(f"({'s' * len(texts)})", texts)
    return bus.call_sync(name, path, interface, member, words, None, Gio.DBusCallFlags.NONE, 10000, None).unpack()[0]


def has_owner(bus, name):
    return ask(bus, "org.freedesktop.DBus", "/", "org.freedesktop.DBus.NameHasOwner", name)


def start_registry(program):
    """Starts what brings clients and programs together, on the bus that the launcher has made."""
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    wait_for("the launcher", lambda: has_owner(session, "org.a11y.Bus"))
    address = ask(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress")
    bus = Gio.DBusConnection.new_for_address_sync(
        address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
    registry = subprocess.Popen([program], env={**os.environ, "AT_SPI_BUS_ADDRESS": address})
    wait_for("the registry", lambda: has_owner(bus, "org.a11y.atspi.Registry"))
    # Programs find the bus by this too. One of Qt 5 that has to ask the launcher first registers before it has the answer,
    # and then never, as often as not.
    subprocess.run(["xprop", "-root", "-f", "AT_SPI_BUS", "8s", "-set", "AT_SPI_BUS", address], check=True)
    return registry


def descendants(accessible, depth=12):
    """All that is below, tables without their cells."""
    yield accessible
    if depth and accessible.getRole() != pyatspi.ROLE_TABLE:
        for i in range(accessible.childCount):
            child = accessible.getChildAtIndex(i)
            if child:
                yield from descendants(child, depth - 1)


def first(root, role, name=""):
    return next((one for one in descendants(root) if one.getRole() == role and name in (one.name or "")), None)


def uncached(accessible):
    """The same, of which each question is asked of the program: what was true once stands in the way of what is."""
    accessible.set_cache_mask(Atspi.Cache.NONE)
    return accessible


def application(process):
    """The terminal's root, when it has a window."""
    if process.poll() is not None:
        sys.exit(f"the terminal has ended with {process.returncode}")
    desktop = uncached(pyatspi.Registry.getDesktop(0))
    roots = [uncached(one) for one in desktop if one is not None]
    return next((one for one in roots if one.name == "timeshare-terminal" and one.childCount), None)


def check(what, holds, seen):
    if not holds:
        sys.exit(f"{what}: {seen}")
    print(f"{what}: {seen}")


def focus(process, chart):
    """Gives the terminal's window the keys. Nothing on this display does so by itself."""
    if not chart.getState().contains(pyatspi.STATE_FOCUSED):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(process.pid)], capture_output=True, text=True)
        for window in found.stdout.split():
            subprocess.run(["xdotool", "windowfocus", window], capture_output=True)
    return chart.getState().contains(pyatspi.STATE_FOCUSED)


def look_at_tree(root):
    """Walks the tree; answers the chart and the table of its minutes."""
    chart = wait_for("the chart", lambda: first(root, pyatspi.ROLE_CHART, INSTRUMENT))
    check("the chart is named", chart.name.startswith(CHART), chart.name)
    table = wait_for("a table of minutes", lambda: first(chart, pyatspi.ROLE_TABLE, CHART))
    rows = wait_for("a whole day", lambda: table.queryTable().nRows == 241 and table.queryTable().nRows)
    check("minutes of a whole day", rows == 241, rows)
    cells = table.queryTable()
    check("the first minute", cells.getAccessibleAt(0, 0).name == "09:30", cells.getAccessibleAt(0, 0).name)
    check("the last minute", cells.getAccessibleAt(240, 0).name == "15:00", cells.getAccessibleAt(240, 0).name)
    check("columns have heads", cells.getColumnDescription(0) == "时间", cells.getColumnDescription(0))
    for role, name in ((pyatspi.ROLE_LABEL, "左侧坐标轴"), (pyatspi.ROLE_LABEL, "时间轴"), (pyatspi.ROLE_PUSH_BUTTON, "菜单")):
        check("there is", first(chart, role, name), name)
    strip = first(chart, pyatspi.ROLE_LABEL, "左侧坐标轴")
    check("a strip tells its labels", "." in strip.description, strip.description)
    return chart, cells


def look_at_keys(told, chart, cells):
    """Moves the cross line; what is told is what the table has at its minute."""
    told.clear()
    for key in ("Home", "Right"):
        subprocess.run(["xdotool", "key", key], check=True)
    at = wait_for("the announcement of 09:31", lambda: next(
        (one for one in told if "accessible-value" in one[0] and one[2].startswith("09:31 ")), None))
    check("a key is announced by the chart", at[1] == chart.name, at)
    on = wait_for("the focus on the minute", lambda: next(
        (one for one in told if "focused" in one[0] and one[1] == "09:31"), None))
    price = cells.getAccessibleAt(1, 1).name
    check("which tells its price", price in on[2], on)
    check("the chart's description is what its titles tell there", price in chart.description, chart.description)
    value = chart.queryValue().currentValue
    check("its value is the price there", abs(value - float(price)) < 0.005, value)
    check("the row is selected", cells.isRowSelected(1), price)
    subprocess.run(["xdotool", "key", "Right"], check=True)
    wait_for("the announcement of 09:32", lambda: chart.description.startswith("09:32 "))
    check("the row goes on", cells.isRowSelected(2) and not cells.isRowSelected(1), chart.description)


def look_at_terminal(program):
    told = []
    pyatspi.Registry.registerEventListener(
        lambda event: told.append((event.type, event.source.name, event.source.description)), *EVENTS)
    terminal = subprocess.Popen([program, "--instrument", "SH600000", "--date", DAY, "--size", "1000x700"])
    try:
        root = wait_for("the terminal on the bus", lambda: application(terminal))
        chart, cells = look_at_tree(root)
        wait_for("the focus on the chart", lambda: focus(terminal, chart))
        look_at_keys(told, chart, cells)
    finally:
        terminal.terminate()
        terminal.wait()


def main():
    registry = start_registry(sys.argv[1])
    try:
        look_at_terminal(sys.argv[2])
    finally:
        registry.terminate()
        registry.wait()


if __name__ == "__main__":
    main()
