"""Files dragged with the pointer from another program: drag_and_drop_test.py STOWLARK

On X11; a compositor of Wayland that lets tests move its pointer is not to be had everywhere.
"""

import contextlib
import os
import pathlib
import subprocess
import sys

from stowlark_window import StowlarkWindow, xdotool

HOME = pathlib.Path(os.environ["HOME"])
FILES = ["Drop files & folders here", "Release to add files"]
ARCHIVES = ["Drop an archive here", "Release to select archive"]


class Drag:
    """From the press of the button over the source to its release."""

    def __init__(self, window, lines, type_="text/uri-list"):
        self.window = window
        self.said = HOME / "said"
        source = pathlib.Path(__file__).with_name("drag_source.py")
        with self.said.open("w") as output:
            self.source = subprocess.Popen([sys.executable, source, type_, *lines], stdout=output,
                                           env=os.environ | {"NO_AT_BRIDGE": "1"})

    def __enter__(self):
        self.expect("ready")
        xdotool("mousemove", 1150, 60, "mousedown", 1)
        self.move_until("the drag to begin", (1130, 80), lambda: "begun" in self.words())
        return self

    def __exit__(self, *_):
        xdotool("mouseup", 1)
        self.source.kill()
        self.source.wait()

    def words(self):
        return self.said.read_text().splitlines()

    def expect(self, word):
        self.window.wait(f"the source to say “{word}”", lambda: word in self.words())

    def move_until(self, what, place, condition):
        """A source and a target go on with the next move only."""
        x, y = place
        def moved():
            xdotool("mousemove", x, y, "mousemove", x + 1, y)
            return condition()
        self.window.wait(what, moved)

    def hover(self, zone, action="copy"):
        title, hover_title = zone
        node = self.window.node("label", title)
        self.move_until(hover_title, node.centre(), lambda: self.window.node("label", hover_title))
        self.expect(f"action {action}")

    def leave(self, zone):
        self.move_until(zone[0], (1000, 900), lambda: self.window.node("label", zone[0]))
        assert not self.window.node("label", zone[1])

    def drop(self):
        xdotool("mouseup", 1)
        self.expect("ended")
        assert "moved" not in self.words(), self.words()


def drop(window, zone, lines, **options):
    with Drag(window, lines) as drag:
        drag.hover(zone, **options)
        drag.drop()
        assert "failed" not in drag.words(), drag.words()
    window.find("label", zone[0])


def add(name):
    path = HOME / "files" / name
    path.parent.mkdir(exist_ok=True)
    path.write_text(name)
    return path


def files(window):
    several = [add(name) for name in ("a.txt", "two  words.txt", "100%41 #1?.txt", "ünïcödé 😀.txt", "tab\there;\\'.txt")]
    folder = HOME / "files/folder"
    folder.mkdir()
    with Drag(window, [path.as_uri() for path in several]) as drag:
        drag.hover(FILES)
        drag.leave(FILES)
        assert not window.names("list item")
        drag.hover(FILES)
        drag.drop()
    window.find("list", "5 items")
    assert window.find("list item", several[2].name).description.startswith(f"{HOME}/files, ")
    window.expect_rows([path.name for path in several])
    drop(window, FILES, [folder.as_uri() + "/", several[0].as_uri()])  # the second is there already
    window.expect_rows([path.name for path in several] + ["folder"])
    window.find("button", "Clear All").press()
    window.expect_rows([])
    return several


def what_is_no_file(window, file):
    """Not taken, which the next drag proves: it alone is in the list."""
    with Drag(window, ["just text"], "text/plain") as drag:
        for step in range(20):
            xdotool("mousemove", *(at + step for at in window.find("label", FILES[0]).centre()))
            assert not window.node("label", FILES[1])
        drag.drop()
        assert "failed" in drag.words() and "action copy" not in drag.words(), drag.words()
    drop(window, FILES, ["http://example.org/a.zip", f"file://otherhost{file}", "no address at all"])
    drop(window, FILES, [file.as_uri()])
    window.expect_rows([file.name])
    window.find("list", "1 item")


def asked_to_move(window, file):
    """With Shift the source asks for a move; the original stays all the same."""
    xdotool("keydown", "shift")
    with contextlib.ExitStack() as released:
        released.callback(xdotool, "keyup", "shift")
        drop(window, FILES, [file.as_uri()], action="move")
    window.expect_rows(["a.txt", file.name])


def archives(window, first, second):
    window.find("page tab", "Extract").press()
    drop(window, ARCHIVES, [first.as_uri(), second.as_uri()])
    window.find("button", f"Remove {second.name}")
    drop(window, ARCHIVES, ["http://example.org/a.zip", f"file://otherhost{first}"])
    assert window.node("button", f"Remove {second.name}")
    with Drag(window, [first.as_uri()]) as drag:
        drag.hover(ARCHIVES)
        drag.leave(ARCHIVES)
        drag.hover(ARCHIVES)
        drag.drop()
    window.find("button", f"Remove {first.name}")
    assert window.node("label", str(first.parent))


def main(program):
    with StowlarkWindow(program) as window:
        several = files(window)
        what_is_no_file(window, several[0])
        asked_to_move(window, several[1])
        archives(window, add("one.zip"), add("two.7z"))
        for path in several:
            assert path.read_text() == path.name


main(sys.argv[1])
