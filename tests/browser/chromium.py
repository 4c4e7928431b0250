"""A headless Chromium of its own, which knows nothing of the user's and reaches this computer alone."""
import contextlib
import os
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

# A name of somebody else's that leads to this computer.
FOREIGN_NAME = "other.example"

SWITCHES = [
    "--headless=new",
    "--disable-dev-shm-usage",
    "--disable-gpu",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-default-apps",
    "--disable-sync",
    "--no-first-run",
    "--no-proxy-server",
    "--disable-features=HttpsUpgrades,OptimizationHints,MediaRouter,Translate",
    f"--host-resolver-rules=MAP {FOREIGN_NAME} 127.0.0.1, MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
]


def options_for(profile):
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    for switch in [*SWITCHES, f"--user-data-dir={profile}"]:
        options.add_argument(switch)
    if os.geteuid() == 0:
        options.add_argument("--no-sandbox")  # the sandbox does not work for root
    return options


@contextlib.contextmanager
def chromium(folder):
    """Gives a driver. The profile, in which addresses are remembered, lies in `folder` and goes with the browser."""
    with tempfile.TemporaryDirectory(prefix="profile-", dir=folder, ignore_cleanup_errors=True) as profile:
        os.environ["HOME"] = profile
        for name in ("TMP", "TEMP", "TMPDIR", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"):
            os.environ.pop(name, None)
        service = Service(executable_path="/usr/bin/chromedriver", log_path=os.devnull)
        driver = webdriver.Chrome(service=service, options=options_for(profile))
        try:
            driver.set_page_load_timeout(20)
            yield driver
        finally:
            driver.quit()
