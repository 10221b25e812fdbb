#!/usr/bin/python3
"""Holds the documents to what there is: each command in them is run or excused below, and the manual
page names the options and exit codes of --help.

    tests/docs/Documents.py BRIGHTCLOCK MANUAL_PAGE
"""

import contextlib
import os
import pathlib
import re
import shutil
import socket
import subprocess
import sys
import tempfile

TOP = pathlib.Path(__file__).resolve().parents[2]
SKIPPED = 77
HOST, PAGE = sys.argv[1:]
SERVER = max(pathlib.Path("/usr/lib/postgresql").glob("*/bin/initdb"), default=None,
             key=lambda path: int(path.parts[-3]))
HELP = subprocess.run([HOST, "--help"], check=True, capture_output=True, text=True).stdout
OPTIONS = set(re.findall(r"^ +(?:-h, )?(--[\w-]+)", HELP, flags=re.M))

RUN = ("brightclock", "runuser", "psql", "pg_dump", "pg_restore")
EXCUSED = {
    r"(PRESET=\w+ )?(scripts|\.ci)/\w": "installs and builds; .ci/run and scripts/weekly run them",
    r"sudo apt |apt ": "takes root and the network; scripts/test-package does it",
    r"brightclock$|brightclock --data \S+( --user \w+)?$": "waits for a user; tests/system does not",
    r"brightclock --data DATA --report standing\|": "its kinds are run one by one",
    r"brightclock --(copy-data|report [a-z]+)$": "names an option",
    r"brightclock --copy-data OLD ": "takes files of the old desktop engine, which tests/host makes",
    r"(compare|cut|kill)_\w+ ": "is built by scripts/weekly, which runs it",
    r"postgresql://|db\.example|hostssl ": "is no command, but a line of a file or an address",
}
# What stands in a document for what everybody has of one's own.
OWN = {"/srv/brightclock/south": "demo", "DIR": "demo", "NEW": "demo", "DESCRIPTION": "Seniority",
       "SITE": "postgresql://manager@localhost/brightclock/north", "FOLDER": "backup"}
# A document shows two ways; the second begins where the first one did.
BEFORE = {"psql -h localhost -U manager restored":
          "psql -d restored -c 'DROP SCHEMA north_bcx, north_aidb01, north_vrlxdb01 CASCADE'"}


def commands(text):
    """Indented lines, joined where they go on, and what stands in the text as `program word…`."""
    text = re.sub(r"```sql\n(.*?)```", lambda block: "    runuser -u postgres -- psql brightclock "
                  f"-v ON_ERROR_STOP=1 -c \"{' '.join(block[1].split())}\"\n", text, flags=re.S)
    text = re.sub(r"```.*?```", "", text, flags=re.S)
    text = re.sub(r"\\?\n {8,}(?=\S)", " ", text)
    for block, span in re.findall(r"^ {4}(\S.*)|`([^`\n]+)`", text, flags=re.M):
        words = (block or span).split("  #")[0].strip()
        if block or re.match(rf"({'|'.join(RUN)}|PRESET=\w+|scripts/\S+|cut_\w+|compare_\w+) ", span):
            yield words


def as_typed(command):
    for name, own in OWN.items():
        command = re.sub(rf"(?<![\w/]){name}\b", own, command)
    return command


def fault_of(command, environment):
    unknown = set(re.findall(r"[ [](--[\w-]+)", command)) - OPTIONS
    if command.startswith("brightclock ") and unknown:
        return f"there is no {', '.join(unknown)}"
    command = re.sub(r"\s*(\[[^]]*\]|…)", "", command)  # what may be left out
    for pattern in EXCUSED:
        if re.match(pattern, command):
            script = re.match(r"(?:PRESET=\w+ )?((?:scripts|\.ci)/[\w-]+)", command)
            return None if not script or (TOP / script[1]).is_file() else "there is no such script"
    if not command.startswith(RUN):
        return "is neither run nor excused"
    typed = as_typed(command)
    before = next((do for start, do in BEFORE.items() if typed.startswith(start)), "true")
    done = subprocess.run(["bash", "-c", f"set -e; {before}; {typed}"], env=environment, text=True,
                          cwd=environment["HOME"], input="secret\nsecret\n", start_new_session=True,
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=60)
    finds = "--report checks" in typed and done.returncode == 1
    return None if done.returncode == 0 or finds else f"ended with {done.returncode}: {done.stderr}"


