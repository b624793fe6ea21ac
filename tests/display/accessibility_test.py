"""What a screen reader is told, and everything done with the keyboard: accessibility_test.py STOWLARK"""

import os
import pathlib
import sys
import zipfile

from stowlark_window import StowlarkWindow, xdotool

HOME = pathlib.Path(os.environ["HOME"])
CONTROLS = {"button", "link", "page tab", "combo box", "text", "list", "list item"}
PLAIN = {"application", "frame", "page tab list", "label", "heading", "notification", "menu bar", "menu item"}
HEADER = ["by ", "Compress", "Extract"]
COMPRESS = ["Browse Files…", "Format", "Compression", "Archive Name", "Change the folder to save to"]
EXTRACT = ["Browse Archive…", "Change the folder to extract to"]


def check(found, expected):
    assert found == expected, f"\nfound    {found}\nexpected {expected}"


def check_roles(window):
    assert window.node("link").name.startswith("by ")
    for node in window.nodes():
        if "showing" in node.states and node.role != "filler":  # what newer versions of Qt put around the content
            assert node.role in CONTROLS | PLAIN and node.name, node
            if "sensitive" in node.states:
                assert node.role in PLAIN | {"list item"} or "focusable" in node.states, node


def check_walk(window, expected):
    """Tab goes round through everything in this order, from wherever it is, and Shift+Tab back."""
    names = [name[:3] if name.startswith("by ") else name  # the site differs
             for _ in expected for name in window.focus_after("Tab")]
    first = names.index(expected[0])
    check(names[first:] + names[:first], expected)
    check(window.focus_after("shift+Tab"), names[-2:-1])


def walk_to(window, name):
    for _ in range(20):
        if name in window.focus_after("Tab"):
            return
    raise AssertionError(f"Tab does not come to “{name}”")


def compress_pane(window):
    check_roles(window)
    check([node.name for node in window.nodes() if "selected" in node.states], ["Compress"])
    check(window.find("text", "Archive Name").text, "archive")
    check([window.find("combo box", name).description for name in ("Format", "Compression")], ["ZIP", "Normal"])
    check(window.names("heading")[:2], ["Settings", "Output"])
    labels = {"Stowlark", "Drop files & folders here", "Format", "Archive Name", ".zip", "Save To", str(HOME)}
    assert labels <= set(window.names("label")), window.names("label")
    check(window.find("button", "Create Archive").description, "Not available now")
    check_walk(window, HEADER + COMPRESS)


def browse(window, files):
    """Return, Space and Ctrl+O open the panel; Escape closes it."""
    walk_to(window, "Browse Files…")
    for key in ("Return", "space"):
        xdotool("key", key)
        window.find("dialog", "Add Files and Folders")
        xdotool("key", "Escape")
        window.wait("the panel to close", lambda: not window.node("dialog"))
    for file in files:
        window.wait("the window to be active", lambda: "active" in window.find("frame").states)
        xdotool("key", "ctrl+o")
        window.choose("Add Files and Folders", file)
    window.find("list", "3 items")
    window.expect_rows(["a.txt", "b.txt", "folder"])
    assert {f"Remove {file.name}" for file in files} <= set(window.names("button"))
    check_roles(window)


def rows(window):
    walk_to(window, "3 items")
    check([window.focus_after(key) for key in ("Down", "Down", "Up")], [["b.txt"], ["folder"], ["b.txt"]])
    check(window.focus_after("Delete"), ["folder"])
    window.find("list", "2 items")
    window.expect_rows(["a.txt", "folder"])


def pickers(window):
    walk_to(window, "Format")
    window.find("combo box", "Compression").press()
    window.find("list item", "Best (Slow)").press()
    window.wait("another level", lambda: window.find("combo box", "Compression").description == "Best (Slow)")
    xdotool("key", "Down")
    window.wait("another format", lambda: window.find("combo box", "Format").description == "TAR.GZ")
    window.find("label", ".tar.gz")
    check(window.focus_after("space"), ["TAR.GZ"])
    check(window.focus_after("Up"), ["ZIP"])
    xdotool("key", "Return")
    window.wait("the first format", lambda: window.find("combo box", "Format").description == "ZIP")
    for key in ("Return", "alt+Down"):
        check(window.focus_after(key), ["ZIP"])
        xdotool("key", "Escape")
        window.wait("the list to close", lambda: not window.node("list item", "ZIP"))


def create(window):
    spoken = len(window.spoken())
    walk_to(window, "Create Archive")
    check(window.find("button", "Create Archive").description, "")
    check(window.focus_after("KP_Enter"), ["Create Archive"])  # again, when it is done
    window.wait("the outcome", lambda: len(window.spoken()) == spoken + 2)
    check(window.spoken()[-1], "Archive created: archive.zip")
    window.find("button", "Show in Finder")
    xdotool("key", "ctrl+Return")  # the same again
    window.wait("the outcome", lambda: len(window.spoken()) == spoken + 4)


def extract(window, archive):
    xdotool("key", "ctrl+2")
    window.find("button", "Browse Archive…")
    check([node.name for node in window.nodes() if "selected" in node.states], ["Extract"])
    assert not window.node("notification")
    xdotool("key", "ctrl+o")
    window.choose("Choose an Archive", archive)
    window.find("label", archive.name)
    check_roles(window)
    spoken = len(window.spoken())
    walk_to(window, f"Remove {archive.name}")
    xdotool("key", "ctrl+Return")
    window.wait("the outcome", lambda: len(window.spoken()) == spoken + 2)
    check(window.spoken()[-1], "Extracted to: archive/")
    xdotool("key", "space")
    window.wait("no archive", lambda: not window.node("label", archive.name))
    check_walk(window, HEADER + EXTRACT)
    window.find("page tab", "Compress").press()
    window.find("button", "Create Archive")


def main(program):
    (HOME / "folder").mkdir()
    files = [HOME / "a.txt", HOME / "b.txt", HOME / "folder"]
    files[0].write_text("first")
    files[1].write_text("second")
    (HOME / "folder/inside.bin").write_bytes(bytes(range(256)))
    with StowlarkWindow(program) as window:
        compress_pane(window)
        browse(window, files)
        rows(window)
        pickers(window)
        create(window)
        check(sorted(zipfile.ZipFile(HOME / "archive.zip").namelist()), ["a.txt", "folder/", "folder/inside.bin"])
        extract(window, HOME / "archive.zip")
    check((HOME / "archive/a.txt").read_text(), "first")
    check((HOME / "archive/folder/inside.bin").read_bytes(), bytes(range(256)))
    assert not (HOME / "archive/b.txt").exists()


main(sys.argv[1])
