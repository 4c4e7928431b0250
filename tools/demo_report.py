#!/usr/bin/env python3
"""Tells what happened in the demo's transcript and verifies what the service stored.

usage: demo_report.py DEMO_FOLDER    (transcript.jsonl, sandbox/, pictures/)
"""
import json
import pathlib
import sys


def fail(sentence):
    print(f"demo: {sentence}")
    sys.exit(1)


def block(event, block_id):
    return next((b.get("label", "").strip() for b in event.get("blocks", []) if b["id"] == block_id), "")


def account(event):
    """One line for what a user would notice, or None."""
    kind = event["event"]
    if kind == "run":
        return "the plug-in runs"
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
    if kind == "upload":
        return "uploaded " + ", ".join(f"{f['name']} ({f['size']} bytes)" for f in event["files"])
    if kind == "log" and event["level"] in ("WARNING", "ERROR"):
        return f"log: {event['text']}"
    return None


def stored_file(sandbox, upload, entry):
    path = sandbox / "service" / "revisions" / str(upload["revisionId"]) / entry["name"]
    if not path.is_file():
        fail(f"the service stored no file for {entry['name']}")
    return path


def verify(sandbox, upload):
    for entry in upload["files"]:
        original = sandbox / "parts" / entry["name"]
        stored = stored_file(sandbox, upload, entry)
        if not original.is_file() or original.read_bytes() != stored.read_bytes():
            fail(f"the stored bytes of {entry['name']} are not the part's bytes")
        print(f"verified {entry['name']}: {stored.stat().st_size} bytes, sha256 {entry['sha256'][:16]}…")
    return len(upload["files"])


def main():
    demo = pathlib.Path(sys.argv[1])
    sandbox = demo / "sandbox"
    events = [json.loads(line) for line in (demo / "transcript.jsonl").read_text(encoding="utf-8").splitlines()]
    for event in events:
        line = account(event)
        if line:
            print(f"- {line}")
    print()
    uploads = [event for event in events if event["event"] == "upload"]
    if not uploads:
        fail("nothing was uploaded")
    service = json.loads((sandbox / "service" / "service.json").read_text(encoding="utf-8"))
    names = {workspace["id"]: workspace["name"] for workspace in service["workspaces"]}
    count = sum(verify(sandbox, upload) for upload in uploads)
    leftovers = [p.name for p in (sandbox / "temp").glob("pivra-*")]
    if leftovers:
        fail(f"temporary folders were left behind: {', '.join(leftovers)}")
    pictures = sorted((demo / "pictures").glob("*.png"))
    if len(pictures) < 3:
        fail("the pictures of the three dialogs are missing")
    print("pictures: " + ", ".join(str(p) for p in pictures))
    print(f'demo: ok, {count} file{"" if count == 1 else "s"} uploaded to "{names[uploads[-1]["workspaceId"]]}", contents verified')


main()
