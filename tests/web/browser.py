"""Drives a real browser as its reader does: keys, clicks, reloads. It talks to Chromium through a pipe."""
import json
import os
import select
import shutil
import subprocess
import tempfile
import time

NAMES = ("chromium", "chromium-browser", "google-chrome")


def find_browser():
    return next((path for path in map(shutil.which, NAMES) if path), None)


class Failure(Exception):
    """The browser did not do what was asked of it."""


class Browser:
    """One browser with one page. Without a network: whatever a page wants to fetch is noted and fails."""

    def __init__(self, program, width=1000, height=760):
        self.profile = tempfile.mkdtemp(prefix="zem-browser-")
        read_end, browser_out = os.pipe()
        browser_in, write_end = os.pipe()

        def connect():  # the browser reads from 3 and writes to 4
            in_, out = os.dup(browser_in), os.dup(browser_out)
            os.dup2(in_, 3)
            os.dup2(out, 4)

        self.process = subprocess.Popen(
            [program, "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run", "--mute-audio",
             "--disable-dev-shm-usage", "--disable-background-networking", "--disable-component-update",
             "--disable-extensions", "--disable-sync", "--host-resolver-rules=MAP * ~NOTFOUND",
             "--hide-scrollbars", "--remote-debugging-pipe", "--user-data-dir=" + self.profile, "about:blank"],
            preexec_fn=connect, close_fds=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(browser_in)
        os.close(browser_out)
        self.pipe_in, self.pipe_out = read_end, write_end
        self.buffer = b""
        self.number = 0
        self.session = None
        self.complaints = []  # errors of scripts and of the console
        self.requests = []  # addresses that were fetched
        target = self.send("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.send("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.send(domain + ".enable")
        self.resize(width, height)

    def close(self):
        try:
            self.session = None
            self.send("Browser.close")
            self.process.wait(20)
        except (Failure, OSError, subprocess.TimeoutExpired):
            self.process.kill()
            self.process.wait()
        os.close(self.pipe_in)
        os.close(self.pipe_out)
        shutil.rmtree(self.profile, ignore_errors=True)

    def send(self, method, **parameters):
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self.pipe_out, data):]
        number = self.number
        while True:
            answer = self.receive()
            if answer.get("id") == number:
                if "error" in answer:
                    raise Failure(method + ": " + answer["error"]["message"])
                return answer["result"]

    def receive(self):
        while b"\0" not in self.buffer:
            if not select.select([self.pipe_in], [], [], 120)[0]:
                raise Failure("the browser does not answer")
            data = os.read(self.pipe_in, 1 << 20)
            if not data:
                raise Failure("the browser has ended")
            self.buffer += data
        message, self.buffer = self.buffer.split(b"\0", 1)
        event = json.loads(message)
        self.note(event)
        return event

    def note(self, event):
        method, what = event.get("method"), event.get("params", {})
        if method == "Runtime.exceptionThrown":
            self.complaints.append(what["exceptionDetails"].get("exception", {}).get("description") or str(what))
        elif method == "Runtime.consoleAPICalled" and what["type"] in ("error", "warning"):
            self.complaints.append(str(what["args"]))
        elif method == "Log.entryAdded" and what["entry"]["level"] in ("error", "warning"):
            self.complaints.append(what["entry"]["text"])
        elif method == "Network.requestWillBeSent":
            self.requests.append(what["request"]["url"])

    def evaluate(self, script):
        """The value of an expression in the page; promises are waited for."""
        result = self.send("Runtime.evaluate", expression=script, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in result:
            raise Failure(script[:200] + ": " + str(result["exceptionDetails"].get("exception", {}).get("description")))
        return result["result"].get("value")

    def wait_for(self, script, seconds=60):
        end = time.monotonic() + seconds
        while True:
            try:
                if self.evaluate(script):
                    return
            except Failure:  # the page may be on its way
                pass
            if time.monotonic() > end:
                raise Failure("this never came true: " + script)
            time.sleep(0.02)

    def open(self, address, until="document.documentElement.dataset.ready"):
        self.follow(lambda: self.send("Page.navigate", url=address), until)

    def reload(self, until="document.documentElement.dataset.ready"):
        self.follow(lambda: self.send("Page.reload"), until)

    def follow(self, go, until):
        """Goes to a page and waits for it; the one before is told by a mark, since it may answer a while longer."""
        self.evaluate("void (window.isPageBefore = true)")
        go()
        self.wait_for("!window.isPageBefore && (%s)" % until)

    def resize(self, width, height, scale=1, coarse=False):
        self.send("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=scale,
                  mobile=coarse)

    def set_dark(self, dark):
        self.send("Emulation.setEmulatedMedia",
                  features=[{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])

    def key(self, key, text=""):
        codes = {"Enter": 13, "Tab": 9, "ArrowUp": 38, "ArrowDown": 40, "Escape": 27}
        code = codes.get(key, ord(key.upper()[0]))
        if key == "Enter":
            text = "\r"
        self.send("Input.dispatchKeyEvent", type="keyDown" if text else "rawKeyDown", key=key, code=key,
                  text=text, windowsVirtualKeyCode=code)
        self.send("Input.dispatchKeyEvent", type="keyUp", key=key, code=key, windowsVirtualKeyCode=code)

    def letters(self, text):
        """Presses a key for each letter."""
        for letter in text:
            self.key(letter, letter)

    def enter(self, line):
        """Puts a line where the caret is, as by pasting, and presses Enter."""
        if line:
            self.send("Input.insertText", text=line)
        self.key("Enter")

    def click(self, selector):
        """Clicks with the mouse in the middle of the first element."""
        # What the turn before has changed is laid out and painted first, or the element moves away from the mouse.
        painted = "await new Promise(r => requestAnimationFrame(() => requestAnimationFrame(r)));"
        box = self.evaluate("(async () => { const e = document.querySelector(%s); if (!e) return null;"
                            "e.scrollIntoView({block: 'center'}); %s const b = e.getBoundingClientRect();"
                            "return [b.x + b.width / 2, b.y + b.height / 2]; })()" % (json.dumps(selector), painted))
        if not box:
            raise Failure("there is no " + selector)
        for kind in ("mousePressed", "mouseReleased"):
            self.send("Input.dispatchMouseEvent", type=kind, x=box[0], y=box[1], button="left", clickCount=1)

    def picture(self, path):
        import base64
        with open(path, "wb") as file:
            file.write(base64.b64decode(self.send("Page.captureScreenshot", format="png")["data"]))
