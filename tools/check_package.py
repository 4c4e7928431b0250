#!/usr/bin/env python3
"""Checks the package as an administrator receives it: its checksum, its files, and a run of the unpacked plug-in.

usage: check_package.py ZIP FOLDER HOST...

FOLDER is emptied, and the package is unpacked there. HOST is the command that starts the stand-in host, without options.
Prints one line per check: "ok" or "FAILED", and its name.
"""
import hashlib
import pathlib
import re
import shutil
import subprocess
import sys
import zipfile

from checks import SOURCES, check, differing, files_of, files_of_every_package, status

ZIP, FOLDER, HOST = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3:]
VERSION = re.search(r"project\(\w+ VERSION ([\d.]+)", (SOURCES / "CMakeLists.txt").read_text()).group(1)


def wanted_files():
    texts = re.findall(r"`([\w-]+\.txt)`", (SOURCES / "package/LICENCES.md").read_text())
    return files_of_every_package() | {f"licences/{text}" for text in texts}


def settings_in(text, pattern):
    return set(re.findall(pattern, text, re.MULTILINE))


def run(host):
    result = subprocess.run(host, stdout=subprocess.PIPE, text=True, encoding="utf-8")
    check("the host runs the unpacked plug-in", f"status {result.returncode}" if result.returncode else "")
    for what, sign in (("it uploads", '"event":"upload"'), ("its dialogs show the version", f'"label":"Version {VERSION}"')):
        check(what, "" if sign in result.stdout else f"no {sign} in the transcript")


def main():
    check("the package is named after the version", "" if ZIP.name == f"pivra-nx-{VERSION}.zip" else ZIP.name)
    checksum = ZIP.with_name(ZIP.name + ".sha256").read_text().split()[0]
    check("its checksum file matches", "" if hashlib.sha256(ZIP.read_bytes()).hexdigest() == checksum else checksum)

    shutil.rmtree(FOLDER, ignore_errors=True)
    installed = FOLDER / "Pivra für NX"
    with zipfile.ZipFile(ZIP) as package:
        package.extractall(installed)
    differing("it contains exactly the files that ship", files_of(installed), wanted_files())

    library = (installed / "application/nx-integration.dll").read_bytes()
    check("the library's resource has the version",
          "" if ("FileVersion\0\0" + VERSION).encode("utf-16-le") in library else "a different one, or none")
    properties = (installed / "application/pivra.properties").read_text()
    check("pivra.properties sets nothing", ", ".join(settings_in(properties, r"^[^#\n].*")))
    differing("pivra.properties shows each setting", settings_in(properties, r"^# (pivra_\w+) ="),
              settings_in((SOURCES / "docs/settings.md").read_text(), r"^\| `(pivra_\w+)`"))

    replay = SOURCES / "tests/replays/first-sign-in-and-upload.json"
    run([*HOST, "--installed", str(installed), "--sandbox", str(FOLDER / "Büro Süd"), str(replay)])
    return status()


sys.exit(main())
