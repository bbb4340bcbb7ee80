"""Takes the pictures of a game as a web page for the manual: page_pictures.py ZEM SAMPLE FOLDER. Needs Chromium."""
import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../tests/web"))
from browser import Browser, find_browser  # noqa: E402


def main(zem, game, folder):
    browser = Browser(find_browser(), 760, 620)
    with tempfile.TemporaryDirectory() as place:
        page = place + "/page.html"
        subprocess.run([zem, "publish", game, page], check=True, capture_output=True)
        try:
            browser.open("file://" + page)
            browser.wait_for("document.getElementById('prompt').textContent !== '...'")
            for line in ("east", "give letter to brehat"):
                browser.enter(line)
            browser.letters("examine tid")
            browser.picture(folder + "/WebPage.png")
            browser.enter("")
            browser.set_dark(True)
            browser.resize(320, 560)
            browser.reload()
            browser.enter("west")
            browser.picture(folder + "/WebPage-Narrow.png")
        finally:
            browser.close()


main(*sys.argv[1:4])
