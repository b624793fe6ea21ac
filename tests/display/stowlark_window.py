"""Stowlark's window, seen as screen readers see it and driven with the keyboard of the X server."""

import contextlib
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib

PATIENCE = 60  # in s


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


def enable_accessibility():
    """What a desktop does when a screen reader starts."""
    value = GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True)))
    Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
        "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set", value, None, 0, -1)


def role_of(accessible):
    return accessible.get_role_name().removeprefix("push ")  # as older versions of the bus call a button


class Node:
    """One thing on the accessibility bus. What asks it raises GLib.Error if it is gone."""

    def __init__(self, accessible, depth):
        self.accessible = accessible
        self.depth = depth
        self.role = role_of(accessible)
        self.name = accessible.get_name()

    @property
    def description(self):
        return self.accessible.get_description()

    @property
    def states(self):
        return {state.value_nick for state in self.accessible.get_state_set().get_states()}

    @property
    def text(self):
        return Atspi.Text.get_text(self.accessible, 0, -1)

    def press(self):
        actions = [self.accessible.get_action_name(i) for i in range(self.accessible.get_n_actions())]
        self.accessible.do_action(actions.index("Press"))

    def centre(self):
        box = Atspi.Component.get_extents(self.accessible, Atspi.CoordType.SCREEN)
        return box.x + box.width // 2, box.y + box.height // 2

    def __str__(self):
        return f"{'  ' * self.depth}{self.role} “{self.name}” ({self.description}) {' '.join(sorted(self.states))}"


class StowlarkWindow:
    def __init__(self, *command, program=None):
        """Starts the command, unless there is the program already."""
        enable_accessibility()
        xdotool("mousemove", 0, 0)  # away from what reacts to it
        self.events = []  # of type, role, name
        self.listener = Atspi.EventListener.new(self._take)
        self.listener.register("object:state-changed:showing")
        self.listener.register("focus:")
        self.program = program or subprocess.Popen(command)

    def __enter__(self):
        self.application = self.wait("the program", self._on_the_bus)
        Atspi.Accessible.set_cache_mask(self.application, Atspi.Cache.NONE)
        self.wait("the window", lambda: self.node("frame", "Stowlark") and "active" in self.node("frame").states)
        return self

    def __exit__(self, failure, *_):
        if failure is None:
            xdotool("key", "alt+F4")
            code = self.program.wait(PATIENCE)
            assert code == 0, f"Stowlark ended with {code}"
        elif self.program.poll() is None:
            print(*self.nodes(), *self.events[-20:], sep="\n", file=sys.stderr)
            self.program.kill()
            self.program.wait()

    def _on_the_bus(self):
        desktop = Atspi.get_desktop(0)
        children = (desktop.get_child_at_index(i) for i in range(desktop.get_child_count()))
        return next((child for child in children if child and child.get_process_id() == self.program.pid), None)

    def _take(self, event):
        if event.type == "focus:" or event.detail1 == 1:
            with contextlib.suppress(GLib.Error):  # it is gone again
                self.events.append((event.type, role_of(event.source), event.source.get_name()))

    def nodes(self):
        """Everything of the program that is there, from the top."""
        return self._below(self.application, 0)

    def _below(self, accessible, depth):
        try:
            result = [Node(accessible, depth)]
            for i in range(accessible.get_child_count()):
                child = accessible.get_child_at_index(i)
                result += self._below(child, depth + 1) if child else []
            return result
        except GLib.Error:  # it is gone meanwhile
            return []

    def node(self, role, name=None):
        """The first that is to be seen, or None."""
        return next((node for node in self.nodes()
                     if node.role == role and name in (None, node.name) and "showing" in node.states), None)

    def find(self, role, name=None):
        return self.wait(f"{role} “{name}”", lambda: self.node(role, name))

    def names(self, role):
        return [node.name for node in self.nodes() if node.role == role]

    def expect_rows(self, names):
        self.wait(f"the rows {names}", lambda: sorted(self.names("list item")) == sorted(names))

    def focus_after(self, key):
        """Presses the key and returns the names of what got the focus, in order."""
        self.settle()
        before = len(self.events)
        def focused():
            return [name for type_, _, name in self.events[before:] if type_ == "focus:"]
        xdotool("key", key)
        self.wait("something else to get the focus by " + key, focused)
        self.settle()
        return focused()

    def settle(self):
        """Takes all events so far: the program sends them before it answers."""
        self.application.get_child_count()
        self.take_events()

    def spoken(self):
        """What was announced, in order."""
        return [name for type_, role, name in self.events if role == "notification"]

    def wait(self, what, condition):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            self.take_events()
            assert self.program.poll() is None, f"Stowlark ended with {self.program.returncode}"
            with contextlib.suppress(GLib.Error):  # what was asked is gone
                if result := condition():
                    return result
            time.sleep(0.02)
        raise AssertionError(f"Waited in vain for {what}")

    def take_events(self):
        while GLib.MainContext.default().iteration(False):
            pass

    def choose(self, dialog, path):
        """Types a path into the open panel."""
        field = self.wait(dialog, lambda: self.node("dialog", dialog) and next(
            (n for n in self.nodes() if n.role == "text" and "focused" in n.states), None))
        xdotool("type", path)
        self.wait("the path to be typed", lambda: field.text == str(path))
        xdotool("key", "Return")
        self.wait("the panel to close", lambda: not self.node("dialog", dialog))
