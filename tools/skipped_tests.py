#!/usr/bin/env python3
"""Lists the skipped tests of a CTest report, with the reason each gave.

Ends with 1 when there are any and nothing may be skipped: with CI=true or BRINDLE_NO_SKIP=1.
With --count before the report it prints three numbers instead: tests, failures, skipped.
"""
import os
import re
import sys
from xml.etree import ElementTree


def reason(case):
    if case.get("status") == "disabled":
        return "disabled"
    told = re.search(r": Skipped\n(.*?)\n*\[  SKIPPED \]", case.findtext("system-out") or "", re.DOTALL)
    return " ".join(told[1].split()) if told and told[1].strip() else "no reason told"


def main():
    cases = list(ElementTree.parse(sys.argv[-1]).iter("testcase"))
    skipped = [case for case in cases if case.get("status") in ("notrun", "disabled")]
    if sys.argv[1] == "--count":
        print(len(cases), sum(case.get("status") == "fail" for case in cases), len(skipped))
        return 0
    if not skipped:
        return 0
    print("\nSkipped:", *(f"{case.get('name')} ({reason(case)})" for case in skipped), sep="\n  ")
    if os.environ.get("CI") == "true" or os.environ.get("BRINDLE_NO_SKIP") == "1":
        print(f"nothing may be skipped here: {len(skipped)} tests were")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
