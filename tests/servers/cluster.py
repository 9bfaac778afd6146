"""A cluster of three NATS servers as the documents tell it, with a feed and terminals over it: the server that leads the stream is
killed, then its follower, then two at once, and nothing is lost or doubled.

    cluster.py PROGRAMS

PROGRAMS is the folder with timeshare-feed and timeshare_desk.
"""

import json
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import urllib.request
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "bench"))
from desks import FeedLog, Terminal, differences, wait_for  # noqa: E402

EXAMPLE = ROOT / "setup/systemd/nats.conf.example"
CLUSTER = """server_name: {name}
cluster {{
  name: market
  listen: "{listen}"
  authorization {{ user: route, password: "change-this" }}
  routes: {routes}
}}
"""
PACE = 20
INSTRUMENTS = 6
LAST_WAIT = 60.0  # seconds for what was sent last
STEP = 1  # seconds between places in the feed's log


def free_ports(count):
    sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(count)]
    ports = [each.getsockname()[1] for each in sockets]
    for each in sockets:
        each.close()
    return ports


class Server:
    """One of the three, with its folder and its ports."""

    def __init__(self, folder, number, routes):
        self.name = f"market-{number + 1}"
        self.port, self.monitor = free_ports(2)
        self.log = folder / f"{self.name}.log"
        self.config = folder / f"{self.name}.conf"
        lines = [line for line in EXAMPLE.read_text(encoding="utf-8").splitlines() if not line.startswith("server_name:")]
        text = "\n".join(lines).replace("0.0.0.0:4222", f"127.0.0.1:{self.port}").replace("/var/lib/timeshare-nats", str(folder / self.name))
        assert str(self.port) in text and str(folder) in text, "the example is another"
        self.config.write_text(text + "\n" + CLUSTER.format(name=self.name, listen=routes[number],
                                                             routes=json.dumps([f"nats://route:change-this@{route}" for route in routes])),
                               encoding="utf-8")
        self.process = None

    def start(self):
        program = shutil.which("nats-server", path=os.pathsep.join([os.environ.get("PATH", ""), "/usr/sbin", "/usr/local/bin"]))
        with open(self.log, "ab") as log:
            self.process = subprocess.Popen([program, "-c", self.config, "-m", str(self.monitor)], stdin=subprocess.DEVNULL, stdout=log,
                                            stderr=subprocess.STDOUT)

    def end(self, how):
        self.process.send_signal(how)
        self.process.wait()

    def stream(self):
        """How it sees the cluster of the stream; nothing while it sees none."""
        try:
            with urllib.request.urlopen(f"http://127.0.0.1:{self.monitor}/jsz?streams=true", timeout=10) as answer:
                accounts = json.load(answer).get("account_details") or []
        except OSError:
            return {}
        found = [stream.get("cluster", {}) for account in accounts for stream in account.get("stream_detail") or [] if stream["name"] == "MINUTES"]
        return found[0] if found else {}


class Cluster:
    def __init__(self, folder):
        routes = [f"127.0.0.1:{port}" for port in free_ports(3)]
        self.servers = [Server(folder, number, routes) for number in range(3)]
        for server in self.servers:
            server.start()

    def urls(self, first=0):
        """The address of all, that of a server in front."""
        return ",".join(f"nats://127.0.0.1:{server.port}" for server in self.servers[first:] + self.servers[:first])

    def leader(self):
        """The server that leads the stream, when all that run agree on it and have what it has."""
        running = [server for server in self.servers if server.process.poll() is None]
        seen = [server.stream() for server in running]
        leaders = {stream.get("leader") for stream in seen}
        leader = [server for server in running if {server.name} == leaders]
        if not leader:
            return None
        copies = leader[0].stream().get("replicas") or []
        current = [copy for copy in copies if copy.get("current") and not copy.get("offline")]
        return leader[0] if len(current) == len(running) - 1 else None

    def end(self):
        for server in self.servers:
            if server.process.poll() is None:
                server.end(signal.SIGTERM)


