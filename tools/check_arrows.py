#!/usr/bin/env python3
"""Checks which room includes which: arrows between the folders of src, the host's headers, windows.h, the devkit."""
import pathlib
import re
import sys

# A room may include itself and what stands behind it here.
ARROWS = {
    "platform": [],
    "nx": ["platform"],
    "logging": ["platform"],
    "config": ["logging", "platform"],
    "traceability": ["config", "logging", "platform", "nx"],
    "export": ["traceability", "config", "logging", "platform", "nx"],
    "service": ["config", "logging", "platform", "export/model_metadata.h"],
    "ui": ["service", "export", "traceability", "config", "logging", "platform", "nx"],
    "entry": ["ui", "service", "export", "traceability", "config", "logging", "platform", "nx"],
}
HOST_ROOMS = {"nx", "traceability", "export", "ui", "entry"}
CLIENT_LIBRARY_ROOMS = {"logging", "service", "ui", "entry"}
INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]')


def complaint(room, name, kind, target):
    if kind == '"':
        top = target.split("/", 1)[0]
        if top == room or top in ARROWS[room] or target in ARROWS[room]:
            return None
        return f"may not include {target}"
    if target.lower() == "windows.h" or target in ("shellapi.h", "tlhelp32.h"):
        return None if name.endswith("_win.cpp") else "may not include a Windows header"
    if re.match(r"uf[_.a-z]*\.h$", target) or target.startswith("NXOpen/"):
        return None if room in HOST_ROOMS else "may not include the host's headers"
    if target.startswith("cpp_piv/"):
        return None if room in CLIENT_LIBRARY_ROOMS else "may not include the client library"
    if target.startswith("devkit/") or target == "event_loop.h":
        return "may not know the devkit"
    return None


def main():
    source = pathlib.Path(__file__).resolve().parent.parent / "src"
    found = []
    for file in sorted(source.rglob("*")):
        if file.suffix not in (".h", ".cpp"):
            continue
        room = file.relative_to(source).parts[0]
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            trouble = match and complaint(room, file.name, match[1], match[2])
            if trouble:
                found.append(f"src/{file.relative_to(source)}:{number}: {room} {trouble}")
    print("\n".join(found) or "arrows: ok")
    return 1 if found else 0


sys.exit(main())
