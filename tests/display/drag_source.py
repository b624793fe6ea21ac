"""A window to drag from, as file managers are: drag_source.py TYPE LINE... offers the lines, to copy or to move.

Prints "ready" when it is there, "begun", "action NAME" each time what is under the pointer answers otherwise, "moved"
if it is to remove the originals, "failed" if the drop was refused, and "ended".
"""

import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk


def say(*words):
    print(*words, flush=True)


def begin(_, context):
    context.connect("action-changed", lambda _, action: say("action", action.first_value_nick or "none"))
    say("begun")


def main(type_, lines):
    data = "".join(line + "\r\n" for line in lines).encode()
    window = Gtk.Window(type=Gtk.WindowType.POPUP)
    window.move(1100, 10)
    window.set_default_size(100, 100)
    window.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [Gtk.TargetEntry.new(type_, 0, 0)],
                           Gdk.DragAction.COPY | Gdk.DragAction.MOVE)
    window.connect("drag-begin", begin)
    window.connect("drag-data-get", lambda _, __, answer, *___: answer.set(answer.get_target(), 8, data))
    window.connect("drag-data-delete", lambda *_: say("moved"))
    window.connect("drag-failed", lambda *_: say("failed"))
    window.connect("drag-end", lambda *_: say("ended"))
    window.connect("map-event", lambda *_: say("ready"))
    window.show()
    Gtk.main()


main(sys.argv[1], sys.argv[2:])
