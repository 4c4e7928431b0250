#!/usr/bin/env python3
"""Checks the dependency rule: which layer of src includes which, and who may know the host, Windows and the devkit."""
import pathlib
import re
import subprocess
import sys

# A layer may include itself and the layers, or single headers, that stand behind it here.
MAY_INCLUDE = {
    "platform": [],
    "logging": ["platform"],
    "nx": ["logging", "platform"],
    "config": ["logging", "platform"],
    "traceability": ["config", "nx", "logging", "platform"],
    "export": ["traceability", "config", "nx", "logging", "platform"],
    "service": ["config", "logging", "platform", "export/model_metadata.h"],
    "ui": ["service", "export", "traceability", "config", "nx", "logging", "platform"],
    "entry": ["ui", "service", "export", "traceability", "config", "nx", "logging", "platform"],
}
HOST_LAYERS = {"nx", "traceability", "export", "ui", "entry"}
CLIENT_LIBRARY_LAYERS = {"service", "ui", "entry"}
WINDOWS_HEADERS = {"windows.h", "objbase.h", "shellapi.h", "tlhelp32.h"}
# Calls that start programs or load libraries, and the files of src that may know them.
GUARDED = {re.compile(r"\b(ShellExecute|LoadLibrary|CreateProcess|WinExec|_?w?(system|popen)\()"):
               ("src/platform/desktop.h", "src/platform/desktop_win.cpp"),
           re.compile(r"\bshellOpen\b"):
               ("src/platform/desktop.h", "src/platform/desktop_win.cpp", "src/service/system_browser.h")}
INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]')


def fault_of_layer(layer, name, target):
    """What is wrong with including `target`, a header that is not ours, in the file `name` of `layer`."""
    if target.lower() in WINDOWS_HEADERS:
        return None if name.endswith("_win.cpp") else "may not include a Windows header"
    if re.match(r"uf[_.a-z]*\.h$", target) or target.startswith("NXOpen/"):
        return None if layer in HOST_LAYERS else "may not include the host's headers"
    if target.startswith("cpp_piv/"):
        return None if layer in CLIENT_LIBRARY_LAYERS else "may not include the client library"
    if target.startswith("devkit/") or target == "event_loop.h":
        return "may not know the devkit"
    return None


def fault(file, bracket, target):
    layer_of_target = target.split("/", 1)[0]
    ours = layer_of_target in MAY_INCLUDE and "/" in target
    if ours and bracket == "<":
        return "includes one of our headers in angle brackets; write it in quotes"
    if file.parts[0] != "src":
        return None
    layer = file.parts[1]
    if not ours:
        return fault_of_layer(layer, file.name, target)
    allowed = [layer, *MAY_INCLUDE[layer]]
    return None if layer_of_target in allowed or target in allowed else f"may not include {target}"


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.cpp", "*.h", "*.hxx"], cwd=root,
                            check=True, capture_output=True, text=True).stdout.split()
    found = []
    for name in sorted(set(listed)):
        if not (root / name).exists():
            continue
        for number, line in enumerate((root / name).read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            trouble = match and fault(pathlib.PurePosixPath(name), match[1], match[2])
            if trouble:
                found.append(f"{name}:{number}: {trouble}")
            if name.startswith("src/") and any(call.search(line) and name not in may for call, may in GUARDED.items()):
                found.append(f"{name}:{number}: may not start programs or load libraries")
    print("\n".join(found) or "dependencies: ok")
    return 1 if found else 0


sys.exit(main())
