"""Other programs reach Stowlark: a second start, the session bus, its menus and keys."""

import os
import pathlib
import signal
import subprocess
import sys
import time
import zipfile

from gi.repository import Gio, GLib

from stowlark_window import StowlarkWindow, xdotool

HOME = pathlib.Path(os.environ["HOME"])
ID = os.environ["STOWLARK_ID"]
PATH = "/" + ID.replace(".", "/")
STANDARD = "org.freedesktop.Application"


def call(method, signature, *arguments, interface=STANDARD):
    return Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
        ID, PATH, interface, method, GLib.Variant(signature, arguments), None, Gio.DBusCallFlags.NO_AUTO_START, -1)


def start_again(program, *arguments, **options):
    """A later start hands over and leaves at once."""
    begin = time.monotonic()
    result = subprocess.run([program, *arguments], capture_output=True, text=True, timeout=60, **options)
    print(f"a second start took {time.monotonic() - begin:.2f} s")
    assert result.returncode == 0, result


def expect_archive(window, path):
    window.find("label", path.name)
    window.find("label", str(path.parent))


def hand_over(window, program, archives):
    (HOME / "sub").mkdir()
    start_again(program, "zip 1.zip", "../zip 1.zip", cwd=HOME / "sub")
    expect_archive(window, archives[1])  # the last
    start_again(program, "--extract-files", archives[2], archives[0])
    expect_archive(window, archives[2])  # the first
    start_again(program, "--compress")
    window.find("button", "Create Archive")
    call("Open", "(asa{sv})", [a.as_uri() for a in archives] + ["http://x.example/", "x", ""], {})
    expect_archive(window, archives[-1])
    call("extractFiles", "(as)", ["text", archives[0].as_uri(), archives[1].as_uri()], interface=ID)
    expect_archive(window, archives[0])


def bad_input(window, archives):
    """Is ignored, or answered with an error."""
    none = ["", "x", "./zip", "/tmp", "http://x.example/x.zip", "file:", "file://elsewhere.example/x.zip", "file:///%00"]
    for uris in [[], none, none * 1250]:
        call("extractFiles", "(as)", uris, interface=ID)
        call("Open", "(asa{sv})", uris, {})
    call("Activate", "(a{sv})", {"activation-token": GLib.Variant("as", ["?"])})
    call("Activate", "(a{sv})", {"activation-token": GLib.Variant("s", "?" * 200000)})
    call("Open", "(asa{sv})", ["http://x.example/\nfile:///injected"], {})
    call("ActivateAction", "(sava{sv})", "unknown", [GLib.Variant("s", "?")], {})
    for method, signature, arguments in [("Open", "(s)", ["x"]), ("Nothing", "()", [])]:
        try:
            call(method, signature, *arguments)
        except GLib.Error:
            continue
        raise AssertionError(f"no error from {method}")
    time.sleep(0.5)  # a file would have been handed over by now
    assert window.node("label", archives[0].name)
    call("Open", "(asa{sv})", ["file:///gone/%FF.zip"], {})
    window.find("label", "/gone")
    call("Open", "(asa{sv})", [archives[0].as_uri()] * 10000, {})
    expect_archive(window, archives[0])


def comes_to_the_front(window):
    other = subprocess.Popen(["xdotool", "search", "--sync", "--name", "^In front$"], stdout=subprocess.PIPE)
    front = subprocess.Popen([sys.executable, "-c", "import gi; gi.require_version('Gtk', '3.0')\n"
                              "from gi.repository import Gtk\n"
                              "w = Gtk.Window(title='In front'); w.fullscreen(); w.show_all(); Gtk.main()"])
    try:
        other.communicate(timeout=60)
        window.wait("the other window", lambda: "active" not in window.node("frame", "Stowlark").states)
        call("Activate", "(a{sv})", {})
        window.wait("Stowlark in front", lambda: "active" in window.node("frame", "Stowlark").states)
    finally:
        front.kill()
        front.wait()


