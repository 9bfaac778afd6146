"""Loads one day of many instruments into a PostgreSQL server of its own, and reads days of it as a terminal does.

    python3 bench/history.py build/release [INSTRUMENTS]

The server is started on a free loopback port, as the user postgres where this one is root, and ends with the script.
"""

import glob
import os
import random
import shutil
import socket
import subprocess
import sys
import tempfile
import time

PASSWORD = "only-of-this-run"
DATE = "2025-11-21"


def programs():
    folders = sorted(glob.glob("/usr/lib/postgresql/*/bin"))
    if not folders:
        sys.exit("bench/history.py: postgresql is not installed")
    return folders[-1]


def as_server(command):
    return ["setpriv", "--reuid=postgres", "--regid=postgres", "--init-groups"] + command if os.getuid() == 0 else command


def free_port():
    with socket.socket() as listening:
        listening.bind(("127.0.0.1", 0))
        return listening.getsockname()[1]


def give(path):
    if os.getuid() == 0:
        shutil.chown(path, "postgres", "postgres")


def start(folder, port):
    give(folder)
    secret = os.path.join(folder, "secret")
    with open(secret, "w", encoding="utf-8") as file:
        file.write(PASSWORD)
    give(secret)
    data = os.path.join(folder, "data")
    quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    subprocess.run(as_server([f"{programs()}/initdb", "-D", data, "-U", "owner", "-A", "scram-sha-256", "--pwfile", secret]),
                   check=True, **quiet)
    server = subprocess.Popen(as_server([f"{programs()}/postgres", "-D", data, "-p", str(port), "-h", "127.0.0.1", "-k", "",
                                         "-c", "shared_buffers=256MB", "-c", "max_wal_size=2GB"]), **quiet)
    while subprocess.run([f"{programs()}/pg_isready", "-q", "-h", "127.0.0.1", "-p", str(port)], check=False).returncode != 0:
        time.sleep(0.1)  # until it listens
    return server


def write_day(path, instruments):
    """Minute bars of a share's day, by instruments."""
    chance = random.Random(20251121)
    minutes = [(571 + i if i < 120 else 781 + i - 120) for i in range(240)]
    with open(path, "w", encoding="utf-8") as file:
        file.write("datetime,code,open,high,low,close,volume,amount\n")
        for number in range(instruments):
            price = chance.randrange(300, 30000)
            for minute in minutes:
                price = max(100, price + chance.randrange(-3, 4))
                volume = 100 * chance.randrange(1, 500)
                file.write(f"{DATE} {minute // 60:02}:{minute % 60:02}:00,{600000 + number}.XSHG,{price / 100},"
                           f"{(price + 2) / 100},{(price - 2) / 100},{price / 100},{volume},{price * volume / 100}\n")


def main():
    build = sys.argv[1]
    instruments = int(sys.argv[2]) if len(sys.argv) > 2 else 5000
    port = free_port()
    os.environ["TIMESHARE_HISTORY_PASSWORD"] = PASSWORD
    url = f"postgres://owner@127.0.0.1:{port}/postgres"
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o755)
        inner = os.path.join(folder, "server")
        os.mkdir(inner)
        server = start(inner, port)
        try:
            day = os.path.join(folder, "day.csv")
            write_day(day, instruments)
            for what in ("loaded", "loaded again"):
                began = time.monotonic()
                subprocess.run([f"{build}/bin/timeshare-load", "--history", url, day], check=True, stdout=subprocess.DEVNULL)
                print(f"{instruments * 240} bars {what} in {time.monotonic() - began:.1f} s", flush=True)
            subprocess.run([f"{build}/bin/timeshare_history_bench", url, str(min(instruments, 200))], check=True)
        finally:
            server.terminate()
            server.wait()


if __name__ == "__main__":
    main()
