#!/usr/bin/env python3
"""Measures the plug-in: prints a table of figures with their baselines and goals, and writes it to report.json.

usage: bench.py FOLDER NATIVE WINDOWS    (FOLDER: for what is written; NATIVE, WINDOWS: folders of the built programs)

A baseline is measured in the same run, in turns with the figure. Each time is the median of at least nine.
"""
import hashlib
import json
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDER, NATIVE, WINDOWS = (pathlib.Path(name).resolve() for name in sys.argv[1:])
WINE = ROOT / "tools/wine-run.sh"
PLAYS = 11
FILES = 2000
MIB = 1 << 20


def output(*command, **environment):
    run = subprocess.run(command, capture_output=True, text=True, encoding="utf-8", errors="replace",
                         env=os.environ | environment)
    if run.returncode != 0:
        sys.exit(f"{command[-1]} failed: {run.stderr[-2000:]}")
    return run


def native_figures():
    """The counters of each benchmark of pivra_bench. The large part lies in memory where there is room: a disk's own times
    differ by more than its goal allows."""
    memory = pathlib.Path("/dev/shm")
    has_room = memory.is_dir() and shutil.disk_usage(memory).free > 4 << 30
    runs = benchmarks("nativePart", TMPDIR=str(memory)) if has_room else benchmarks("nativePart")
    return {run["run_name"].split("/")[0]: run for run in runs + benchmarks("-nativePart")}


def benchmarks(pattern, **environment):
    report = FOLDER / "native.json"
    output(NATIVE / "pivra_bench", f"--benchmark_filter={pattern}", f"--benchmark_out={report}",
           "--benchmark_out_format=json", **environment)
    return json.loads(report.read_text())["benchmarks"]


def play(replay, *host):
    """Plays a replay, and returns the times that the host reports."""
    file = FOLDER / "replay.json"
    file.write_text(json.dumps(replay))
    return json.loads(output(*host, "--times", file).stderr.splitlines()[-1])


def session(parts, steps):
    return {"title": "A measured session", "session": {"parts": parts, "displayed": parts[0]["name"]},
            "service": {"workspaces": [{"id": 1, "name": "Gearbox"}, {"id": 2, "name": "Housings"}]},
            "steps": ["run", {"press": "signInButton"}, {"answer": "sign-in"}, "run", *steps]}


def part(number):
    return {"name": f"part {number}", "file": f"part {number}.prt", "size": 65536,
            "uniqueIdentifier": f"00000000-0000-4000-8000-{number:012}"}


def dialog_figures(plugin):
    """The shipped library under Wine: the times of the main dialog, and the calls of the service."""
    replay = session([part(1)], [{"choose": {"block": "workspaceList", "entry": "Housings"}}, "close"])
    plays = [play(replay, WINE, WINDOWS / "nxhost.exe", "--plugin", plugin) for _ in range(PLAYS)]
    shown = [next(dialog for dialog in times["dialogs"] if dialog["dialog"] == "pivraGui.dlx") for times in plays]
    own = statistics.median(dialog["own"] for dialog in shown)
    others = statistics.median(dialog["all"] - dialog["own"] for dialog in shown)
    calls = {name.removeprefix("cpp_piv::"): call["count"] for name, call in plays[0]["service"].items()}
    return own, others, (calls.get("listWorkspaces", 0), calls.get("findRevision", 0))


def hash_and_write(contents):
    folder = FOLDER / "written"
    folder.mkdir()
    start = time.perf_counter()
    for number, content in enumerate(contents):
        hashlib.sha256(content).digest()
        (folder / str(number)).write_bytes(content)
    taken = time.perf_counter() - start
    shutil.rmtree(folder)
    return taken


def upload_figures():
    """Seconds of an upload, and of writing and hashing the same files."""
    parts = [part(number) for number in range(FILES)]
    parts[0]["components"] = [other["name"] for other in parts[1:]]
    replay = session(parts, [{"press": "uploadButton"}, {"wait": {"block": {"id": "actionGroup", "show": True}}}, "close"])
    contents = [bytes([number % 256]) * 65536 for number in range(FILES)]
    uploads, baselines = [], []
    for _ in range(9):
        baselines.append(hash_and_write(contents))
        uploads.append(play(replay, NATIVE / "nxhost")["service"]["cpp_piv::upload"]["time"] / 1000)
    return uploads, baselines


