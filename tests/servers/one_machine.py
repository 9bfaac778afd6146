"""setup/servers as it is used: all servers of a desk on this machine, a terminal over them, and nothing left afterwards.

    one_machine.py PROGRAMS

PROGRAMS is the folder with timeshare-feed, timeshare-load, timeshare-terminal and timeshare_desk.
"""

import json
import os
import shlex
import signal
import socket
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "bench"))
from desks import Terminal, wait_for  # noqa: E402

SERVERS = ROOT / "setup/servers"
DAY = "2025-11-21"


def run(*words, status=0, **more):
    """Runs a program; its output, after it has ended as it should."""
    done = subprocess.run([str(word) for word in words], text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, **more)
    assert done.returncode == status, f"{words} ended with {done.returncode}, not {status}:\n{done.stdout}"
    return done.stdout


def seen_by_others():
    """Command lines and environments of all processes but this one."""
    for place in Path("/proc").glob("[0-9]*"):
        for name in ("cmdline", "environ"):
            try:
                yield f"{name} of process {place.name}", (place / name).read_bytes() if int(place.name) != os.getpid() else b""
            except OSError:
                pass


def look_at_processes(secrets):
    for where, words in seen_by_others():
        assert not any(secret.encode() in words for secret in secrets), f"a password is in the {where}"


def pids_of(folder):
    return {name: known["pid"] for name, known in json.loads((folder / "running.json").read_text()).items()}


def say_to_nats(port, secret, message):
    """What a NATS server answers to a message of a user."""
    values = dict(line.split("=", 1) for line in secret.read_text().splitlines())
    with socket.create_connection(("127.0.0.1", port), timeout=60) as line:
        hello = {"user": values["user"], "pass": values["password"], "verbose": False, "pedantic": True}
        line.sendall(f"CONNECT {json.dumps(hello)}\r\n{message}PING\r\n".encode())
        answer = b""
        while b"PONG" not in answer:
            part = line.recv(4096)
            if not part:
                break
            answer += part
    return answer.decode()


def look_at_terminal(programs, folder, words, passwords):
    """A terminal that is started as the script says sees the market and what was loaded."""
    environment = {**os.environ, **dict(word.split("=", 1) for word in words[:2]), "HOME": str(folder), "QT_QPA_PLATFORM": "offscreen"}
    assert words[2] == "timeshare-terminal" and words[3] == "--feed" and words[5] == "--history", words
    desk = Terminal(programs, folder / "desk", (words[4], words[6]), 20, environment)
    try:
        wait_for("the market", lambda: desk.is_whole() and
                 any(sums[2] == "SH600000" and int(sums[3]) > 60 for sums in desk.ask("sums")))
        wait_for("the history", lambda: any(past[1:] == ["SH600000", "1", "3"] for past in desk.ask("past")))
        look_at_processes(passwords)
        assert desk.end() == 0
    finally:
        desk.kill()
    for day in ([], ["--date", DAY]):
        picture = folder / f"picture{len(day)}.png"
        run(programs / "timeshare-terminal", *words[3:], "--store", folder / "desk/market.db", "--instrument", "SH600000", *day,
            "--snapshot", picture, env=environment)
        assert picture.read_bytes().startswith(b"\x89PNG"), picture


def look_at_wrong_passwords(programs, folder, words, server_logs):
    """A picture that lacks what servers refuse is told of in one line, and the password in none, nor in any log, with all that Qt
    can be made to tell. A terminal that goes on trying shows it to nobody either."""
    wrong = folder / "wrong"
    wrong.write_text("user=terminal\npassword=hush-hush\n")
    refused = {"TIMESHARE_FEED_CREDENTIALS": str(wrong), "TIMESHARE_HISTORY_CREDENTIALS": str(wrong)}
    environment = {**os.environ, **refused, "HOME": str(folder / "stranger"), "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": str(folder),
                   "QT_LOGGING_RULES": "*=true"}
    told = run(programs / "timeshare-terminal", *words[3:], "--store", folder / "stranger.db", "--language", "zh", "--instrument",
               "SH600000", "--snapshot", folder / "stranger.png", env=environment)
    lines = [line for line in told.splitlines() if line.startswith("timeshare-terminal: ")]
    assert len(lines) == 1 and "行情服务器不接受登录凭据" in lines[0] and "历史服务器不接受" in lines[0], told
    assert told.count("QShortcutMap::") > 10, f"Qt was not made to tell more: {told[:2000]}"
    desk = Terminal(programs, folder / "refused", (words[4], words[6]), 1, refused)
    try:
        wait_for("a refusal", lambda: "行情服务器不接受登录凭据" in desk.state()[4])
        look_at_processes(["hush-hush"])
    finally:
        desk.kill()
    logs = [*(folder / "stranger").rglob("terminal.log"), *server_logs.iterdir()]
    assert len(logs) == 4, logs
    assert not any("hush" in text for text in (told, *(log.read_text(errors="replace") for log in logs)))


