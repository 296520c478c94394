"""What every group of the benchmark uses: running commands, the figures of many runs, and targets."""

import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass, field
from pathlib import Path

PROGRAMS = Path(__file__).resolve().parent.parent / "build/release"
BRINDLE = PROGRAMS / "src/cli/brindle"
BENCH = PROGRAMS / "bench"

BLOCK = 512  # bytes, as the kernel counts what a process has written


@dataclass
class Run:
    """One run of a command, from its start to its end."""

    seconds: float
    cpu_seconds: float
    peak_kb: int
    written_bytes: int  # to files, as far as they have to reach the disk


def measure(command):
    with tempfile.NamedTemporaryFile("r") as told:
        # A process started from here would inherit this interpreter's own peak; time(1) is smaller than
        # anything that is measured.
        timed = ["time", "--quiet", "--format=%U %S %M %O", f"--output={told.name}", *command]
        begin = time.monotonic()
        done = subprocess.run(timed, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        seconds = time.monotonic() - begin
        if done.returncode != 0:
            sys.exit(f"{' '.join(map(str, command))} failed: {done.stderr}")
        user, system, peak, blocks = told.read().split()
        return Run(seconds, float(user) + float(system), int(peak), int(blocks) * BLOCK)


@dataclass
class Series:
    """The runs of one command over all rounds."""

    runs: list = field(default_factory=list)

    def add(self, command):
        self.runs.append(measure(command))

    @property
    def seconds(self):
        return [run.seconds for run in self.runs]

    @property
    def median(self):
        return statistics.median(self.seconds)

    @property
    def cpu_median(self):
        return statistics.median(run.cpu_seconds for run in self.runs)

    @property
    def peak_kb(self):
        return max(run.peak_kb for run in self.runs)

    @property
    def most_written(self):
        return max(run.written_bytes for run in self.runs)

    def ratios(self, unit):
        """To the other series, round by round."""
        return [one / other for one, other in zip(self.seconds, unit.seconds)]


class Interleaved:
    """Commands that run in turn, so that whatever slows the machine down slows all of them."""

    def __init__(self):
        self.series = {}

    def run(self, name, command):
        self.series.setdefault(name, Series()).add(command)

    def __getitem__(self, name):
        return self.series[name]

    def print(self, unit):
        base = self.series[unit].median
        print(f"\n{'':30}{'seconds':>9}{'spread':>16}{'ratio':>8}{'CPU s':>8}{'peak MB':>10}")
        for name, one in self.series.items():
            spread = f"{min(one.seconds):.2f}–{max(one.seconds):.2f}"
            print(f"{name:30}{one.median:9.2f}{spread:>16}{one.median / base:8.2f}{one.cpu_median:8.2f}"
                  f"{one.peak_kb / 1024:10.1f}")
        print(f"Ratios are to `{unit}`.", flush=True)


class Targets:
    """The rows that a target stands for, in the order in which they were measured."""

    def __init__(self):
        self.rows = []

    def add(self, work, figure, most, unit="", spread=None, digits=2):
        met = "met" if figure <= most else f"missed by {figure / most - 1:.0%}"
        shown = f"{figure:.{digits}f}"
        if spread:
            shown += f" [{min(spread):.{digits}f}–{max(spread):.{digits}f}]"
        self.rows.append((work, shown + unit, f"{most:g}{unit}", met))

    def add_ratio(self, work, series, unit, most):
        self.add(work, series.median / unit.median, most, spread=series.ratios(unit))

    def tell(self, work, figure):
        """A figure without a target."""
        self.rows.append((work, figure, "", ""))

    def print(self):
        if not self.rows:
            return
        print("\n| work | figure | at most | |\n|---|---|---|---|")
        for row in self.rows:
            print(f"| {' | '.join(row)} |")


def make_tree(folder, files):
    if folder.exists():
        return
    print(f"Making a tree of {files:,} files …", flush=True)
    unfinished = folder.with_name(folder.name + ".partial")
    shutil.rmtree(unfinished, ignore_errors=True)
    unfinished.mkdir(parents=True)
    subprocess.run([BENCH / "brindle_make_tree", unfinished, str(files)], check=True)
    unfinished.rename(folder)
