#!/usr/bin/python3
"""What assistive tools see of the running program.

Usage: controls.py place NAME [ROLE]   where the middle of the control is on the screen, "X Y"; fails without it
       controls.py text NAME           what the field holds
       controls.py walk WINDOW         one line for each control to be seen in the window of this title: role, name, value
"""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

PROGRAM = "Wendmark"

# What an author works with; the rest is decoration, or holds these.
CONTROLS = {Atspi.Role.PUSH_BUTTON, Atspi.Role.CHECK_BOX, Atspi.Role.RADIO_BUTTON, Atspi.Role.COMBO_BOX, Atspi.Role.TEXT,
            Atspi.Role.ENTRY, Atspi.Role.SPIN_BUTTON, Atspi.Role.TABLE, Atspi.Role.TREE, Atspi.Role.LIST,
            Atspi.Role.MENU_ITEM, Atspi.Role.MENU, Atspi.Role.PAGE_TAB, Atspi.Role.TABLE_CELL, Atspi.Role.TABLE_COLUMN_HEADER,
            Atspi.Role.DOCUMENT_WEB, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.PANEL}


def windows():
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(i)
        if program and program.get_name() == PROGRAM:
            for j in range(program.get_child_count()):
                window = program.get_child_at_index(j)
                if window:
                    yield window


def is_seen(control):
    states = control.get_state_set()
    return states.contains(Atspi.StateType.SHOWING) and states.contains(Atspi.StateType.VISIBLE)


def below(control):
    """The control and what it holds; not what a page of the web holds."""
    yield control
    if control.get_role() in (Atspi.Role.DOCUMENT_WEB, Atspi.Role.MENU):
        return
    for i in range(control.get_child_count()):
        child = control.get_child_at_index(i)
        if child:
            yield from below(child)


def value_of(control):
    if Atspi.Role.TEXT == control.get_role():
        return Atspi.Text.get_text(control, 0, -1)
    states = control.get_state_set()
    return "checked" if states.contains(Atspi.StateType.CHECKED) else ""


def find(name, role=None):
    for window in windows():
        for control in below(window):
            if control.get_name() == name and is_seen(control) and control.get_role() in CONTROLS:
                if role is None or control.get_role_name() == role:
                    return control
    sys.exit(f"no control {name}")


def place(name, role=None):
    area = Atspi.Component.get_extents(find(name, role), Atspi.CoordType.SCREEN)
    print(area.x + area.width // 2, area.y + area.height // 2)


def walk(title):
    for window in windows():
        if window.get_name() != title:
            continue
        for control in below(window):
            if control.get_role() in CONTROLS and is_seen(control):
                print(control.get_role_name(), control.get_name(), value_of(control).replace("\n", " "), sep="\t")


if __name__ == "__main__":
    actions = {"place": place, "text": lambda name: print(value_of(find(name))), "walk": walk}
    if len(sys.argv) < 3 or sys.argv[1] not in actions:
        sys.exit(__doc__)
    actions[sys.argv[1]](*sys.argv[2:])
