#!/usr/bin/env python3
"""Holds Brindle to its promises for as long as that takes, and prints what came of it: ./dev soak [ROUNDS] [PROMISE...]

Each promise is proved by tests, or by fuzzers, that do something ROUNDS times (1,000 unless told) or sweep over
every point of failure. Fuzzers run for ROUNDS seconds each, 600 at most. Exits with 1 when something was lost.
"""

import concurrent.futures
import dataclasses
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
USUAL_ROUNDS = 1000
LONGEST_FUZZING = 600


@dataclasses.dataclass
class Proof:
    program: str  # below build/PRESET/tests
    tests: str  # a filter of GoogleTest
    share: float = 1  # of the rounds
    preset: str = "dev"
    is_repeated: bool = False  # as a whole, because it goes by chance throughout


PROMISES = {
    "kill": ("a check that is stopped or killed leaves the history as it was",
             [Proof("e2e/e2e_tests", "Stop.AtAnyMoment*", 2), Proof("store/store_tests", "Fault.AKilled*"),
              Proof("e2e/desktop_tests", "DesktopEnd.*", 0.05)]),
    "disk": ("a disk that fails or is full at any call loses nothing", [Proof("store/store_tests", "*WorkOn.*")]),
    "memory": ("memory that runs out at any allocation loses nothing",
               [Proof("store/store_tests", "*ShortOfMemory.*")]),
    "power": ("a loss of power leaves the history of the last checkpoint or a later one",
              [Proof("checks/checks_tests", "PowerLoss.*")]),
    "away": ("what is absent, unreadable or replaced is not removed",
             [Proof("e2e/e2e_tests", "*NothingIsMassRemoval*:*AMountPoint*:*AFailingDisk*:ASilentServer.*", 0.01),
              Proof("checks/checks_tests", "Check.ARoot*:ChosenAgain.*"),
              Proof("platform/platform_tests", "TreeReader*", 0.05)]),
    "counted": ("a change of what is counted is no growth and no loss",
                [Proof("checks/checks_tests", "Counted.*"), Proof("store/store_tests", "Locations.*")]),
    "full": ("a full disk is told, and the next check makes up for it",
             [Proof("checks/checks_tests", "FullDisk.*"), Proof("e2e/e2e_tests", "FullDiskHistory.*")]),
    "migration": ("a migration that fails loses nothing", [Proof("store/store_tests", "*OldHistory.*:Migration.*")]),
    "damaged": ("a damaged history is left as it is, and what can be read of it is brought over on the user's word",
                [Proof("store/store_tests", "DamagedHistory.*", 0.2),
                 Proof("e2e/e2e_tests", "ExitCodes.AHistory*:CaredForHistory.*")]),
    "bounded": ("the file stays bounded over three years of checks",
                [Proof("checks/checks_tests", "Maintenance.Years*")]),
    "private": ("files are never opened, nothing leaves the computer, nobody else may read the history",
                [Proof("e2e/e2e_tests", "Private.*"), Proof("e2e/desktop_tests", "WindowPrivacy.*")]),
    "exact": ("every check records what changed, whatever the names are",
              [Proof("e2e/e2e_tests", "RandomTrees.*", 0.05), Proof("store/store_tests", "CommitReference.*", 0.2),
               Proof("export/export_tests", "StatementReadBack.*", 0.005)]),
    "races": ("threads do not race", [Proof("checks/checks_tests", "Storm.*", 0.02, "tsan", True)]),
}
FUZZ = "no input breaks it"


@dataclasses.dataclass
class Outcome:
    rounds: int = 0
    faults: int = 0
    losses: int = 0
    skipped: int = 0

    def add(self, other):
        for field in dataclasses.fields(self):
            setattr(self, field.name, getattr(self, field.name) + getattr(other, field.name))


def environment(rounds):
    return {**os.environ, "LC_ALL": "C.UTF-8", "BRINDLE_TEST_ROUNDS": str(rounds),
            "TSAN_OPTIONS": f"suppressions={ROOT}/tools/thread_sanitizer.supp"}


