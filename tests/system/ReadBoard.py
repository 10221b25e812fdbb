#!/usr/bin/python3
"""Reads the board and its windows as a screen reader does, over the accessibility bus.

    PYTHONPATH=scripts tests/system/ReadBoard.py HOST
"""

import contextlib
import os
import subprocess
import sys
import tempfile

SKIPPED = 77

try:
    from accessible import (Bus, FOCUSABLE, FOCUSED, PATIENCE, SHOWING, Stuck, desk, dispatch,
                            missing_tools, started, wait_for)
except ImportError as error:
    print(error)
    sys.exit(SKIPPED)

ROW, COLUMN = 2, 1  # of some cell


class Reading:
    def __init__(self, bus):
        self.bus = bus
        self.faults = []
        self.names_heard = bus.hear_names()
        self.board = bus.window("Tallyroom")

    def expect(self, holds, what):
        if not holds:
            self.faults.append(what)

    @contextlib.contextmanager
    def visit(self, opener, title, leave="Exit <<"):
        """What every window has to tell is looked at; the caller sees to the rest."""
        before = self.bus.windows()
        opener.press()
        window = self.bus.window(title, before)
        self.look(window)
        yield window
        window.find("push button", leave).press()
        wait_for(f"{title} to go",
                 lambda: window.path not in [one.path for one in self.bus.windows()])

    def choose(self, entry, *window):
        return self.visit(self.board.find("menu item", entry), *window)

    def push(self, window, button, *opened):
        return self.visit(window.find("push button", button), *opened)

    def look(self, window):
        for one in window.within(SHOWING):
            if not one.has(FOCUSABLE):
                continue
            # The name of a list is what is chosen in it; what for has to be said beside it.
            told = one.labels() or one.description() if one.role() == "combo box" else one.name()
            self.expect(told, f"{window.name()}: a {one.role()} without a name, {one.place()}")

    def look_at_calendars(self, window, *boxes):
        names = [one.name() for one in window.within(SHOWING) if one.name().startswith("Pick")]
        self.expect(names == [f"Pick a date: {box}" for box in boxes], f"calendars: {names}")

    def look_at_cell(self):
        table = self.board.find("table", "Canvass")
        cell = table.cell(ROW, COLUMN)
        index = cell.ask("GetIndexInParent")
        place = [table.call("Table", method, "i", index)
                 for method in ("GetRowAtIndex", "GetColumnAtIndex")]
        self.expect(place == [ROW, COLUMN], f"a cell's place: {place}")
        self.expect(cell.name() and cell.description() == "Name, row 3",
                    f"a cell: {cell.name()}, {cell.description()}")

    def look_at_board(self):
        self.look(self.board)
        self.look_at_calendars(self.board, "Canvass date")
        table = self.board.find("table", "Canvass")
        for row in range(3):
            self.look_at_cell()
            self.expect(table.cell(0, 0).has(FOCUSED), f"no current row after {row} fills")
            self.hear_status("1 selected: ", lambda: table.select_row(row))
            self.hear_status("", self.board.find("menu item", "Refresh").press)

    def hear_status(self, beginning, command):
        status = self.board.find("status bar", "Status")
        lines = [one for one in status.within() if one.role() == "label"]
        self.names_heard.clear()
        command()

        def heard():
            dispatch()
            return any(line.path in self.names_heard and line.name().startswith(beginning)
                       for line in lines)
        wait_for(f"the status bar to tell {beginning or 'a change'}", heard)

    def look_at_windows(self):
        with self.choose("Associations...", "Tallyroom - Associations"):
            pass
        self.board.find("menu item", "Break Out Individual Overtime").press()
        with self.choose("Associations...", "Tallyroom - Associations") as window:
            lists = [one for one in window.within(SHOWING) if one.role() == "combo box"]
            rates = [one.description().rpartition(" at ")[2] for one in lists]
            self.expect(rates == ["time and a half", "double time"] * 2, f"lists: {rates}")
        with self.choose("Define Totalling Period...", "Totalling Period") as window:
            self.look_at_calendars(window, "From date", "To date")
            with self.push(window, "Pick a date: To date", "Pick a Date", "Cancel"):
                pass
        with self.choose("Employee Specification Buckets...", "Employee Specification Buckets",
                         "Cancel") as window, \
                self.push(window, "Save as\N{HORIZONTAL ELLIPSIS}", "Save Bucket", "Cancel"):
            pass
        with self.choose("Define...", "Tallyroom - User-Defined Ordering") as window, \
                self.push(window, "Add", "Tallyroom - Edit User-Defined Ordering"):
            pass
        with self.choose("Audit", "Tallyroom - Audit") as window:
            self.look_at_calendars(window, "System Date from", "System Date to",
                                   "Canvass Date from", "Canvass Date to")
            window.find("push button", "All").press()
            with self.push(window, "Query", "Tallyroom - Audit"):
                pass
        with self.choose("Undo", "Undo"):
            pass
        for entry, title in (("Edit Time and Attendance Transactions",
                              "Time and Attendance Transactions"),
                             ("Daily Schedule",) * 2, ("Overtime Analysis",) * 2):
            with self.choose(entry, title, "Close"):
                pass


def read(host):
    with tempfile.TemporaryDirectory() as folder, desk():
        here = os.environ | {"HOME": folder, "XDG_RUNTIME_DIR": folder,
                             "TALLYROOM_REGISTRY": f"{folder}/registry"}
        subprocess.run([host, "--create-data", f"{folder}/data", "--employees", "12"], check=True,
                       env=here | {"QT_QPA_PLATFORM": "offscreen"})
        with started(host, "--data", f"{folder}/data", "--user", "master", "--open", "TLYRShow",
                     env=here) as program:
            reading = Reading(Bus())
            try:
                reading.look_at_board()
                reading.look_at_windows()
                reading.board.find("push button", "Exit <<").press()
                reading.expect(program.wait(PATIENCE) == 0, "the program failed")
            except Stuck as stuck:
                reading.faults.append(str(stuck))
        return reading.faults


def main():
    if missing := missing_tools():
        print("not there:", *missing)
        return SKIPPED
    faults = read(sys.argv[1])
    for fault in faults:
        print(fault)
    return 1 if faults else 0


sys.exit(main())