def shipped(name):
    """The library as it ships: without symbols, and beside the service's."""
    shutil.copy(WINDOWS / "gopiv-windows-amd64.dll", FOLDER)
    file = FOLDER / name
    output("x86_64-w64-mingw32-strip", "-o", file, WINDOWS / name)
    return file


def entry(name, value, unit, baseline=None, baseline_name="", ratio=None, goal=None, limited="ratio"):
    """A figure. `goal` is the most that `limited` (ratio or value) may be; without one it is only stated."""
    measured = ratio if limited == "ratio" else value
    return {"name": name, "value": value, "unit": unit, "baseline": baseline, "baseline_name": baseline_name,
            "ratio": ratio, "goal": f"{limited} at most {goal:g}" if goal is not None else "stated",
            "met": measured <= goal if goal is not None else None}


def ratio_of(native, name, key, baseline_name, goal, scale=1e3, unit="ms"):
    figure = native[key]
    return entry(name, figure["value"] * scale, unit, figure["baseline"] * scale, baseline_name, figure["ratio"], goal)


def entries():
    native = native_figures()
    plugin, empty = shipped("nx-integration.dll"), shipped("empty_plugin.dll")
    own, others, (lists, lookups) = dialog_figures(plugin)
    load = json.loads(output(WINE, WINDOWS / "load_time.exe", plugin, empty).stdout)
    uploads, baselines = upload_figures()
    calls = native["hostCalls"]
    yield ratio_of(native, "prepare a native part of 1 GiB", "nativePart", "the system's copy", 1.03)
    yield entry("its memory", native["nativePart"]["memory"] / MIB, "MiB", goal=4, limited="value")
    yield ratio_of(native, "prepare 2,000 parts in 20,000 components", "assembly", "copying the files", 1.15)
    yield ratio_of(native, "prepare 2,000 parts in 200,000 components", "largeAssembly", "20,000 components", 2)
    yield entry("host calls of a repeated component", calls["component"], "calls", goal=3, limited="value")
    yield entry("host calls of a part: display", calls["display"], "calls")
    yield entry("host calls of a part: preparation", calls["preparation"], "calls")
    yield ratio_of(native, "log line below the level, three fields", "filteredLogLine", "an empty call", 3, 1e9, "ns")
    yield entry("its allocations", native["filteredLogLine"]["allocations"], "", goal=0, limited="value")
    yield ratio_of(native, "written log line", "logLine", "open, append, close", 1.2, 1e6, "us")
    yield entry("open the main dialog: the plug-in's share (Wine)", own, "ms", others, "the host and the service",
                own / others, 5, "value")
    yield entry("lists of workspaces to open it and choose another", lists, "calls", goal=1, limited="value")
    yield entry("lookups of a revision for the same", lookups, "calls", goal=2, limited="value")
    yield entry("allocations of a poll", native["pollTick"]["allocations"], "", goal=0, limited="value")
    yield entry("host calls of a poll", native["pollTick"]["calls"], "calls", goal=0, limited="value")
    yield entry("memory of a file to upload, of 100,000", native["uploadList"]["memory"], "bytes", goal=1024, limited="value")
    yield entry("the library as it ships", plugin.stat().st_size / MIB, "MiB", goal=1.5, limited="value")
    yield entry("load it and call it first (Wine)", load["value"], "us", load["baseline"], "an empty library", load["ratio"], 2)
    yield entry("upload 2,000 files of 64 KiB", statistics.median(uploads) * 1000, "ms", statistics.median(baselines) * 1000,
                "writing and hashing them", statistics.median(map(float.__truediv__, uploads, baselines)))


def table_line(figure):
    value = f"{figure['value']:.4g} {figure['unit']}".strip()
    ratio = f"{figure['ratio']:.3g} times {figure['baseline_name']}" if figure["ratio"] is not None else ""
    met = {True: "met", False: "MISSED", None: ""}[figure["met"]]
    return f"{figure['name']:50} {value:>12}  {ratio:38} {figure['goal']:20} {met}"


def main():
    shutil.rmtree(FOLDER, ignore_errors=True)
    FOLDER.mkdir(parents=True)
    figures = list(entries())
    (FOLDER / "report.json").write_text(json.dumps(figures, indent=1) + "\n")
    for figure in figures:
        print(table_line(figure))


main()
