#!/usr/bin/env python3
"""Plays each replay once for each call that it makes to the host's interface, with that call failing.

usage: fault_sweep.py HOST FOLDER EVERY REPLAY...    (EVERY: 1 for every call, 10 for every tenth)

In each run the host itself checks that no exception reached it, that UF_initialize brackets and help contexts are closed,
and that no temporary file and no secret is left. This program checks that the files of the parts are unchanged, that an
attribute is either saved or reverted, and that the failure is visible: in a message box, in the log, or by an upload that
succeeded anyway. Prints one line per replay: "ok" or "FAILED".
"""
import concurrent.futures
import itertools
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

HOST, FOLDER, EVERY = sys.argv[1], pathlib.Path(sys.argv[2]), int(sys.argv[3])
NOT_REACHED = 3
RETURNS_POINTER = re.compile(
    r"::(GetSession|GetUI|Parts|BaseDisplay|Prototype|RootComponent|ComponentAssembly|PlotManager|CreatePrintPdfbuilder|"
    r"SourceBuilder|DrawingSheets|CreateDialog|TopBlock|FindBlock|GetBlockProperties|GetProperties|NXMessageBox)$")


def contents(replay):
    parts = json.loads(replay.read_text(encoding="utf-8"))["session"]["parts"]
    return {part["file"]: part["contents"] for part in parts if "file" in part}


def attribute_faults(events, replay):
    """Checks that each attribute ends with its original value, empty, or with a value that was saved."""
    parts = json.loads(replay.read_text(encoding="utf-8"))["session"]["parts"]
    original = {part["name"]: part.get("attributes", {}).get("PIVRA_ID") for part in parts}
    current, good = dict(original), {name: {value, ""} for name, value in original.items()}
    for event in events:
        if event["event"].startswith("attribute-"):
            current[event["part"]] = event.get("value")
        if event["event"] == "part-saved" and event["saved"]:
            good[event["part"]].add(current[event["part"]])
    return [f"{name} has the attribute {value}, which was never saved" for name, value in current.items()
            if value not in good[name]]


def is_told(events):
    return any(event["event"] == "upload"
               or event["event"] == "message-box" and event["kind"] in ("error", "warning")
               or event["event"] == "log" and event["level"] in ("WARNING", "ERROR") for event in events)


def faults_of(run, sandbox, replay):
    """The faults found after a run with a failing call."""
    events = [json.loads(line) for line in run.stdout.splitlines()]
    said = run.stderr.splitlines()
    if run.returncode not in (0, 1) or len(said) > 1:
        return [f"status {run.returncode}: {' '.join(said)[-500:]}"]
    faults = attribute_faults(events, replay)
    for name, text in contents(replay).items():
        file = sandbox / "parts" / name
        if not file.is_file() or file.read_text() != text:
            faults.append(f"{name} was changed")
    if not is_told(events):
        faults.append("the failure was not reported")
    return faults


def play(replay, number, null):
    """The name of the call that failed, or None if the replay makes fewer calls; and the faults found."""
    sandbox = FOLDER / f"{replay.stem}-{number}{'-null' if null else ''}"
    options = ["--fault", str(number)] + (["--null"] if null else [])
    run = subprocess.run([HOST, *options, "--keep", "--sandbox", str(sandbox), str(replay)], capture_output=True,
                         text=True, encoding="utf-8", timeout=120)
    name = re.search(r"^Failed call: (\S+)$", run.stderr, re.MULTILINE)
    reached = run.returncode != NOT_REACHED
    faults = faults_of(run, sandbox, replay) if reached else []
    shutil.rmtree(sandbox, ignore_errors=True)
    return (name.group(1) if name else "unknown") if reached else None, faults


def sweep(pool, replay):
    """The number of failing calls that were played, and the faults found with each."""
    played, wrong = 0, []
    for first in itertools.count(EVERY, 32 * EVERY):
        numbers = range(first, first + 32 * EVERY, EVERY)
        results = list(zip(numbers, pool.map(lambda n: play(replay, n, False), numbers)))
        nulls = [n for n, (name, _) in results if name and RETURNS_POINTER.search(name)]
        results += zip(nulls, pool.map(lambda n: play(replay, n, True), nulls))
        played += sum(1 for _, (name, _) in results if name)
        wrong += [f"call {n}, {name}: {fault}" for n, (name, faults) in results for fault in faults]
        if any(name is None for _, (name, _) in results):
            return played, wrong


def main():
    shutil.rmtree(FOLDER, ignore_errors=True)
    FOLDER.mkdir(parents=True)
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for replay in map(pathlib.Path, sys.argv[4:]):
            played, wrong = sweep(pool, replay)
            failed = failed or bool(wrong) or played < 100 // EVERY
            for line in wrong:
                print(f"FAILED {replay.stem}: " + " ".join(line.split()))
            if played < 100 // EVERY:
                print(f"FAILED {replay.stem}: only {played} calls were played")
            elif not wrong:
                print(f"ok {replay.stem}: {played} failing calls, all handled")
    return 1 if failed else 0


sys.exit(main())
