#!/usr/bin/python3 -B
"""The user at the browser: does in Chromium what an address that the plug-in has opened is for, and checks the pages.

usage: visit.py ADDRESS

PIVRA_BROWSER_FOLDER names the folder in which the replay has its sandbox/ and the pictures/ of the pages go. Each check
is a line on standard error, "ok NAME" or "FAILED NAME: what was there". Exit status 1 when one failed.
"""
import hashlib
import json
import os
import pathlib
import re
import sys
import urllib.parse

from selenium.common.exceptions import WebDriverException
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

from chromium import FOREIGN_NAME, chromium
from page_checks import check_page, texts


class Report:
    def __init__(self):
        self.failed = False

    def check(self, name, good, found=""):
        self.failed = self.failed or not good
        line = f"ok {name}" if good else f"FAILED {name}: {found}"
        # One line, and no query: those of addresses hold secrets.
        print(re.sub(r"\?\S*", "?***", " ".join(line.split())), file=sys.stderr)

    def equal(self, name, found, wanted):
        self.check(name, found == wanted, f"{found!r} instead of {wanted!r}")


def by_role(driver, role, name):
    """The one element that assistive technology presents so."""
    candidates = driver.find_elements(By.CSS_SELECTOR, "a, button, input, [role]")
    found = [e for e in candidates if e.aria_role == role and e.accessible_name == name]
    if len(found) != 1:
        raise LookupError(f"there are {len(found)} of {role} '{name}'")
    return found[0]


def press(driver, role, name):
    """Presses a link or button, and waits for the page that comes of it."""
    before = driver.find_element(By.TAG_NAME, "html")
    by_role(driver, role, name).click()
    WebDriverWait(driver, 20).until(lambda _: driver.find_element(By.TAG_NAME, "html") != before)


def heading(driver):
    return driver.find_element(By.TAG_NAME, "h1").text


def path_of(driver):
    return urllib.parse.urlsplit(driver.current_url).path


def visit_sign_in(driver, report, address, folder):
    driver.get(address)
    report.equal("sign-in: has its heading", heading(driver), "Sign in to Pivra")
    text = texts(driver, "main")[0]
    report.check("sign-in: names the user", "Ada O'Lind <b> (ada.lind@example.com)" in text, text)
    report.equal("sign-in: offers two answers", texts(driver, "button"), ["Sign in", "Refuse"])
    check_page(driver, report, "sign-in", folder / "pictures")

    press(driver, "button", "Sign in")
    report.equal("signed-in: has its heading", heading(driver), "You are signed in")
    report.equal("signed-in: came from the service", path_of(driver), "/callback")
    check_page(driver, report, "signed-in", folder / "pictures")


def last_upload(sandbox):
    upload = json.loads((sandbox / "service" / "uploads.jsonl").read_text("utf-8").splitlines()[-1])
    service = json.loads((sandbox / "service" / "service.json").read_text("utf-8"))
    upload["workspace"] = next(w["name"] for w in service["workspaces"] if w["id"] == upload["workspaceId"])
    return upload


def table_rows(driver):
    names = texts(driver, "thead th")
    rows = driver.find_elements(By.CSS_SELECTOR, "tbody tr")
    return [dict(zip(names, [cell.text for cell in row.find_elements(By.CSS_SELECTOR, "th, td")])) for row in rows]


def check_files(driver, report, upload, parts):
    """The page against the parts from which the upload was made."""
    rows = table_rows(driver)
    report.equal("revision: lists the files", [row["File"] for row in rows], [file["name"] for file in upload["files"]])
    for row, file in zip(rows, upload["files"]):
        contents = (parts / file["name"]).read_bytes()
        wanted = {
            "File": file["name"],
            "Bytes": f"{len(contents):,}",
            "Revision": file["revision"],
            "File id": file["fileId"],
            "SHA-256": hashlib.sha256(contents).hexdigest(),
        }
        report.equal(f"revision: tells all of {file['name']}", row, wanted)


def check_overview(driver, report, upload):
    report.equal("workspaces: has its heading", heading(driver), "Workspaces")
    listed = {}
    for section in driver.find_elements(By.TAG_NAME, "section"):
        listed[section.find_element(By.TAG_NAME, "h2").text] = [
            link.text for link in section.find_elements(By.TAG_NAME, "a")
        ]
    wanted = {"Gearbox": ["cover.prt"], upload["workspace"]: [upload["fileName"]]}
    report.equal("workspaces: each lists its revisions", listed, wanted)


def check_other_sites(driver, report, address):
    """Another site's form, and another name for this computer, are turned away."""
    origin = address.rpartition("/")[0]
    form = f"<form method=post action='{origin}/authorize'><button name=decision value=accept>Send</button></form>"
    driver.get("data:text/html," + urllib.parse.quote(form))
    press(driver, "button", "Send")
    found = driver.find_element(By.TAG_NAME, "body").text
    report.equal("another site's form is refused", found, "Only this service's own pages may ask this.")
    driver.get(origin.replace("127.0.0.1", FOREIGN_NAME) + "/")
    found = driver.find_element(By.TAG_NAME, "body").text
    report.check("another name is refused", found.startswith("This service has no other name than"), found)


def visit_model(driver, report, address, folder):
    upload = last_upload(folder / "sandbox")
    driver.get(address)
    report.equal("revision: has its heading", heading(driver), upload["fileName"])
    report.equal("revision: tells where it is", texts(driver, "dd")[:2], [upload["workspace"], upload["revision"]])
    check_files(driver, report, upload, folder / "sandbox" / "parts")
    check_page(driver, report, "revision", folder / "pictures")

    press(driver, "link", "All workspaces")
    check_overview(driver, report, upload)
    check_page(driver, report, "workspaces", folder / "pictures")
    press(driver, "link", upload["fileName"])
    report.equal("workspaces: its link leads to the revision", driver.current_url, address)
    check_other_sites(driver, report, address)


def main():
    address = sys.argv[1]
    folder = pathlib.Path(os.environ["PIVRA_BROWSER_FOLDER"])
    (folder / "pictures").mkdir(exist_ok=True)
    visit = {"/authorize": visit_sign_in, "/models": visit_model}[urllib.parse.urlsplit(address).path]
    report = Report()
    try:
        with chromium(folder) as driver:
            visit(driver, report, address, folder)
    except (WebDriverException, LookupError) as error:
        report.check(f"{visit.__name__} comes to its end", False, str(error).splitlines()[0])
    sys.exit(report.failed)


if __name__ == "__main__":
    main()