def look_at_secrets(folder, said):
    state = json.loads((folder / "servers.json").read_text())
    look_at_processes(state["passwords"].values())
    for password in state["passwords"].values():
        assert password not in said, "a password is printed"
        for log in (folder / "log").iterdir():
            assert password not in log.read_text(errors="replace"), f"a password is in {log}"
    for secret in [folder / "servers.json", *(folder / "secrets").iterdir()]:
        assert secret.stat().st_mode & 0o077 == 0, f"others read {secret}"
    port = state["ports"]["nats"]
    assert "Permissions Violation" in say_to_nats(port, folder / "secrets/nats-terminal", "PUB md.tick.SH600000 2\r\nhi\r\n")
    assert "ERR" not in say_to_nats(port, folder / "secrets/nats-terminal", "SUB md.tick.SH600000 1\r\n")
    wrong = folder / "wrong"
    wrong.write_text("user=terminal\npassword=guess\n")
    assert "Authorization Violation" in say_to_nats(port, wrong, "")
    return state["ports"]


def look_at_end(folder, ports):
    assert run(SERVERS, "stop", folder) == ""
    left = [where for where, words in seen_by_others() if where.startswith("cmdline") and str(folder).encode() in words]
    assert not left, left
    assert not (folder / "running.json").exists()
    for port in ports.values():
        with socket.socket() as line:
            assert line.connect_ex(("127.0.0.1", port)) != 0, f"port {port} is open"
    assert run(SERVERS, "status", folder, status=3).count("does not run") == 3
    run(SERVERS, "stop", folder)


def look_at_failure(folder):
    """What cannot be started whole is not started at all, and is told in one line."""
    empty = folder / "no-programs"
    empty.mkdir()
    said = run(SERVERS, "start", folder / "failing", "--programs", empty, status=1)
    assert said.count("\n") == 1 and "timeshare-load is not found" in said, said
    assert run(SERVERS, "status", folder / "failing", status=3).count("does not run") == 3
    said = run(SERVERS, "stop", folder / "nowhere", status=1)
    assert said == f"servers: {folder / 'nowhere'}: no servers were ever started there\n", said


def session(programs, folder):
    desk = folder / "desk-servers"
    start = [SERVERS, "start", desk, "--programs", programs, "--", "--start", "10:35", "--pace", "60"]
    try:
        said = run(*start)
        words = shlex.split(said.replace("\\\n", ""))
        pids = pids_of(desk)
        assert sorted(pids) == ["feed", "nats", "postgres"], pids
        file = folder / "day.csv"
        file.write_text("datetime,code,open,high,low,close,volume,amount\n"
                        + "".join(f"{DAY} 09:3{minute}:00,600000.XSHG,10.1,10.3,10.0,10.2,1000,10200\n" for minute in (1, 2, 3)))
        assert "1 days with 3 bars loaded" in run(SERVERS, "load", desk, "--programs", programs, file)
        look_at_terminal(programs, folder, words, json.loads((desk / "servers.json").read_text())["passwords"].values())
        look_at_wrong_passwords(programs, folder, words, desk / "log")
        ports = look_at_secrets(desk, said)
        assert run(SERVERS, "status", desk).count("runs as process") == 3
        os.kill(pids["feed"], signal.SIGKILL)
        wait_for("the end of the feed", lambda: "feed: does not run" in subprocess.run([SERVERS, "status", desk], text=True, check=False,
                                                                                      stdout=subprocess.PIPE).stdout)
        run(SERVERS, "status", desk, status=3)
        assert run(*start) == said, "another answer the second time"
        assert {**pids_of(desk), "feed": 0} == {**pids, "feed": 0}, "the others were started anew"
        look_at_end(desk, ports)
        look_at_failure(folder)
    finally:
        for place in (desk, folder / "failing"):
            subprocess.run([SERVERS, "stop", place], check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def main():
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o755)  # the user postgres goes through it
        session(Path(sys.argv[1]).resolve(), Path(folder))
    print("started, used and stopped: nothing is left")


if __name__ == "__main__":
    main()
