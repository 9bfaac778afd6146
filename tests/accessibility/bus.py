"""The terminal as a screen reader meets it: started on a display of its own, asked over the accessibility bus, moved by keys.

    bus.py TERMINAL

Ends with 77, which means skipped, and tells why, where the machine has no X server, no bus or no client for it.
"""

import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

CLIENT = Path(__file__).resolve().parent / "client.py"
PYTHON = "/usr/bin/python3"  # the one that Debian's packages are for
SKIPPED = 77


def missing():
    """What the machine lacks; empty when it has all."""
    lacking = [tool for tool in ("Xvfb", "dbus-run-session", "xdotool") if not shutil.which(tool)]
    if not any(Path(folder, "at-spi-bus-launcher").exists() for folder in ("/usr/libexec", "/usr/lib/at-spi2-core")):
        lacking.append("at-spi2-core")
    if subprocess.run([PYTHON, "-c", "import pyatspi"], capture_output=True).returncode:
        lacking.append("python3-pyatspi")
    return ", ".join(lacking)


def display():
    """Starts an X server; answers it and the name of its display."""
    told, telling = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(telling), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
                              pass_fds=[telling], stderr=subprocess.DEVNULL)
    os.close(telling)
    with os.fdopen(told) as numbers:
        number = numbers.readline().strip()
    if not number:
        sys.exit("Xvfb has not started")
    return server, ":" + number


def main():
    lacking = missing()
    if lacking:
        print(f"skipped: this machine lacks {lacking}")
        sys.exit(SKIPPED)
    server, name = display()
    try:
        with tempfile.TemporaryDirectory() as home:
            os.mkdir(f"{home}/run", mode=0o700)
            environment = {key: value for key, value in os.environ.items()
                           if not key.startswith("XDG_") and key not in ("DBUS_SESSION_BUS_ADDRESS", "NO_AT_BRIDGE")}
            environment.update(DISPLAY=name, HOME=home, XDG_RUNTIME_DIR=f"{home}/run", QT_QPA_PLATFORM="xcb",
                               QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", GIO_USE_VFS="local")
            done = subprocess.run(["dbus-run-session", "--", PYTHON, "-B", str(CLIENT), sys.argv[1]], env=environment,
                                  timeout=600)
    finally:
        server.terminate()
        server.wait()
    sys.exit(done.returncode)


if __name__ == "__main__":
    main()
