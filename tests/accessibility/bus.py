"""The terminal as a screen reader meets it: on a display and on buses of its own, asked by a client, moved by keys.

    bus.py TERMINAL

Each part is waited for before the next is started: the display, the bus of the session, the launcher of the accessibility
bus, and by the client the registry on that. Nothing is looked for on the machine's own buses. Ends with 77, which means
skipped, and tells why, where the machine has no X server, no bus or no client for it.
"""

import os
import shutil
import subprocess
import sys
import tempfile
from contextlib import ExitStack
from pathlib import Path

CLIENT = Path(__file__).resolve().parent / "client.py"
PYTHON = "/usr/bin/python3"  # the one that Debian's packages are for
LAUNCHER = Path("/usr/libexec/at-spi-bus-launcher")
REGISTRY = Path("/usr/libexec/at-spi2-registryd")
FOREIGN = ("DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "NO_AT_BRIDGE", "WAYLAND_DISPLAY", "DISPLAY")
SKIPPED = 77


def missing():
    """What the machine lacks; empty when it has all."""
    lacking = [tool for tool in ("Xvfb", "dbus-daemon", "xdotool", "xprop") if not shutil.which(tool)]
    if not (LAUNCHER.exists() and REGISTRY.exists()):
        lacking.append("at-spi2-core")
    if subprocess.run([PYTHON, "-c", "import pyatspi"], capture_output=True).returncode:
        lacking.append("python3-pyatspi")
    return ", ".join(lacking)


def start(stack, command, **more):
    """A process that ends with the stack."""
    process = subprocess.Popen(command, **more)
    stack.callback(process.wait)
    stack.callback(process.terminate)
    return process


def told_by(stack, command, **more):
    """Starts a server that tells on a descriptor, in the command as {}, how it is reached; answers that."""
    told, telling = os.pipe()
    start(stack, [word.format(telling) for word in command], pass_fds=[telling], **more)
    os.close(telling)
    with os.fdopen(told) as lines:
        line = lines.readline().strip()
    if not line:
        sys.exit(f"{command[0]} has not started")
    return line


def main():
    lacking = missing()
    if lacking:
        print(f"skipped: this machine lacks {lacking}")
        sys.exit(SKIPPED)
    with ExitStack() as stack:
        home = stack.enter_context(tempfile.TemporaryDirectory())
        os.mkdir(f"{home}/run", mode=0o700)
        around = {key: value for key, value in os.environ.items() if not key.startswith("XDG_") and key not in FOREIGN}
        around.update(HOME=home, XDG_RUNTIME_DIR=f"{home}/run", GIO_USE_VFS="local", GSETTINGS_BACKEND="memory",
                      QT_QPA_PLATFORM="xcb", QT_ACCESSIBILITY="1", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        around["DISPLAY"] = ":" + told_by(
            stack, ["Xvfb", "-displayfd", "{}", "-screen", "0", "1280x800x24", "-nolisten", "tcp"], stderr=subprocess.DEVNULL)
        around["DBUS_SESSION_BUS_ADDRESS"] = told_by(
            stack, ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address={}"], env=around)
        start(stack, [str(LAUNCHER), "--launch-immediately", "--a11y=1"], env=around)
        done = subprocess.run([PYTHON, "-B", str(CLIENT), str(REGISTRY), sys.argv[1]], env=around, timeout=600)
    sys.exit(done.returncode)


if __name__ == "__main__":
    main()
