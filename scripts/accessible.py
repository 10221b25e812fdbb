"""Running programs as a screen reader meets them: over the accessibility bus, on a virtual display
and a session bus of their own."""

import contextlib
import os
import shutil
import subprocess
import time

from gi.repository import Gio, GLib

PATIENCE = 30  # seconds
ANSWER_WITHIN = 5000  # milliseconds; a program that takes longer has stalled
REGISTRY = "org.a11y.atspi.Registry"

FOCUSABLE, FOCUSED, SHOWING = 11, 12, 25  # places in a set of states
LABELLED_BY = 2  # a kind of relation


class Stuck(Exception):
    pass


def wait_for(what, condition, *passing):
    """Errors of the kinds in `passing` count as not yet."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        with contextlib.suppress(GLib.Error, *passing):  # an element that went while it was asked
            if value := condition():
                return value
        time.sleep(0.05)
    raise Stuck(f"waited in vain for {what}")


def missing_tools():
    return [tool for tool in ("Xvfb", "dbus-daemon", "/usr/libexec/at-spi-bus-launcher")
            if not shutil.which(tool)]


@contextlib.contextmanager
def started(*command, **options):
    process = subprocess.Popen(command, **options)
    try:
        yield process
    finally:
        process.terminate()
        process.wait()


@contextlib.contextmanager
def desk():
    """A screen and a session bus. Programs that are started meanwhile speak to screen readers."""
    quiet = {"stdout": subprocess.PIPE, "stderr": subprocess.DEVNULL, "text": True}
    with started("Xvfb", "-displayfd", "1", "-screen", "0", "1280x900x24", **quiet) as screen, \
            started("dbus-daemon", "--session", "--nofork", "--print-address=1", **quiet) as bus:
        os.environ |= {"DISPLAY": ":" + screen.stdout.readline().strip(),
                       "DBUS_SESSION_BUS_ADDRESS": bus.stdout.readline().strip(),
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb"}
        yield


class Bus:
    def __init__(self):
        session = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                    None, None, Gio.DBusCallFlags.NONE, -1).unpack()[0]
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)

    def windows(self):
        """Those that are shown, in the order of their making."""
        programs = Element(self, REGISTRY, "/org/a11y/atspi/accessible/root").children()
        return [window for program in programs for window in program.children()
                if window.has(SHOWING)]

    def window(self, title, before=()):
        """The latest with this title that was not there before."""
        known = [one.path for one in before]
        return wait_for(f"the window {title}", lambda: next(
            (one for one in reversed(self.windows())
             if one.name() == title and one.path not in known), None))

    def hear_names(self):
        """A list that gathers the path of each element whose name changes, as dispatch() is
        called."""
        heard = []
        self.connection.call_sync(REGISTRY, "/org/a11y/atspi/registry", REGISTRY, "RegisterEvent",
                                  GLib.Variant("(s)", ("Object:PropertyChange:AccessibleName",)),
                                  None, Gio.DBusCallFlags.NONE, ANSWER_WITHIN)
        self.connection.signal_subscribe(
            None, "org.a11y.atspi.Event.Object", "PropertyChange", None, "accessible-name",
            Gio.DBusSignalFlags.NONE,
            lambda connection, sender, path, *rest: heard.append(path))
        return heard


def dispatch():
    while GLib.MainContext.default().iteration(False):
        pass


class Element:
    def __init__(self, bus, program, path):
        self.bus, self.program, self.path = bus, program, path

    def call(self, interface, method, types="", *values):
        return self.bus.connection.call_sync(
            self.program, self.path, f"org.a11y.atspi.{interface}", method,
            GLib.Variant(f"({types})", values), None, Gio.DBusCallFlags.NONE,
            ANSWER_WITHIN).unpack()[0]

    def ask(self, method):
        return self.call("Accessible", method)

    def property(self, name):
        return self.bus.connection.call_sync(
            self.program, self.path, "org.freedesktop.DBus.Properties", "Get",
            GLib.Variant("(ss)", ("org.a11y.atspi.Accessible", name)), None,
            Gio.DBusCallFlags.NONE, ANSWER_WITHIN).unpack()[0]

    def children(self):
        return [Element(self.bus, *child) for child in self.ask("GetChildren")]

    def name(self):
        return self.property("Name")

    def role(self):
        return self.ask("GetRoleName")

    def has(self, *states):
        bits = self.ask("GetState")
        return all(bits[state // 32] >> state % 32 & 1 for state in states)

    def description(self):
        return self.property("Description")

    def labels(self):
        return [Element(self.bus, *label).name() for kind, labels in self.ask("GetRelationSet")
                if kind == LABELLED_BY for label in labels]

    def within(self, *states):
        """This and what it holds, as far as all of it has these states; no cells of tables."""
        if self.has(*states):
            yield self
            if self.role() != "table":
                for child in self.children():
                    yield from child.within(*states)

    def find(self, role, name):
        """By its name or its label."""
        for one in self.within():
            if one.role() == role and (one.name() == name or name in one.labels()):
                return one
        raise Stuck(f"there is no {role} {name} in {self.name()}")

    def press(self):
        """Does not wait for what it begins, which may open a window."""
        self.bus.connection.call(
            self.program, self.path, "org.a11y.atspi.Action", "DoAction",
            GLib.Variant("(i)", (0,)), None, Gio.DBusCallFlags.NO_AUTO_START, -1, None, None)

    def place(self):
        """Left, top, width and height on the screen."""
        return self.call("Component", "GetExtents", "u", 0)

    def cell(self, row, column):
        return Element(self.bus, *self.call("Table", "GetAccessibleAt", "ii", row, column))

    def select_row(self, row):
        return self.call("Table", "AddRowSelection", "i", row)