def shows_in_the_file_manager(window, folder):
    """Asks the file manager on the bus; where there is none, the folder that holds it is opened."""
    opener = HOME / "bin/xdg-open"
    opener.parent.mkdir()
    opener.write_text(f"#!/bin/sh\necho \"$1\" >{HOME}/opened\n")
    opener.chmod(0o755)
    window.find("button", "Show in Finder").press()
    opened = HOME / "opened"
    window.wait("the folder to be opened", lambda: opened.exists() and opened.read_text() == f"file://{HOME}\n")

    interface = "org.freedesktop.FileManager1"
    calls = []
    def answer(_connection, _sender, _path, _interface, _method, arguments, invocation):
        calls.append(arguments.unpack())
        invocation.return_value(None)
    description = Gio.DBusNodeInfo.new_for_xml(
        f"<node><interface name='{interface}'><method name='ShowItems'>"
        "<arg type='as' direction='in'/><arg type='s' direction='in'/></method></interface></node>")
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    bus.register_object("/org/freedesktop/FileManager1", description.interfaces[0], answer, None, None)
    name = Gio.bus_own_name_on_connection(bus, interface, Gio.BusNameOwnerFlags.NONE, None, None)
    window.find("button", "Show in Finder").press()
    window.wait("the item to be shown", lambda: calls == [([folder.as_uri()], "")])
    Gio.bus_unown_name(name)


def menus(window):
    call("ActivateAction", "(sava{sv})", "compress", [], {})
    xdotool("key", "ctrl+question")
    window.find("dialog", "Stowlark Help")
    xdotool("key", "Escape")
    window.wait("no sheet", lambda: not window.node("dialog"))
    xdotool("key", "F10")
    window.find("menu item", "Check for Updates…")
    xdotool("key", "Right")
    window.find("menu item", "Stowlark Help")
    xdotool("key", "Escape", "F10")
    window.find("menu item", "Check for Updates…")
    xdotool("key", "Return")  # the first of the menu
    window.find("dialog", "About Stowlark")
    xdotool("key", "F1")
    window.find("dialog", "Stowlark Help")
    assert not window.node("dialog", "About Stowlark")
    xdotool("key", "Escape")
    window.wait("no sheet", lambda: not window.node("dialog"))
    xdotool("key", "alt+h")
    window.find("menu item", f"Visit {os.environ['STOWLARK_SITE']}")
    xdotool("key", "Escape")


def waits_before_it_quits(window, program, slow):
    """Quitting waits for the operation; who asks for the window meanwhile keeps it."""
    start_again(program, slow)
    expect_archive(window, slow)
    xdotool("key", "ctrl+Return", "ctrl+q")
    window.find("button", "Don’t Quit")
    call("Activate", "(a{sv})", {})
    window.wait("no note", lambda: not window.node("button", "Don’t Quit"))
    window.wait("the outcome", lambda: f"Extracted to: {slow.stem}/" in window.spoken())


def stopped(window, program, archives):
    """A later start leaves also while the program does not answer; that gets the file once it goes on."""
    window.program.send_signal(signal.SIGSTOP)
    start_again(program, "--extract-files", archives[3], env=dict(os.environ, XDG_ACTIVATION_TOKEN="token"))
    window.program.send_signal(signal.SIGCONT)
    expect_archive(window, archives[3])


def without_a_bus(program):
    environment = dict(os.environ, DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")
    with subprocess.Popen([program, "--extract"], env=environment) as alone:
        window = subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--pid", str(alone.pid)],
                                capture_output=True, text=True, timeout=60, check=True).stdout.split()[-1]
        xdotool("windowfocus", "--sync", window, "key", "ctrl+q")
        assert alone.wait(60) == 0


def main(program):
    archives = [HOME / f"zip {i}.zip" for i in range(4)]
    for archive in archives:
        with zipfile.ZipFile(archive, "w") as file:
            file.writestr("inside.txt", archive.name)
    slow = HOME / "slow.zip"
    with zipfile.ZipFile(slow, "w", zipfile.ZIP_DEFLATED, compresslevel=1) as file:
        file.writestr("zeros", bytes(300_000_000))
    os.environ["PATH"] = f"{HOME / 'bin'}:{os.environ['PATH']}"
    without_a_bus(program)
    with StowlarkWindow(program) as window:
        hand_over(window, program, archives)
        bad_input(window, archives)
        comes_to_the_front(window)
        call("Open", "(asa{sv})", [archives[2].as_uri()], {})
        expect_archive(window, archives[2])
        xdotool("key", "ctrl+Return")
        window.wait("the outcome", lambda: "Extracted to: zip 2/" in window.spoken())
        shows_in_the_file_manager(window, HOME / "zip 2")
        menus(window)
        stopped(window, program, archives)
        waits_before_it_quits(window, program, slow)
    assert (HOME / "zip 2/inside.txt").read_text() == "zip 2.zip"


main(sys.argv[1])