def outcome_of(proof, rounds):
    own_rounds = max(1, round(rounds * proof.share))
    with tempfile.NamedTemporaryFile(suffix=".json") as report:
        command = [ROOT / "build" / proof.preset / "tests" / proof.program, f"--gtest_filter={proof.tests}",
                   f"--gtest_output=json:{report.name}", "--gtest_brief=1", "--gtest_fail_fast"]
        if proof.is_repeated:
            command.append(f"--gtest_repeat={own_rounds}")
        ended = subprocess.run(command, env=environment(own_rounds), stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, check=False)
        text = report.read()
    outcome = Outcome(losses=0 if ended.returncode == 0 else 1)
    suites = json.loads(text)["testsuites"] if text else []
    for test in (test for suite in suites for test in suite["testsuite"]):
        if test["result"] == "SKIPPED":
            outcome.skipped += 1
        elif test["status"] == "RUN":
            outcome.rounds += int(test.get("rounds", own_rounds if proof.is_repeated else 1))
            outcome.faults += int(test.get("faults", 0))
    if outcome.losses or outcome.rounds + outcome.skipped == 0:
        outcome.losses = max(1, outcome.losses)
        print(ended.stdout.decode(errors="replace"), file=sys.stderr)
    return outcome


def fuzzed(rounds):
    def run(fuzzer):
        found = ROOT / "build/fuzz/corpus" / fuzzer.name
        found.mkdir(parents=True, exist_ok=True)
        kept = ROOT / "fuzz/corpus" / fuzzer.name
        ended = subprocess.run([fuzzer, f"-max_total_time={min(rounds, LONGEST_FUZZING)}", "-print_final_stats=1",
                                f"-artifact_prefix={ROOT}/build/fuzz/{fuzzer.name}-", found,
                                *([kept] if kept.is_dir() else [])], env={**os.environ, "TMPDIR": "/dev/shm"},
                               stderr=subprocess.PIPE, text=True, errors="replace", check=False)
        executed = re.search(r"number_of_executed_units: (\d+)", ended.stderr)
        inputs = int(executed[1]) if executed else 0
        print(f"soak: {fuzzer.name}: {inputs:,} inputs", file=sys.stderr)
        if ended.returncode:
            print(ended.stderr, file=sys.stderr)
        return Outcome(rounds=inputs, faults=inputs, losses=0 if ended.returncode == 0 else 1)

    outcome = Outcome()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as several:
        for found in several.map(run, sorted((ROOT / "build/fuzz/fuzz").glob("*_fuzz"))):
            outcome.add(found)
    return outcome


def table(rows):
    print(f"{'promise':<11}{'rounds':>12}{'faults':>12}{'losses':>8}  what it is")
    for name, sentence, outcome in rows:
        note = f" ({outcome.skipped} could not run here)" if outcome.skipped else ""
        print(f"{name:<11}{outcome.rounds:>12,}{outcome.faults:>12,}{outcome.losses:>8,}  {sentence}{note}")


def print_builds(names):
    """What has to be built, a preset and its targets a line."""
    targets = {}
    for name in names:
        if name == "fuzz":
            targets["fuzz"] = {"all"}
        else:
            for proof in PROMISES[name][1]:
                targets.setdefault(proof.preset, set()).add(pathlib.Path(proof.program).name)
    for preset, programs in targets.items():
        print(preset, *sorted(programs))


def main(arguments):
    only_builds = arguments[:1] == ["--builds"]
    if only_builds:
        arguments.pop(0)
    rounds = int(arguments.pop(0)) if arguments and arguments[0].isdigit() else USUAL_ROUNDS
    unknown = [name for name in arguments if name not in (*PROMISES, "fuzz")]
    if unknown:
        print(f"soak: no such promise: {', '.join(unknown)}; there are {', '.join(PROMISES)} and fuzz",
              file=sys.stderr)
        return 2
    names = arguments or [*PROMISES, "fuzz"]
    if only_builds:
        print_builds(names)
        return 0
    rows = []
    for name in names:
        print(f"soak: {name} ...", file=sys.stderr)
        outcome = Outcome()
        if name == "fuzz":
            sentence = FUZZ
            outcome = fuzzed(rounds)
        else:
            sentence, proofs = PROMISES[name]
            for proof in proofs:
                outcome.add(outcome_of(proof, rounds))
        rows.append((name, sentence, outcome))
    table(rows)
    return 1 if any(outcome.losses for _, _, outcome in rows) else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
