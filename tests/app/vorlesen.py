# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# Prints what a screen reader gets from the active window of a program: a line with role, name, description and text of
# each accessible that is showing, "focus" at its end where it has the keyboard.
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

Atspi.set_timeout(10000, 30000)


def text_of(node):
    interface = node.get_text_iface()
    return Atspi.Text.get_text(interface, 0, -1) if interface else ""


def read(node):
    states = node.get_state_set()
    if not states.contains(Atspi.StateType.SHOWING):
        return
    fields = [node.get_role_name(), node.get_name(), node.get_description(), text_of(node)]
    fields.append("focus" if states.contains(Atspi.StateType.FOCUSED) else "")
    print("\t".join(" ".join((field or "").split()) for field in fields))
    for i in range(min(node.get_child_count(), 200)):
        child = node.get_child_at_index(i)
        if child:
            read(child)


desktop = Atspi.get_desktop(0)
for i in range(desktop.get_child_count()):
    application = desktop.get_child_at_index(i)
    if application and application.get_name() == sys.argv[1]:
        for j in range(application.get_child_count()):
            window = application.get_child_at_index(j)
            if window and window.get_state_set().contains(Atspi.StateType.ACTIVE):
                read(window)
