#!/usr/bin/env python3
"""Checks that the table in docs/real-host.md lists exactly the checks of tests/contract, and that the files that it names
exist."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
CHECK = re.compile(r'\bcheck\("([a-z0-9-]+)"')
ROW = re.compile(r"^\| `([a-z0-9-]+)` \|", re.MULTILINE)
FILE = re.compile(r"`((?:src|devkit|package|tests)/[^`]+)`")


def main():
    checks = [name for source in sorted((ROOT / "tests/contract").glob("*_checks.cpp"))
              for name in CHECK.findall(source.read_text(encoding="utf-8"))]
    document = (ROOT / "docs/real-host.md").read_text(encoding="utf-8")
    rows = ROW.findall(document)
    faults = [f"two checks are named {name}" for name in sorted({n for n in checks if checks.count(n) > 1})]
    faults += [f"explained twice: {name}" for name in sorted({n for n in rows if rows.count(n) > 1})]
    faults += [f"not explained: {name}" for name in sorted(set(checks) - set(rows))]
    faults += [f"explained, but no such check: {name}" for name in sorted(set(rows) - set(checks))]
    faults += [f"no such file: {name}" for name in sorted(set(FILE.findall(document))) if not (ROOT / name).exists()]
    print("\n".join(faults) or f"{len(checks)} checks, all explained")
    return 1 if faults or not checks else 0


sys.exit(main())
