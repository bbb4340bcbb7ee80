"""What a game costs as a web page: page_bench.py ZEM SOURCE_FOLDER. Needs Chromium; ZEM is the program or its command line."""
import os
import statistics
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../tests/web"))
from browser import Browser, find_browser  # noqa: E402

# Notes when the first text of the story, or of a page that has nothing else, is on the screen.
WATCH = """(() => { const look = () => { const p = document.querySelector('#story p, .empty'); if (p && p.textContent && !window.first)
    { window.first = -1; requestAnimationFrame(() => requestAnimationFrame(() => { window.first = performance.now(); })); } };
    new MutationObserver(look).observe(document, { childList: true, subtree: true }); })()"""
TURN = """(() => { document.getElementById('line').value = '%s'; const begin = performance.now();
    document.getElementById('form').requestSubmit(); document.body.offsetHeight; return performance.now() - begin; })()"""


def processor_time(browser):
    """Milliseconds that the page has used of a processor, whatever else runs on it."""
    metrics = browser.send("Performance.getMetrics")["metrics"]
    return 1000 * next(one["value"] for one in metrics if one["name"] == "TaskDuration")


def main(zem, source):
    browser = Browser(find_browser())
    try:
        with tempfile.TemporaryDirectory() as folder:
            pages = {"an empty page": folder + "/empty.html"}
            with open(pages["an empty page"], "w", encoding="utf-8") as file:
                file.write("<!DOCTYPE html><title>x</title><p class=empty>x</p>")
            for game in ("samples/gatehouse", "samples/archipelago", "samples/lighthouse", "tests/data/web/hostile"):
                pages[game] = "%s/%s.html" % (folder, os.path.basename(game))
                subprocess.run([zem, "publish", source + "/" + game + ".kel", pages[game]], check=True, capture_output=True)
                print("%s: %d bytes" % (game, os.path.getsize(pages[game])))
            browser.send("Page.addScriptToEvaluateOnNewDocument", source=WATCH)
            times = {name: [] for name in list(pages)[:3]}
            for _ in range(9):
                for name, times_of_page in times.items():
                    browser.open("file://" + pages[name], "window.first > 0")
                    times_of_page.append(browser.evaluate("window.first"))
                    browser.evaluate("localStorage.clear()")
            empty = statistics.median(times["an empty page"])
            for name, times_of_page in times.items():
                median = statistics.median(times_of_page)
                print("first text of %s: %.0f ms, %.1f times an empty page" % (name, median, median / empty))
            browser.open("file://" + pages["tests/data/web/hostile"])
            browser.send("Performance.setTimeDomain", timeDomain="threadTicks")
            browser.send("Performance.enable")
            for line in ("endless", "flood", "grow"):
                turns, processor = [], []
                for _ in range(5):
                    before = processor_time(browser)
                    turns.append(browser.evaluate(TURN % line))
                    processor.append(processor_time(browser) - before)
                print("hostile turn %s: median %.0f ms, worst %.0f ms; of the processor %.0f and %.0f ms" %
                      (line, statistics.median(turns), max(turns), statistics.median(processor), max(processor)))
    finally:
        browser.close()


main(*sys.argv[1:3])
