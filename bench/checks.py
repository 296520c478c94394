"""Checks and walks of one tree against `find` and their peers, all in turn."""

import os
import shutil
import sqlite3
import statistics
import subprocess
import sys
from pathlib import Path

from measuring import BENCH, BRINDLE, Interleaved, measure

CHECKS_A_DAY = 24 * 60 // 5

# What a program does with a core that it has for itself.
SPIN = """
import sys, time
end, turns = time.monotonic() + float(sys.argv[1]), 0
while time.monotonic() < end: turns += 1
print(turns)
"""


def find_in(tree):
    return ["find", tree, "-type", "f", "-printf", "%s %p\n"]


def forget_caches():
    """One tree in the kernel's caches: names left over from another slow every look-up down."""
    os.sync()
    try:
        Path("/proc/sys/vm/drop_caches").write_text("2")
    except PermissionError:
        print("Not root: what other trees left in the kernel's caches stays there.")


def change_every_hundredth(database):
    """What the next check finds changed. The history is changed, and not the tree, which is the same for all
    commands then: of a thousand files eight have another size, one is new and one is gone."""
    with sqlite3.connect(database) as db:
        rows = db.execute("SELECT location_id, rel_path FROM inventory ORDER BY rel_path").fetchall()[::100]
        new, gone = rows[8::10], rows[9::10]
        resized = [row for number, row in enumerate(rows) if number % 10 < 8]
        db.executemany("UPDATE inventory SET size = size + 1 WHERE location_id = ? AND rel_path = ?", resized)
        db.executemany("DELETE FROM inventory WHERE location_id = ? AND rel_path = ?", new)
        db.executemany("INSERT INTO inventory VALUES (?, ? || '.gone', 1000)", gone)
    db.close()


def measure_checks(tree, rounds, scratch, targets):
    files = int(measure_count(tree))
    kept, size = scratch / "kept", f"{files:,}"
    all_runs = Interleaved()
    forget_caches()
    for warm_up in (find_in(tree), [BRINDLE, "--data-dir", kept, "check", tree]):
        measure(warm_up)
    targets.add(f"database, bytes a file of {size}", (kept / "History.sqlite").stat().st_size / files, 170,
                digits=0)
    for number in range(rounds):
        fresh, index = scratch / f"fresh-{number}", scratch / f"duc-{number}"
        all_runs.run("find -printf", find_in(tree))
        all_runs.run("bare system calls", [BENCH / "brindle_bare_walk", tree])
        all_runs.run("bare system calls, 2 threads", [BENCH / "brindle_bare_walk", tree, "2"])
        all_runs.run("walk", [BENCH / "brindle_walk", tree])
        all_runs.run("estimating walk", [BENCH / "brindle_walk", "--estimate", tree])
        all_runs.run("check, nothing changed", [BRINDLE, "--data-dir", kept, "check"])
        change_every_hundredth(kept / "History.sqlite")
        all_runs.run("check, 1 % changed", [BRINDLE, "--data-dir", kept, "check"])
        all_runs.run("first check", [BRINDLE, "--data-dir", fresh, "check", tree])
        all_runs.run("du -s", ["du", "-s", tree])
        all_runs.run("gdu -n", ["gdu", "-n", tree])
        all_runs.run("duc index", ["duc", "index", "-d", index, tree])
        shutil.rmtree(fresh)
        index.unlink()
    all_runs.print("find -printf")

    find, unchanged, first = all_runs["find -printf"], all_runs["check, nothing changed"], all_runs["first check"]
    targets.add_ratio(f"walk of {size}, to find", all_runs["walk"], find, 0.85)
    targets.add_ratio(f"check of {size}, nothing changed, to find", unchanged, find, 1.15)
    targets.add_ratio(f"check of {size}, 1 % changed, to find", all_runs["check, 1 % changed"], find, 1.35)
    targets.add_ratio(f"first check of {size}, to find", first, find, 1.6)
    for peer, most in (("gdu -n", 0.45), ("duc index", 0.75)):
        targets.add_ratio(f"first check of {size}, to {peer}", first, all_runs[peer], most)
        targets.add_ratio(f"check of {size}, nothing changed, to {peer}", unchanged, all_runs[peer], most)
    targets.add(f"written by a check of {size}, nothing changed", unchanged.most_written / 1024, 256, " KiB",
                digits=0)
    day = unchanged.cpu_median * CHECKS_A_DAY
    targets.tell(f"processor time of a day of {CHECKS_A_DAY} checks of {size}, nothing changed",
                 f"{day:.0f} s ({unchanged.cpu_median:.2f} s a check)")


def measure_count(tree):
    return subprocess.run([BENCH / "brindle_bare_walk", tree], check=True, stdout=subprocess.PIPE, text=True).stdout


def measure_walk(tree, rounds, targets):
    """The walk alone, of a smaller tree."""
    all_runs = Interleaved()
    forget_caches()
    measure(find_in(tree))
    for _ in range(rounds):
        all_runs.run("find -printf", find_in(tree))
        all_runs.run("walk", [BENCH / "brindle_walk", tree])
    all_runs.print("find -printf")
    targets.add_ratio(f"walk of {int(measure_count(tree)):,}, to find", all_runs["walk"],
                      all_runs["find -printf"], 0.85)


def measure_manners(tree, rounds, scratch):
    """How much of a core a busy program keeps while checks of the tree want the same one."""
    one_core = ["taskset", "--cpu-list", "0"]
    check = [*one_core, BRINDLE, "--data-dir", scratch / "manners", "check", tree]

    def turns(is_checking):
        spin = subprocess.Popen([*one_core, sys.executable, "-c", SPIN, "3"], stdout=subprocess.PIPE, text=True)
        while is_checking and spin.poll() is None:
            subprocess.run(check, check=True, stdout=subprocess.DEVNULL)
        return int(spin.communicate()[0])

    kept = [turns(True) / turns(False) for _ in range(rounds)]
    print(f"\nA busy program beside checks on one core keeps {statistics.median(kept):.0%} of it "
          f"({min(kept):.0%}–{max(kept):.0%}).")
