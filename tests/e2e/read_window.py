#!/usr/bin/python3
"""Prints what a screen reader finds in the windows of a program, as JSON; or presses what has a name there.

Usage: read_window.py PROGRAM             one object for each element that shows, in reading order
       read_window.py PROGRAM press NAME  does what a screen reader's user does with the element
"""
import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


def program_named(name):
    desktop = Atspi.get_desktop(0)
    for place in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(place)
        if program is not None and program.get_name() == name:
            return program
    return None


def elements(element):
    """Those that show, depth first."""
    states = element.get_state_set()
    if element.get_role() != Atspi.Role.APPLICATION and not states.contains(Atspi.StateType.SHOWING):
        return
    yield element
    for place in range(element.get_child_count()):
        child = element.get_child_at_index(place)
        if child is not None:
            yield from elements(child)


def described(element):
    box = element.get_extents(Atspi.CoordType.SCREEN) if element.get_component_iface() else None
    value = element.get_value_iface()
    return {"name": element.get_name() or "",
            "description": element.get_description() or "",
            "role": element.get_role_name(),
            "states": [state.value_nick for state in element.get_state_set().get_states()],
            "value": value.get_current_value() if value else None,
            "box": [box.x, box.y, box.width, box.height] if box else None}


def pressed(element):
    action = element.get_action_iface()
    for place in range(action.get_n_actions() if action else 0):
        if action.get_action_name(place) in ("Press", "press"):
            return action.do_action(place)
    return False


def main():
    program = program_named(sys.argv[1])
    if program is None:
        print("[]")
        return 1
    if sys.argv[2:3] == ["press"]:
        return 0 if any(element.get_name() == sys.argv[3] and pressed(element) for element in elements(program)) else 1
    try:
        print(json.dumps([described(element) for element in elements(program)]))
    except GLib.Error as error:  # it changed while it was read
        print(error, file=sys.stderr)
        print("[]")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
