#!/usr/bin/env python3
"""Starts a host while another one uploads; both have the same folder for temporary files. The first one goes on when a
file tells it to.

usage: play.py FOLDER REPLAYS HOST...    (HOST: the command that plays a replay)
"""
import json
import pathlib
import shutil
import subprocess
import sys

FOLDER, REPLAYS, HOST = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3:]
TEMP = FOLDER / "temp"


def start(name, **streams):
    return subprocess.Popen([*HOST, "--keep", "--sandbox", FOLDER / name, "--temp", TEMP, REPLAYS / f"{name}.json"], **streams)


def wait_until_uploading(host):
    for line in host.stdout:
        if json.loads(line)["event"] == "look":
            return
    sys.exit("the first host ended before it uploaded")


shutil.rmtree(FOLDER, ignore_errors=True)
(TEMP / "pivra-of-an-earlier-session").mkdir(parents=True)
uploading = start("uploading", stdout=subprocess.PIPE, text=True, encoding="utf-8")
wait_until_uploading(uploading)
starting = start("starting", stdout=subprocess.DEVNULL).wait()
left = sorted(path.relative_to(TEMP).as_posix().split("/")[-1] for path in TEMP.rglob("*") if path.is_file())
folders = [path.name for path in TEMP.iterdir()]
(FOLDER / "uploading" / "go").mkdir()
(FOLDER / "uploading" / "go" / "pivra-integration.log").touch()
uploading.stdout.read()
finished = uploading.wait()
print(f"first: {finished}, second: {starting}, files while both ran: {left}, folders: {folders}")
gone = not any(TEMP.iterdir())
sys.exit(0 if (finished, starting, left, len(folders), gone) == (0, 0, ["plate.prt"], 1, True) else 1)