@contextlib.contextmanager
def server(folder):
    """One that knows its administrator on its socket and passwords from elsewhere, as Debian's."""
    as_server = []
    if os.geteuid() == 0:
        as_server = ["/usr/sbin/runuser", "-u", "postgres", "--"]
        shutil.chown(folder, "postgres")
    with socket.socket() as free:
        free.bind(("localhost", 0))
        port = str(free.getsockname()[1])

    def run(program, *arguments):
        subprocess.run([*as_server, SERVER.parent / program, "-D", f"{folder}/data", *arguments],
                       check=True, cwd=folder, stdout=subprocess.DEVNULL)
    run("initdb", "-U", "postgres", "--auth-local=trust", "--auth-host=scram-sha-256", "--no-sync")
    run("pg_ctl", "-s", "-w", "-l", f"{folder}/log", "-o",
        f"-F -p {port} -k '{folder}' -c listen_addresses=localhost", "start")
    try:
        yield {"PGHOST": folder, "PGPORT": port, "PGUSER": "postgres"}
    finally:
        run("pg_ctl", "-s", "-m", "immediate", "stop")


def home(folder):
    """Where commands are typed: with the program on the path, passwords, and data to work on."""
    tools = pathlib.Path(folder, "bin")
    tools.mkdir()
    (tools / "brightclock").symlink_to(HOST)
    (tools / "runuser").write_text('#!/bin/sh\nshift 3\nexec "$@"\n')  # the server's user is PGUSER
    (tools / "runuser").chmod(0o755)
    passwords = pathlib.Path(folder, ".pgpass")
    passwords.write_text("localhost:*:*:manager:secret\n")
    passwords.chmod(0o600)
    subprocess.run([HOST, "--create-data", f"{folder}/demo", "--end", "2026-11-22"], check=True)
    return {"HOME": folder, "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen",
            "XDG_RUNTIME_DIR": folder, "TALLYROOM_REGISTRY": f"{folder}/registry",
            "PATH": f"{tools}:{SERVER.parent if SERVER else ''}:/usr/bin:/bin"}


def document_faults(environment):
    for path in [TOP / "README.md", TOP / "CONTRIBUTING.md", *sorted(TOP.glob("docs/*.md"))]:
        if path.name == "server.md" and not SERVER:
            continue
        for command in commands(path.read_text(encoding="utf-8")):
            if fault := fault_of(command, environment):
                yield f"{path.name}: {command}\n    {fault}"


def page_faults():
    page = pathlib.Path(PAGE).read_text(encoding="utf-8").replace("\\-", "-")
    heads = "\n".join(re.findall(r"^\.TP\n(.*)", page, flags=re.M))
    codes = set(re.findall(r"(?:: |; |;\n)(\d) ", HELP))
    for known, named in ((OPTIONS, r"--[\w-]+"), (codes, r"^\.B (\d)$")):
        for one in known ^ set(re.findall(named, heads, flags=re.M)):
            yield f"the manual page and --help differ in {one}"


def main():
    with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as data:
        environment = home(folder)
        with server(data) if SERVER else contextlib.nullcontext({}) as reached:
            faults = [*page_faults(), *document_faults(environment | reached)]
    print("\n".join(faults))
    if not faults and not SERVER:
        print("the PostgreSQL server is missing, server.md was left out")
        return SKIPPED
    return 1 if faults else 0


sys.exit(main())
