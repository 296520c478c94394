"""How long the window's main thread works at a stretch."""

import json
import subprocess
import sys
import time

from measuring import BENCH, BRINDLE, PROGRAMS

DESKTOP = PROGRAMS / "src/ui/brindle-desktop"

# A window that answers later than a screen is drawn is felt to stand still.
LONGEST_HANDLER_MS = 16


def measure_window(tree, changes, scratch):
    """With a day of many changes, and during a check."""
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

    with subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"],
                          stdout=subprocess.PIPE, text=True) as bus:
        environment = {"HOME": str(home), "QT_QPA_PLATFORM": "offscreen", "BRINDLE_HANDLER_TIMES": str(times),
                       "XDG_RUNTIME_DIR": str(home), "DBUS_SESSION_BUS_ADDRESS": bus.stdout.readline().strip(),
                       "LC_ALL": "C.UTF-8"}
        with subprocess.Popen([DESKTOP, "-BrindleDataDirectory", data], env=environment) as window:
            while window.poll() is None and not is_checked():
                time.sleep(0.5)
            time.sleep(5)  # the lists of the day are read once more
            window.terminate()
        bus.terminate()
    if window.returncode != 0:
        sys.exit(f"brindle-desktop ended with {window.returncode}")

    print(f"\n{'The main thread at a stretch':60}{'times':>7}{'longest ms':>12}")
    handlers = [line.split() for line in times.read_text().splitlines()]
    for wanted in ("running", "start-up"):
        for phase, name, count, longest in [one for one in handlers if one[0] == wanted][:6]:
            slow = "  too long" if phase == "running" and float(longest) > LONGEST_HANDLER_MS else ""
            print(f"{phase + ': ' + name:60}{count:>7}{longest:>12}{slow}")
