"""Drives a headless Chromium by its DevTools protocol over a pipe."""

import base64
import json
import os
import fcntl
import shutil
import subprocess
import tempfile

# The browser's descriptors: it reads commands and writes answers.
COMMANDS, ANSWERS = 3, 4

KEYS = {"ArrowLeft": 37, "ArrowUp": 38, "ArrowRight": 39, "ArrowDown": 40, "Enter": 13,
        "Escape": 27, "Home": 36, "End": 35, "PageUp": 33, "PageDown": 34, "Tab": 9}


class Browser:
    """One browser with one page, for a with statement."""

    def __init__(self, program="chromium"):
        self._number = 0
        self._events = []
        self._unread = b""
        self._profile = tempfile.mkdtemp(prefix="report-browser-")
        command_end, self._commands = _pipe()
        self._answers, answer_end = _pipe()

        def set_up_pipes():
            os.dup2(command_end, COMMANDS)
            os.dup2(answer_end, ANSWERS)

        # As root, as in containers, it needs --no-sandbox; it opens only our own pages.
        arguments = [program, "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                     "--disable-dev-shm-usage", "--remote-debugging-pipe",
                     "--user-data-dir=" + self._profile, "about:blank"]
        self._process = subprocess.Popen(arguments, pass_fds=(COMMANDS, ANSWERS),
                                         preexec_fn=set_up_pipes, stdin=subprocess.DEVNULL,
                                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(command_end)
        os.close(answer_end)
        self._session = None
        target = self.ask("Target.createTarget", url="about:blank")["targetId"]
        self._session = self.ask("Target.attachToTarget", targetId=target,
                                 flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.ask(domain + ".enable")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self._commands)
        self._process.terminate()
        self._process.wait()
        os.close(self._answers)
        shutil.rmtree(self._profile, ignore_errors=True)

    def ask(self, method, **parameters):
        """Sends one command and returns its result."""
        self._number += 1
        command = {"id": self._number, "method": method, "params": parameters}
        if self._session:
            command["sessionId"] = self._session
        os.write(self._commands, json.dumps(command).encode() + b"\0")
        while True:
            message = self._read()
            if message.get("id") == self._number:
                if "error" in message:
                    raise RuntimeError("%s: %s" % (method, message["error"]["message"]))
                return message["result"]
            self._events.append(message)

    def _read(self):
        while b"\0" not in self._unread:
            got = os.read(self._answers, 1 << 16)
            if not got:
                raise RuntimeError("the browser has ended")
            self._unread += got
        message, _, self._unread = self._unread.partition(b"\0")
        return json.loads(message)

    def open(self, path, width=1200, height=900, dark=False, phone=False):
        """Opens a file in a window of that size and waits until it is loaded."""
        self.resize(width, height, phone)
        self.set_media(dark)
        self._events.clear()
        self.ask("Page.navigate", url="file://" + os.path.abspath(path))
        while not any(event.get("method") == "Page.loadEventFired" for event in self._events):
            self._events.append(self._read())
        self.settle()

    def resize(self, width, height=900, phone=False):
        """Gives the window a size."""
        self.ask("Emulation.setDeviceMetricsOverride", width=width, height=height,
                 deviceScaleFactor=2 if phone else 1, mobile=phone)
        self.settle()

    def set_media(self, dark=False, media=""):
        """Sets what the system prefers, and whether the page is laid out for "print"."""
        self.ask("Emulation.setEmulatedMedia", media=media, features=[
            {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])
        self.settle()

    def evaluate(self, expression):
        """Evaluates a JavaScript expression, waiting for a promise."""
        result = self.ask("Runtime.evaluate", expression=expression, returnByValue=True,
                          awaitPromise=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"]["exception"].get("description"))
        return result["result"].get("value")

    def settle(self):
        """Waits until the page is drawn."""
        self.evaluate("new Promise((done) => requestAnimationFrame(() => "
                      "requestAnimationFrame(done)))")

    def press(self, key):
        """Presses and releases a key."""
        names = {"key": key, "code": key, "windowsVirtualKeyCode": KEYS[key]}
        text = {"text": "\r"} if key == "Enter" else {}
        self.ask("Input.dispatchKeyEvent", type="keyDown", **names, **text)
        self.ask("Input.dispatchKeyEvent", type="keyUp", **names)
        self.settle()

    def type(self, text):
        """Types text into the focused element."""
        self.ask("Input.insertText", text=text)
        self.settle()

    def click(self, element):
        """Clicks the center of the element that the expression gives."""
        place = self.evaluate(
            "(() => { const element = %s; element.scrollIntoView({block: 'center'}); "
            "const box = element.getBoundingClientRect(); "
            "return {x: box.x + box.width / 2, y: box.y + box.height / 2}; })()" % element)
        for kind in ("mousePressed", "mouseReleased"):
            self.ask("Input.dispatchMouseEvent", type=kind, button="left", clickCount=1, **place)
        self.settle()

    def screenshot(self, path):
        """Writes a picture of the whole page."""
        size = self.ask("Page.getLayoutMetrics")["cssContentSize"]
        picture = self.ask("Page.captureScreenshot", captureBeyondViewport=True,
                           clip={"x": 0, "y": 0, "width": size["width"], "height": size["height"],
                                 "scale": 1})
        with open(path, "wb") as file:
            file.write(base64.b64decode(picture["data"]))

    def print(self, path):
        """Prints the page on A4 as a PDF."""
        printed = self.ask("Page.printToPDF", paperWidth=8.27, paperHeight=11.69)
        with open(path, "wb") as file:
            file.write(base64.b64decode(printed["data"]))

    def complaints(self):
        """Exceptions and log entries since the page was opened."""
        found = []
        for event in self._events:
            if event.get("method") == "Runtime.exceptionThrown":
                details = event["params"]["exceptionDetails"]
                found.append(details.get("exception", {}).get("description", details["text"]))
            elif event.get("method") == "Log.entryAdded":
                found.append(event["params"]["entry"]["text"])
            elif event.get("method") == "Runtime.consoleAPICalled":
                found.append(str(event["params"]["args"]))
        return found

    def requests(self):
        """The addresses requested since the page was opened."""
        return [event["params"]["request"]["url"] for event in self._events
                if event.get("method") == "Network.requestWillBeSent"]


def _pipe():
    """A pipe whose ends do not collide with the browser's descriptors."""
    ends = os.pipe()
    moved = [fcntl.fcntl(end, fcntl.F_DUPFD_CLOEXEC, 10) for end in ends]
    for end in ends:
        os.close(end)
    return moved
