"""What a wall of 16 views costs while a full market comes from a server, and how late a change is on the screen.

    python3 bench/feed.py build/bench [SECONDS] [VIEWS] [BURST]

The server is started on a free loopback port by setup/servers, and ends with the script.
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

SERVERS = Path(__file__).resolve().parents[1] / "setup/servers"


def main():
    build = Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o755)  # the user postgres goes through it
        place = Path(folder) / "servers"
        said = subprocess.run([SERVERS, "start", place, "--no-feed", "--programs", build / "bin"], check=True, text=True,
                              stdout=subprocess.PIPE)
        try:
            words = said.stdout.replace("\\\n", "").split()
            secrets = {"TIMESHARE_FEED_CREDENTIALS": words[0].split("=", 1)[1], "PUBLISHER_CREDENTIALS": str(place / "secrets/nats-feed")}
            sys.exit(subprocess.run([build / "bin/timeshare_wall_bench", words[4], *sys.argv[2:]], check=False,
                                    env={**os.environ, **secrets, "HOME": folder}).returncode)
        finally:
            subprocess.run([SERVERS, "stop", place], check=True)


if __name__ == "__main__":
    main()
