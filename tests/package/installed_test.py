"""What a desktop does with the installed program: installed_test.py DESKTOP-ENTRY"""

import contextlib
import os
import pathlib
import runpy
import signal
import subprocess
import sys
import time
import zipfile

import gi
from gi.repository import Gio, GLib
from stowlark_window import PATIENCE, StowlarkWindow, xdotool

HOME = pathlib.Path(os.environ["HOME"])
ENTRY = pathlib.Path(sys.argv[1])
ID = ENTRY.stem
MENUS = [("Nautilus", "4.0", "nautilus-python", "get_file_items"), ("Caja", "2.0", "caja-python", "get_file_items"),
         ("Thunarx", "3.0", "thunarx-python", "get_file_menu_items")]


def call(interface, method, arguments, name=ID, path="/" + ID.replace(".", "/")):
    return Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
        name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, PATIENCE * 1000)


def wait(what, condition):
    end = time.monotonic() + PATIENCE
    while not (result := condition()):
        assert time.monotonic() < end, f"Waited in vain for {what}"
        time.sleep(0.02)
    return result


class Activated:
    """What the session bus started, seen as a Popen."""

    returncode = None

    def __init__(self):
        self.pid = wait("the name on the bus", self._owner)

    def _owner(self):
        bus = "org.freedesktop.DBus"
        with contextlib.suppress(GLib.Error):  # nobody yet
            return call(bus, "GetConnectionUnixProcessID", GLib.Variant("(s)", (ID,)), bus, "/org/freedesktop/DBus")[0]

    def poll(self):
        return None if pathlib.Path(f"/proc/{self.pid}").exists() else 0

    def wait(self, _=None):
        wait("the end", lambda: self.poll() == 0)
        return 0

    def kill(self):
        os.kill(self.pid, signal.SIGKILL)


class File:
    """A file as file managers tell extensions of it."""

    def __init__(self, address):
        self.address = address

    def get_uri(self):
        return self.address

    def is_directory(self):
        return self.address.endswith("/")


def archive(name):
    path = HOME / name
    with zipfile.ZipFile(path, "w") as file:
        file.writestr("inside.txt", name)
    return path


def extract(window, path):
    window.find("label", path.name)
    window.find("button", "Extract Archive").press()
    window.wait("the outcome", lambda: f"Extracted to: {path.stem}/" in window.spoken())
    assert (path.with_suffix("") / "inside.txt").read_text() == path.name


def quit_by_key(window):
    window.settle()
    xdotool("key", "ctrl+q")
    assert window.program.wait(PATIENCE) == 0


def context_menus(window):
    for interface, version, folder, method in MENUS:
        if version not in gi.Repository.get_default().enumerate_versions(interface):
            print(f"gir1.2-{interface.lower()}-{version} is not installed: its menu is left out")
            continue
        gi.require_version(interface, version)
        extension = runpy.run_path(f"/usr/share/{folder}/extensions/stowlark.py", run_name=folder)
        menu = getattr(extension["StowlarkMenu"](), method)
        for other in ("file:///a.txt", "sftp://host/a.zip", "file:///a.zip/"):
            assert menu(None, [File("file:///a.zip"), File(other)]) == [], other
        assert menu(None, []) == []
        path = archive(f"{folder} ü.ZIP")
        item, = menu(None, [File(path.as_uri())])
        assert item.get_property("label") == "Extract with Stowlark"
        item.emit("activate")
        extract(window, path)


def main():
    with StowlarkWindow("stowlark", archive("command line.zip")) as window:
        extract(window, HOME / "command line.zip")
        quit_by_key(window)

    subprocess.run(["gio", "mime", "application/zip", ENTRY.name], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["gio", "open", archive("desktop entry.zip")], check=True)
    with StowlarkWindow(program=Activated()) as window:
        extract(window, HOME / "desktop entry.zip")
        addresses = [archive(f"{n}.zip").as_uri() for n in (1, 2)]
        call("org.freedesktop.Application", "Open", GLib.Variant("(asa{sv})", (addresses, {})))
        extract(window, HOME / "2.zip")
        call(ID, "extractFiles", GLib.Variant("(as)", (addresses,)))
        extract(window, HOME / "1.zip")
        context_menus(window)
        quit_by_key(window)


main()
