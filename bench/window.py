"""How long the window's main thread works at a stretch, while a user goes through the pages."""

import contextlib
import json
import os
import signal
import subprocess
import sys
import time

from measuring import BENCH, BRINDLE, PROGRAMS

DESKTOP = PROGRAMS / "src/ui/brindle-desktop"

# A window that answers later than a screen is drawn is felt to stand still.
LONGEST_HANDLER_MS = 16

# Every page; days back and forth; the files of a day, three pages of them, a search; the trends' periods. Each
# with time for what it asks for to arrive.
KEYS = ["ctrl+2", "ctrl+3", "ctrl+4", "ctrl+5", "ctrl+1", "ctrl+2", "alt+Left", "alt+Right",
        "ctrl+f", "shift+Tab", "shift+Tab", "Right", "ctrl+f", "Tab", "Tab", "space", "space", "space",
        "ctrl+f", "r", "e", "Escape", "shift+Tab", "shift+Tab", "shift+Tab", "Left", "Tab", "Tab", "Tab", "Down",
        "Return", "alt+Up", "ctrl+4", "Tab", "Right", "Right", "ctrl+1"]
BETWEEN_KEYS_S = 0.8


@contextlib.contextmanager
def process(command, **options):
    with subprocess.Popen(command, **options) as started:
        try:
            yield started
        finally:
            started.send_signal(signal.SIGTERM)


@contextlib.contextmanager
def desktop(home):
    """The environment of a program on a screen, with a window manager and a session bus of its own."""
    quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    reading, writing = os.pipe()
    screen = ["Xvfb", "-displayfd", str(writing), "-noreset", "-nolisten", "tcp", "-screen", "0", "1440x900x24"]
    with process(screen, pass_fds=[writing], **quiet):
        os.close(writing)
        with os.fdopen(reading) as number:
            display = f":{number.readline().strip()}"
        bus = ["dbus-daemon", "--session", "--nofork", "--print-address"]
        with process(bus, stdout=subprocess.PIPE, text=True) as daemon:
            environment = {"DISPLAY": display, "HOME": str(home), "XDG_RUNTIME_DIR": str(home),
                           "DBUS_SESSION_BUS_ADDRESS": daemon.stdout.readline().strip(), "LC_ALL": "C.UTF-8",
                           "PATH": os.environ["PATH"], "QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software"}
            with process(["openbox", "--sm-disable"], env=environment, **quiet):
                yield environment


def peak_memory(pid):
    """In MB, shared libraries included."""
    with open(f"/proc/{pid}/status") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM")) / 1000


def measure_window(tree, changes, scratch):
    """With a day of many changes, before, during and after a check of the tree."""
    data, home, times = scratch / "window", scratch / "home", scratch / "times"
    for seen in (changes, 0):
        subprocess.run([BENCH / "brindle_scripted_check", data, str(seen)], check=True)
    subprocess.run([BRINDLE, "--data-dir", data, "include", tree], check=True, stdout=subprocess.DEVNULL)
    preferences = home / ".config/Brindle/preferences.json"
    preferences.parent.mkdir(parents=True)
    home.chmod(0o700)
    preferences.write_text('{"startupSetupCompleted": true}')

    def is_checked():
        status = subprocess.run([BRINDLE, "--data-dir", data, "status", "--json"],
                                check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        known = json.loads(status.stdout)
        return (not known["otherProgramIsChecking"]
                and all(one["lastCheckAt"] for one in known["locations"]))

    with desktop(home) as environment:
        environment["BRINDLE_HANDLER_TIMES"] = str(times)
        begin = time.monotonic()
        with process([DESKTOP, "-BrindleDataDirectory", data], env=environment) as window:
            subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "^Brindle$"], env=environment,
                           check=True, stdout=subprocess.DEVNULL, timeout=60)
            until_seen = time.monotonic() - begin
            rounds_after_check = 0
            while window.poll() is None and rounds_after_check < 2:
                rounds_after_check += is_checked()
                for key in KEYS:
                    subprocess.run(["xdotool", "key", key], env=environment, check=True)
                    time.sleep(BETWEEN_KEYS_S)
            peak_mb = peak_memory(window.pid)
    if window.returncode != 0:
        sys.exit(f"brindle-desktop ended with {window.returncode}")
    print(f"\nThe window stands on the screen after {until_seen:.2f} s; the program's peak memory is {peak_mb:.0f} MB, "
          f"with {changes:,} changes in a day, drawn without a graphics card.")
    print_handlers(times.read_text())


def print_handlers(times):
    print(f"\n{'The main thread at a stretch':60}{'times':>7}{'longest ms':>12}")
    handlers = [line.split() for line in times.splitlines()]
    for wanted in ("running", "start-up"):
        for phase, name, count, longest in [one for one in handlers if one[0] == wanted][:6]:
            slow = "  too long" if phase == "running" and float(longest) > LONGEST_HANDLER_MS else ""
            print(f"{phase + ': ' + name:60}{count:>7}{longest:>12}{slow}")
