#!/usr/bin/env python3
"""Plays replays once for each call that the plug-in makes to a neighbour (the host, files, Windows, the service) and for each
way in which that call can fail.

usage: fault_sweep.py HOST FOLDER COUNT SEED REPLAY...    (COUNT: "all", or the size of a random sample)

In each run the host itself checks that no exception reached it, that brackets, help contexts, clone sessions, builders, property
lists, dialogs and timers are ended, that no temporary file and no secret is left, and that the next run uploads. This program
checks that no thread and no handle is left, that the files of the parts are unchanged, that an attribute is either saved or
reverted, that no other bytes are uploaded than without a fault, and that a fault which changes what is uploaded is told by a
message or a warning in the log. Prints a line per replay, "ok" or "FAILED", and "fault sweep: N points, V violations".
"""
import concurrent.futures
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys

HOST, FOLDER, COUNT, SEED = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3], int(sys.argv[4])
REPLAYS = [pathlib.Path(name) for name in sys.argv[5:]]
STATUS, MESSAGE = 4711, "Injected fault."
# Without its properties the plug-in works with the public service, which is not here.
CONFIGURATION = ("platform::moduleFileName", "platform::readFile")
# Answers that are no failure: the part is no assembly, has no number in the database, or is saved; the upload had no error.
ANSWERS = {("NXOpen::Assemblies::ComponentAssembly::RootComponent", "null"), ("NXOpen::BasePart::ComponentAssembly", "null"),
           ("UF_UGMGR_decode_part_file_name", "empty"), ("NXOpen::BasePart::Save", "null"), ("cpp_piv::upload", "empty")}


class Run:
    """One play of a replay, with a fault or without."""

    def __init__(self, replay, fault=None):
        name = "-".join(re.sub(r"\W+", "-", str(value)) for value in (fault or {"without": "a fault"}).values())
        folder = FOLDER / replay.stem / name
        folder.mkdir(parents=True)
        self.document = json.loads(replay.read_text(encoding="utf-8"))
        self.parts = self.document["session"]["parts"]
        if fault:
            self.document["session"]["faults"] = [{**fault, "status": STATUS, "message": MESSAGE}]
        file = folder / replay.name
        file.write_text(json.dumps(self.document), encoding="utf-8")
        run = subprocess.run([HOST, "--recover", "--keep", "--sandbox", folder / "sandbox", file], capture_output=True,
                             text=True, encoding="utf-8", errors="replace", timeout=300)
        self.said = run.stderr.splitlines()
        self.status = run.returncode
        self.events = [json.loads(line) for line in run.stdout.splitlines()]
        self.report = json.loads(self.said.pop()) if self.said and self.said[-1].startswith("{") else None
        self.changed = [part["file"] for part in self.parts if "file" in part and not self.is_kept(folder, part)]
        shutil.rmtree(folder)

    @staticmethod
    def is_kept(folder, part):
        file = folder / "sandbox/parts" / part["file"]
        return file.is_file() and file.read_text() == part["contents"]

    def uploads(self):
        return [[(file["name"], file["sha256"]) for file in event["files"]] for event in self.events if event["event"] == "upload"]

    def warnings(self):
        """What the user or the log was told, without what differs from run to run."""
        return {re.sub(r"[0-9a-f]{8}[0-9a-f-]{8,28}", "ID", event["text"]) for event in self.events
                if event["event"] == "message-box" and event["kind"] in ("error", "warning")
                or event["event"] == "log" and event["level"] in ("WARNING", "ERROR")}

    def unsaved_attributes(self):
        """The attributes that end neither with their original value, nor empty, nor with a value that was saved."""
        original = {part["name"]: part.get("attributes", {}).get("PIVRA_ID") for part in self.parts}
        current, good = dict(original), {name: {value, ""} for name, value in original.items()}
        for event in self.events:
            if event["event"].startswith("attribute-"):
                current[event["part"]] = event.get("value")
            if event["event"] == "part-saved" and event["saved"]:
                good[event["part"]].add(current[event["part"]])
        return [name for name, value in current.items() if value not in good[name]]


def is_excused(text, run, fault):
    """Whether the fault itself brings this about."""
    if "does not upload" in text:
        return fault["call"] in CONFIGURATION or bool(run.changed)
    if "temporary file" in text:
        return fault["call"] == "platform::remove" and any("could not be deleted" in told for told in run.warnings())
    return "was changed" in text and fault["kind"] == "vanished"


def violations(run, baseline, fault):
    if run.report is None:
        return [f"status {run.status}: " + " ".join(run.said)[-500:]]
    found = list(run.said)
    found += [f"{run.report[what]} {what} are left, {baseline.report[what]} without a fault"
              for what in ("threads", "handles") if run.report[what] > baseline.report[what]]
    # An answer that comes late only asks the user to wait.
    is_no_failure = fault["kind"] == "late" or (fault["call"], fault["kind"]) in ANSWERS
    if not is_no_failure:
        found += [f"the attribute of {name} was never saved" for name in run.unsaved_attributes()]
    found += [f"{name} was changed" for name in run.changed]
    known = {file for upload in baseline.uploads() for file in upload}
    found += [f"{file[0]} was uploaded with other bytes" for upload in run.uploads() for file in upload if file not in known]
    is_told = is_no_failure or run.warnings() - baseline.warnings()
    if run.uploads()[:len(baseline.uploads())] != baseline.uploads() and not is_told:
        found.append(f"the uploads are {[len(files) for files in run.uploads()]}, and nobody is told why")
    return [text for text in found if not is_excused(text, run, fault)]


def points_of(baseline):
    return [{"call": name, "number": number, "kind": kind} for name, call in sorted(baseline.report["calls"].items())
            for number in range(1, call["count"] + 1) for kind in call["kinds"]]


def main():
    shutil.rmtree(FOLDER, ignore_errors=True)
    baselines = {replay: Run(replay) for replay in REPLAYS}
    points = [(replay, fault) for replay in REPLAYS for fault in points_of(baselines[replay])]
    chosen = points if COUNT == "all" else random.Random(SEED).sample(points, int(COUNT))
    with concurrent.futures.ThreadPoolExecutor(8 * os.cpu_count()) as pool:
        results = pool.map(lambda point: violations(Run(*point), baselines[point[0]], point[1]), chosen)
        found = [(replay, fault, text) for (replay, fault), texts in zip(chosen, results) for text in texts]
    for replay, fault, text in found:
        print(f"FAILED {replay.stem}, {fault['call']} {fault['number']} {fault['kind']}: " + " ".join(text.split()))
    for replay in REPLAYS:
        count = sum(1 for chosen_replay, _ in chosen if chosen_replay == replay)
        if not any(failed == replay for failed, _, _ in found):
            print(f"ok {replay.stem}: {count} points")
    print(f"fault sweep: {len(chosen)} points, {len(found)} violations (seed {SEED}, {len(points)} points in all)")
    return 1 if found else 0


sys.exit(main())
