#!/usr/bin/env python3
"""statement.py DATABASE FIRST_DAY LAST_DAY FILE: writes the statement of all locations with Python's own means.

The peer of `brindle export`: the same rows, read with sqlite3 and written with csv.writer, as a person would
write it who cares for speed.
"""

import csv
import sqlite3
import sys
from datetime import datetime
from functools import lru_cache

HEADER = ["Date", "Observed at", "File", "Folder", "Path", "Change in bytes", "Action", "Location", "Source", "Files"]


@lru_cache(maxsize=64)
def iso_time(seconds):
    return datetime.fromtimestamp(int(seconds)).astimezone().strftime("%Y-%m-%dT%H:%M:%S%z")


def main():
    database, first, last, output = sys.argv[1:]
    db = sqlite3.connect(f"file:{database}?mode=ro", uri=True)
    locations = {row[0]: row[1:] for row in db.execute("SELECT id, name, path FROM locations")}
    changes = db.execute(
        "SELECT location_id, folder, name, action, delta, observed_at, local_day FROM observations "
        "WHERE local_day BETWEEN ? AND ? ORDER BY local_day, observed_at, id",
        (first, last),
    )
    with open(output, "w", newline="", encoding="utf-8-sig") as file:
        rows = csv.writer(file)
        rows.writerow(HEADER)
        for location, folder, name, action, delta, observed_at, day in changes:
            location_name, path = locations[location]
            folder = f"{path}/{folder}" if folder else path
            rows.writerow([day, iso_time(observed_at), name, folder, f"{folder}/{name}", delta, action.capitalize(),
                           location_name, "Measured", 1])


if __name__ == "__main__":
    main()
