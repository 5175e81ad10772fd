"""A Chromium without a window, for tests of pages and for pictures of them."""

import json
import shutil
import subprocess

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service

FLAGS = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
         "--disable-background-networking", "--disable-component-update", "--force-color-profile=srgb",
         "--hide-scrollbars"]


def start(width=1440, height=900):
    options = Options()
    options.binary_location = shutil.which("chromium")
    for flag in [*FLAGS, f"--window-size={width},{height}"]:
        options.add_argument(flag)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)


def explain(tool, definition, text, page):
    """Makes the page and returns the exit status: 1 means that it shows trouble."""
    done = subprocess.run([tool, "explain", definition, text, "--html", page], capture_output=True, timeout=120,
                          check=False)
    if done.returncode not in (0, 1) or done.stdout:
        raise RuntimeError(f"explain: status {done.returncode}: {done.stdout!r} {done.stderr!r}")
    return done.returncode


def requests(driver):
    """The addresses that were asked for since the last call."""
    messages = (json.loads(entry["message"])["message"] for entry in driver.get_log("performance"))
    return [message["params"]["request"]["url"] for message in messages
            if message["method"] == "Network.requestWillBeSent"]
