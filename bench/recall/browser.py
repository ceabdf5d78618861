"""Runs built applications in headless Chromium, to confirm what is annotated: which methods are called, and where."""

import base64
import fcntl
import json
import mimetypes
import os
import pathlib
import re
import select
import shutil
import subprocess
import tempfile
import time
import urllib.parse

HERE = pathlib.Path(__file__).resolve().parent
ORIGIN = "http://television.invalid/"
_types = {".js": "text/javascript", ".mjs": "text/javascript", ".json": "application/json", ".php": "text/html",
          ".jsp": "text/html", ".txt": "text/plain", ".xhtml": "application/xhtml+xml", ".inc": "text/javascript",
          ".html": "text/html", ".htm": "text/html", ".svg": "image/svg+xml", "": "text/html"}


class Gone(Exception):
    """The browser does not answer."""


class Browser:
    """Headless Chromium at the ends of two pipes. As root it is run as nobody: it refuses root, with its sandbox on."""

    def __init__(self, program):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="recall-browser-"))
        command = [program, "--headless", "--remote-debugging-pipe", "--disable-gpu", "--no-first-run",
                   "--disable-background-networking", "--disable-component-update", "--mute-audio",
                   f"--user-data-dir={self.home}/profile"]
        if os.geteuid() == 0:
            shutil.chown(self.home, "nobody", "nogroup")
            command = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups", *command]
        from_us, to_browser = os.pipe()
        from_browser, to_us = os.pipe()
        high = [fcntl.fcntl(end, fcntl.F_DUPFD, 20) for end in (from_us, to_us)]

        def place_pipes():
            os.dup2(high[0], 3)
            os.dup2(high[1], 4)

        self.process = subprocess.Popen(command, preexec_fn=place_pipes, pass_fds=(3, 4), cwd=self.home,
                                        env={**os.environ, "HOME": str(self.home)}, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for end in (from_us, to_us, *high):
            os.close(end)
        self.write, self.read = to_browser, from_browser
        self.rest, self.next, self.events = b"", 0, []

    def close(self):
        self.process.terminate()
        try:
            self.process.wait(5)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        os.close(self.write)
        os.close(self.read)
        shutil.rmtree(self.home, ignore_errors=True)

    def _receive(self, until):
        """The next message, or None when it is `until`."""
        while b"\0" not in self.rest:
            left = until - time.monotonic()
            if left <= 0 or not select.select([self.read], [], [], left)[0]:
                return None
            data = os.read(self.read, 1 << 20)
            if not data:
                raise Gone("the browser has ended")
            self.rest += data
        message, self.rest = self.rest.split(b"\0", 1)
        return json.loads(message)

    def send(self, method, session=None, **parameters):
        self.next += 1
        message = {"id": self.next, "method": method, "params": parameters}
        if session:
            message["sessionId"] = session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self.write, data):]
        return self.next

    def call(self, method, session=None, handle=None, seconds=10, **parameters):
        """The answer. Events that come before it are given to `handle`."""
        number, until = self.send(method, session, **parameters), time.monotonic() + seconds
        while True:
            message = self._receive(until)
            if message is None:
                raise Gone(f"no answer to {method}")
            if message.get("id") == number:
                if "error" in message:
                    raise Gone(f"{method}: {message['error']['message']}")
                return message["result"]
            if "method" in message and handle:
                handle(message)

    def wait(self, done, handle, seconds):
        until = time.monotonic() + seconds
        while not done():
            message = self._receive(until)
            if message is None:
                return False
            if "method" in message:
                handle(message)
        return True


def _answer(browser, session, folder, parameters):
    """One request, from the files of the package; there is nothing else."""
    if not parameters["request"]["url"].startswith(ORIGIN):
        browser.send("Fetch.failRequest", session, requestId=parameters["requestId"], errorReason="AddressUnreachable")
        return
    url = urllib.parse.urlsplit(parameters["request"]["url"])
    path = folder / urllib.parse.unquote(url.path).lstrip("/")
    if not path.is_file():
        browser.send("Fetch.fulfillRequest", session, requestId=parameters["requestId"], responseCode=404)
        return
    kind = _types.get(path.suffix) or mimetypes.guess_type(path.name)[0] or "application/octet-stream"
    browser.send("Fetch.fulfillRequest", session, requestId=parameters["requestId"], responseCode=200,
                 responseHeaders=[{"name": "Content-Type", "value": kind}],
                 body=base64.b64encode(path.read_bytes()).decode())


_frame = re.compile(re.escape(ORIGIN) + r"([^\s()?#]*)(?:[?#][^\s():]*)?:(\d+):\d+")


def run(browser, folder, start):
    """What the application calls: a list of {plugin, method, frames}, frames being (path, line); and its errors."""
    calls, errors, state = [], [], {"loaded": False}
    target = browser.call("Target.createTarget", url="about:blank")["targetId"]
    session = browser.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]

    def handle(message):
        parameters = message["params"]
        if message["method"] == "Fetch.requestPaused":
            _answer(browser, message["sessionId"], folder, parameters)
        elif message["method"] == "Runtime.bindingCalled":
            call = json.loads(parameters["payload"])
            call["frames"] = [(urllib.parse.unquote(path) or start, int(line))
                              for path, line in _frame.findall(call.pop("stack"))]
            calls.append(call)
        elif message["method"] == "Page.javascriptDialogOpening":
            browser.send("Page.handleJavaScriptDialog", message["sessionId"], accept=False)
        elif message["method"] == "Page.loadEventFired":
            state["loaded"] = True
        elif message["method"] == "Runtime.consoleAPICalled" and parameters["type"] == "error":
            errors.append(" ".join(str(one.get("value") or one.get("description")) for one in parameters["args"]))
        elif message["method"] == "Runtime.exceptionThrown":
            details = parameters["exceptionDetails"]
            errors.append(details.get("exception", {}).get("description", details["text"]))

    for method, parameters in [
            ("Page.enable", {}), ("Runtime.enable", {}), ("Fetch.enable", {}),
            ("Runtime.addBinding", {"name": "recallCall"}),
            ("Page.addScriptToEvaluateOnNewDocument", {"source": (HERE / "recorder.js").read_text()})]:
        browser.call(method, session, handle, **parameters)
    browser.call("Page.navigate", session, handle, url=ORIGIN + start)
    browser.wait(lambda: state["loaded"], handle, 10)
    browser.wait(lambda: False, handle, 0.3)
    for attempt in range(3):  # a page may replace itself while it is driven
        try:
            browser.call("Runtime.evaluate", session, handle, 15, expression=(HERE / "driver.js").read_text(),
                         awaitPromise=True)
            break
        except Gone:
            browser.wait(lambda: False, handle, 0.5)
    browser.wait(lambda: False, handle, 0.2)
    browser.call("Target.closeTarget", targetId=target)
    return calls, errors
