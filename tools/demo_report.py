#!/usr/bin/env python3
"""Summarizes the demo's transcript and verifies what the service stored.

usage: demo_report.py REPLAY DEMO_FOLDER    (transcript.jsonl, sandbox/, pictures/)
"""
import hashlib
import json
import pathlib
import re
import sys

UUID = re.compile(r"[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}")


def fail(sentence):
    print(f"demo: {sentence}")
    sys.exit(1)


def counted(number, noun):
    return f"{number} {noun}{'' if number == 1 else 's'}"


def block(event, block_id):
    return next((b.get("label", "").strip() for b in event.get("blocks", []) if b["id"] == block_id), "")


def account(event):
    """One line for an event that a user would notice, or None."""
    kind = event["event"]
    if kind == "step" and isinstance(event["step"], dict) and "display" in event["step"]:
        return f"the user displays {event['step']['display']}"
    if kind == "dialog-shown":
        shown = {
            "start.dlx": lambda: "asks the user to sign in",
            "pivraGui.dlx": lambda: f"{block(event, 'userGreeting')} {block(event, 'fileName')}, {block(event, 'fileSize')}",
            "uploadProgress.dlx": lambda: block(event, "modelWorkspaceLabel"),
        }.get(event["dialog"], lambda: "")
        return f"dialog {event['dialog']}: {shown()}"
    if kind == "look":
        status = block(event, "primaryStatus")
        return f"dialog {event['dialog']} now shows: {status}" if status else None
    if kind == "message-box":
        return f"{event['kind']} box: {event['text']}"
    if kind == "opened":
        return f"the browser opens {event['address'].split('?')[0]}"
    if kind == "attribute-written":
        return f"{event['title']} is written into {event['part']}"
    if kind == "clone":
        return "Teamcenter exports " + ", ".join(event["files"])
    if kind == "pdf":
        return "the host prints " + counted(len(event["sheets"]), "sheet")
    if kind == "upload":
        return "uploaded " + ", ".join(f"{f['name']} ({f['size']} bytes)" for f in event["files"])
    if kind == "log" and event["level"] in ("WARNING", "ERROR"):
        return f"log: {event['text']}"
    return None


def kind_of(part, sheets):
    if sheets:
        return "drawing"
    words = ["managed" if "managed" in part else "native"]
    if "family" in part:
        words.append("part-family")
    if not UUID.fullmatch(part["uniqueIdentifier"]):
        words.append("legacy")
    return " ".join(words + ["assembly" if "components" in part else "part"])


def pages(pdf):
    return len(re.findall(rb"/Type\s*/Page\b", pdf)) if pdf.startswith(b"%PDF-") else 0


class Demo:
    def __init__(self, replay, folder):
        self.parts = {part["name"]: part for part in replay["session"]["parts"]}
        steps = [step for step in replay["steps"] if isinstance(step, dict)]
        self.pictures = [step["picture"] for step in steps if "picture" in step]
        self.managed = {p["managed"]["number"] + ".prt": p for p in self.parts.values() if "managed" in p}
        self.sandbox = folder / "sandbox"
        text = (folder / "transcript.jsonl").read_text(encoding="utf-8")
        self.events = [json.loads(line) for line in text.splitlines()]

    def uploads(self):
        """Each upload with the displayed part and the sheets printed for it."""
        part, sheets = None, []
        for event in self.events:
            if event["event"] == "step" and isinstance(event["step"], dict):
                part = event["step"].get("display", part)
            if event["event"] == "pdf":
                sheets = event["sheets"]
            if event["event"] == "upload":
                yield event, self.parts[part], sheets
                sheets = []

    def expected(self, name):
        """The bytes of the part with this file name in the host."""
        if name in self.managed:
            return b"x" * self.managed[name]["size"]
        file = self.sandbox / "parts" / name
        return file.read_bytes() if file.is_file() else None

    def verify(self, upload, sheets):
        for entry in upload["files"]:
            stored = self.sandbox / "service" / "revisions" / str(upload["revisionId"]) / entry["name"]
            if not stored.is_file():
                fail(f"the service stored no file for {entry['name']}")
            content = stored.read_bytes()
            if sheets and pages(content) != len(sheets):
                fail(f"{entry['name']} has {counted(pages(content), 'page')} for {counted(len(sheets), 'sheet')}")
            if not sheets and content != self.expected(entry["name"]):
                fail(f"the stored bytes of {entry['name']} are not the part's bytes")
            if hashlib.sha256(content).hexdigest() != entry["sha256"]:
                fail(f"the service reports a wrong checksum for {entry['name']}")

    def kinds(self):
        """The kinds of model that are open in the host."""
        return {kind_of(part, sheets) for part in self.parts.values() for sheets in ([], part.get("sheets"))}

    def workspace(self, identifier):
        service = json.loads((self.sandbox / "service" / "service.json").read_text(encoding="utf-8"))
        return next(w["name"] for w in service["workspaces"] if w["id"] == identifier)


def main():
    folder = pathlib.Path(sys.argv[2])
    demo = Demo(json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")), folder)
    for event in demo.events:
        line = account(event)
        if line:
            print(f"- {line}")
    print()
    count, kinds, workspaces = 0, set(), set()
    for upload, part, sheets in demo.uploads():
        demo.verify(upload, sheets)
        count += len(upload["files"])
        kinds.add(kind_of(part, sheets))
        workspaces.add(demo.workspace(upload["workspaceId"]))
        names = ", ".join(entry["name"] for entry in upload["files"])
        print(f"{kind_of(part, sheets)} {part['name']}: {names}; revision {upload['revisionId']}, verified")
    if kinds != demo.kinds():
        fail("not uploaded: " + ", ".join(sorted(demo.kinds() - kinds)))
    if len(workspaces) != 1:
        fail("the uploads went into several workspaces: " + ", ".join(sorted(workspaces)))
    leftovers = [p.name for p in (demo.sandbox / "temp").glob("pivra-*")]
    if leftovers:
        fail(f"temporary folders were left behind: {', '.join(leftovers)}")
    missing = [name for name in demo.pictures if not (folder / "pictures" / f"{name}.png").is_file()]
    if missing:
        fail(f"these pictures are missing: {', '.join(missing)}")
    print(f"pictures in {folder / 'pictures'}: {', '.join(demo.pictures)}")
    print(f'demo: ok, {counted(count, "file")} uploaded to "{workspaces.pop()}", contents verified')


main()
