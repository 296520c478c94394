"""Reads of a long history: what the pages read, the explorer, the statement, and how soon `brindle status` is there."""

import filecmp
import subprocess
import sys
import tempfile
from pathlib import Path

from measuring import BENCH, BRINDLE, Interleaved

STARTS = 20

# The groups that read the long history.
READERS = ("reads", "status", "export")


def make_history(scratch, readers):
    """Makes the history that is read, unless it is there or none of these groups reads it."""
    if readers and not (scratch / "history").exists():
        subprocess.run([BENCH / "brindle_history_reads", scratch / "history", "0"], check=True,
                       stdout=subprocess.DEVNULL)


def measured(command):
    """The rows that one of our programs prints, by their names: the last figure of each is the ratio."""
    done = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True)
    print(done.stdout, end="", flush=True)
    return {line[:28].strip(): line[28:].split() for line in done.stdout.splitlines()}


def measure_reads(rounds, scratch, targets):
    """What the pages read of a long history, against a loop that steps the same statements."""
    print(f"\n{'Reading a long history':28}{'seconds':>10}{'bare loop':>10}{'ratio':>8}", flush=True)
    told = measured([BENCH / "brindle_history_reads", scratch / "history", str(rounds)])
    targets.add("snapshot, to a bare loop", float(told["snapshot"][-1]), 1.2)


def measure_status(rounds, scratch, targets):
    """How soon the state is printed, against a program that opens the same file and asks for nothing."""
    loop = ["sh", "-c", f'i=0; while [ $i -lt {STARTS} ]; do "$@" >/dev/null || exit; i=$((i+1)); done', "starts"]
    history = scratch / "history"
    all_runs = Interleaved()
    for _ in range(rounds):
        all_runs.run("brindle status", [*loop, BRINDLE, "--data-dir", history, "status"])
        all_runs.run("brindle --version", [*loop, BRINDLE, "--version"])
        all_runs.run("sqlite3 'select 1'", [*loop, "sqlite3", history / "History.sqlite", "select 1"])
    print(f"\n{STARTS} starts of each:")
    all_runs.print("sqlite3 'select 1'")
    targets.add_ratio("start of brindle status, to sqlite3 'select 1'", all_runs["brindle status"],
                      all_runs["sqlite3 'select 1'"], 2)


def measure_explorer(changes, rounds, targets):
    """What the explorer works out, against a plain pass that sums the same list folder by folder."""
    print(f"\n{f'Exploring {changes:,} changes':28}{'seconds':>10}{'ratio':>8}{'result':>10}", flush=True)
    told = measured([BENCH / "brindle_explorer", str(changes), str(rounds)])
    for kind, most in (("filter + level", 6), ("search", 12), ("sort", 12)):
        slowest = max((name for name in told if name.startswith(kind)), key=lambda name: float(told[name][1]))
        targets.add(f"explorer of {changes:,}: {slowest}, to a plain pass", float(told[slowest][1]), most, digits=1)


def measure_export(rounds, scratch, targets):
    """A statement of a million changes of that history, and of a tenth, against Python writing the same file."""
    # In memory where there is such a place: the disk would be measured, and what it is promised.
    place = Path("/dev/shm") if Path("/dev/shm").is_dir() else scratch
    with tempfile.TemporaryDirectory(dir=place, prefix="brindle-bench-") as folder:
        ours, peers = Path(folder) / "ours.csv", Path(folder) / "peers.csv"
        all_runs = Interleaved()
        for _ in range(rounds):
            for name, first in (("1,000,000 rows", "2026-01-16"), ("100,000 rows", "2026-03-02")):
                last = "2026-03-06"
                all_runs.run(f"export, {name}", [BRINDLE, "--data-dir", scratch / "history", "export",
                                                 "--from", first, "--to", last, "-o", ours])
                all_runs.run(f"Python, {name}", [sys.executable, Path(__file__).with_name("statement.py"),
                                                 scratch / "history/History.sqlite", first, last, peers])
                if not filecmp.cmp(ours, peers, shallow=False):
                    sys.exit("brindle export and Python wrote different statements")
    print("\nWriting a statement:")
    all_runs.print("Python, 1,000,000 rows")
    for rows in ("1,000,000 rows", "100,000 rows"):
        targets.add_ratio(f"export of {rows}, to Python", all_runs[f"export, {rows}"], all_runs[f"Python, {rows}"],
                          0.15)
