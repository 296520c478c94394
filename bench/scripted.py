"""The database's part of a check alone, far beyond the files of this disk: the walk is a script."""

import shutil
import statistics

from measuring import BENCH, BRINDLE, measure

PROGRAM = BENCH / "brindle_scripted_check"
FEW_ROWS = 200_000


def measure_rows(rows, rounds, scratch, targets):
    """How much more a row costs among many than among few."""
    figures = {}
    for _ in range(rounds):
        for count in (FEW_ROWS, rows):
            history = scratch / "rows"
            # Few rows are over so soon that starting the program would count: several checks, and more of them.
            for name, seen in (("first check", count), ("nothing changed", count), ("everything removed", 0)):
                run = measure([PROGRAM, history, str(seen)])
                figures.setdefault((name, count), []).append(run)
            shutil.rmtree(history)
    print(f"\n{'scripted checks':32}{'rows':>12}{'seconds':>9}{'µs a row':>10}{'CPU µs':>8}{'peak MB':>9}")
    for (name, count), runs in figures.items():
        seconds = statistics.median(run.seconds for run in runs)
        cpu = statistics.median(run.cpu_seconds for run in runs)
        peak = max(run.peak_kb for run in runs)
        print(f"{name:32}{count:12,}{seconds:9.2f}{seconds / count * 1e6:10.2f}{cpu / count * 1e6:8.2f}"
              f"{peak / 1024:9.1f}", flush=True)
    for name in ("first check", "nothing changed", "everything removed"):
        few, many = ([run.seconds / count for run in figures[name, count]] for count in (FEW_ROWS, rows))
        targets.add(f"a row of {rows:,} to one of {FEW_ROWS:,}, {name}",
                    statistics.median(many) / statistics.median(few), 1.3,
                    spread=[a / b for a, b in zip(many, few)])
    for name, most in (("nothing changed", 16), ("everything removed", 24)):
        targets.add(f"peak memory of a check of {rows:,}, {name}",
                    max(run.peak_kb for run in figures[name, rows]) / 1024, most, " MB", digits=1)


def measure_flat_folder(entries, scratch, targets):
    """One folder that holds everything."""
    flat = scratch / "flat"
    flat.mkdir()
    for number in range(entries):
        (flat / f"an entry with an ordinary name {number:07}.dat").touch()
    check = [BRINDLE, "--data-dir", scratch / "flat-history", "check"]
    peak = max(measure(command).peak_kb for command in ([*check, flat], check))
    targets.add(f"peak memory of checks of one folder of {entries:,}", peak / 1024, 96, " MB", digits=1)
    shutil.rmtree(flat)


def measure_bare_append(rows, rounds, scratch, targets):
    """A first check against a bare loop that appends the same rows to the same table."""
    ours, bare = [], []
    for _ in range(rounds):
        history, table = scratch / "append", scratch / "append.sqlite"
        ours.append(measure([PROGRAM, history, str(rows)]).seconds)
        bare.append(measure([BENCH / "brindle_bare_append", table, str(rows)]).seconds)
        shutil.rmtree(history)
        table.unlink()
    targets.tell(f"first check of {rows:,} scripted rows, to a bare append of the same rows",
                 f"{statistics.median(ours) / statistics.median(bare):.2f} "
                 f"({statistics.median(ours):.2f} s, {statistics.median(bare):.2f} s)")