def start_feed(programs, folder, cluster):
    secret = folder / "feed-credentials"
    secret.write_text("user=feed\npassword=change-this\n", encoding="utf-8")
    with open(folder / "feed.log", "ab") as log:
        return subprocess.Popen([programs / "timeshare-feed", "--server", cluster.urls(), "--copies", "3", "--store", folder / "feed.db",
                                 "--log", folder / "sums", "--start", "13:00", "--pace", str(PACE)],
                                stdin=subprocess.DEVNULL, stdout=log, stderr=subprocess.STDOUT,
                                env={**os.environ, "TIMESHARE_FEED_CREDENTIALS": str(secret)})


def wait_for_market(cluster, terminals, log):
    """It goes on, and all see all of it; the seconds until each."""
    begun = time.monotonic()
    further = log.place() + STEP * 1000 * PACE
    wait_for("the market to go on", lambda: log.place() > further)
    market = time.monotonic() - begun
    wait_for("the terminals", lambda: all(terminal.is_whole() for terminal in terminals))
    seen = time.monotonic() - begun
    wait_for("a leader whom all follow", cluster.leader)
    return market, seen


def kill(cluster, terminals, log, what, servers):
    for server in servers:
        server.end(signal.SIGKILL)
    if len(servers) > 1:  # one alone decides nothing
        wait_for("the terminals to miss the market", lambda: not any(terminal.is_whole() for terminal in terminals))
        servers.pop().start()
    market, seen = wait_for_market(cluster, terminals, log)
    print(f"{what} killed: the market went on after {market:.1f} s, all terminals had it after {seen:.1f} s", flush=True)
    for server in servers:
        server.start()
    wait_for_market(cluster, terminals, log)


def session(programs, folder):
    cluster = Cluster(folder)
    log = FeedLog(folder / "sums")
    secret = folder / "terminal-credentials"
    secret.write_text("user=terminal\npassword=change-this-too\n", encoding="utf-8")
    terminals = []

    def add_terminal(number):
        terminals.append(Terminal(programs, folder / f"terminal-{number}", (cluster.urls(number % 3), ""), INSTRUMENTS,
                                  {"TIMESHARE_FEED_CREDENTIALS": str(secret)}))

    feed = start_feed(programs, folder, cluster)
    try:
        for number in range(3):
            add_terminal(number)
        wait_for_market(cluster, terminals, log)
        leader = cluster.leader()
        kill(cluster, terminals, log, "the leader", [leader])
        add_terminal(len(terminals))
        kill(cluster, terminals, log, "the next leader", [cluster.leader()])
        leader = cluster.leader()
        kill(cluster, terminals, log, "the leader and another", [leader, next(each for each in cluster.servers if each is not leader)])
        add_terminal(len(terminals))
        wait_for_market(cluster, terminals, log)
        further = log.place() + 2 * 60000  # the minute that runs now is over, and the last terminal has heard it
        wait_for("two more minutes", lambda: log.place() > further)
        feed.send_signal(signal.SIGTERM)
        assert feed.wait() == 0, (folder / "feed.log").read_text(encoding="utf-8")
        end = time.monotonic() + LAST_WAIT
        while (wrong := differences(terminals, log)) and time.monotonic() < end:
            time.sleep(0.5)
        told = sum(int(words[3]) for words in terminals[0].ask("sums"))
        assert not wrong, "\n".join(wrong[:20])
        assert told > 0
        assert not any(terminal.end() for terminal in terminals), "a terminal ended badly"
        print(f"{told} minutes of {INSTRUMENTS} instruments, {len(terminals)} terminals: nothing is lost, nothing doubled")
    finally:
        if feed.poll() is None:
            feed.kill()
            feed.wait()
        for terminal in terminals:
            terminal.process.kill()
            terminal.process.wait()
        cluster.end()


def main():
    with tempfile.TemporaryDirectory() as folder:
        session(Path(sys.argv[1]).resolve(), Path(folder))


if __name__ == "__main__":
    main()
