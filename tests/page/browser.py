"""Drives a headless Chromium through its debugging pipe; needs nothing beside Python."""

import itertools
import json
import os
import select
import shutil
import subprocess
import tempfile
import time


class Browser:
    """One page. What goes wrong in it is collected in `errors`, what it requests in `requests`."""

    def __init__(self, chromium, width=1000, height=3000):
        self.errors, self.requests = [], []
        self._ids, self._buffer, self._results = itertools.count(1), b"", {}
        self._folder = tempfile.mkdtemp()
        read, self._out = os.pipe()
        self._in, write = os.pipe()
        # The pipe is expected at the descriptors 3 and 4. Software draws, the same on every machine.
        self._process = subprocess.Popen(
            ["bash", "-c", 'exec 3<&"$1" 4>&"$2"; shift 2; exec "$@"', "-", str(read), str(write), chromium,
             "--headless=new", "--no-sandbox", "--remote-debugging-pipe", "--use-angle=swiftshader",
             "--enable-unsafe-swiftshader", "--disable-dev-shm-usage", "--hide-scrollbars",
             "--force-color-profile=srgb", f"--user-data-dir={self._folder}", "about:blank"],
            pass_fds=(read, write), stderr=subprocess.DEVNULL)
        os.close(read)
        os.close(write)
        self._session = None
        target = next(t for t in self.call("Target.getTargets")["targetInfos"] if t["type"] == "page")
        self._session = self.call("Target.attachToTarget", targetId=target["targetId"], flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")
        self.resize(width, height)

    def close(self):
        self._process.kill()
        self._process.wait()
        shutil.rmtree(self._folder, ignore_errors=True)

    def call(self, method, **params):
        number = next(self._ids)
        message = {"id": number, "method": method, "params": params}
        if self._session:
            message["sessionId"] = self._session
        os.write(self._out, json.dumps(message).encode() + b"\0")
        deadline = time.monotonic() + 120
        while number not in self._results:
            self._receive(deadline)
        return self._results.pop(number)

    def _receive(self, deadline):
        if not select.select([self._in], [], [], max(0, deadline - time.monotonic()))[0]:
            raise TimeoutError("the browser does not answer")
        self._buffer += os.read(self._in, 1 << 20)
        *messages, self._buffer = self._buffer.split(b"\0")
        for message in map(json.loads, messages):
            if "id" in message:
                if "error" in message:
                    raise RuntimeError(message["error"])
                self._results[message["id"]] = message["result"]
            else:
                self._note(message["method"], message["params"])

    def _note(self, method, params):
        if method == "Runtime.exceptionThrown":
            self.errors.append(params["exceptionDetails"])
        elif method == "Runtime.consoleAPICalled" and params["type"] in ("error", "assert"):
            self.errors.append(params["args"])
        elif method == "Log.entryAdded" and params["entry"]["level"] == "error":
            self.errors.append(params["entry"])
        elif method == "Network.requestWillBeSent":
            self.requests.append(params["request"]["url"])

    def open(self, url):
        self.call("Page.navigate", url=url)
        self.wait('document.readyState === "complete"')
        self.settle()

    def evaluate(self, expression):
        result = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"])
        return result["result"].get("value")

    def settle(self):
        """Waits until what was asked for has been drawn."""
        self.evaluate("new Promise((done) => { let left = 4; const next = () => (--left ? requestAnimationFrame(next)"
                      " : done()); next(); })")

    def wait(self, condition):
        deadline = time.monotonic() + 60
        while not self.evaluate(condition):
            if time.monotonic() > deadline:
                raise TimeoutError(condition)
            time.sleep(0.05)

    def resize(self, width, height, mobile=False):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=mobile)

    def press(self, key):
        text = {"text": "\r"} if key == "Enter" else {"text": key} if len(key) == 1 else {}
        self.call("Input.dispatchKeyEvent", type="keyDown", key=key, **text)
        self.call("Input.dispatchKeyEvent", type="keyUp", key=key)
        self.settle()

    def drag(self, start, end):
        (x0, y0), (x1, y1) = start, end
        self.call("Input.dispatchMouseEvent", type="mousePressed", x=x0, y=y0, button="left", clickCount=1)
        self.call("Input.dispatchMouseEvent", type="mouseMoved", x=x1, y=y1, button="left", buttons=1)
        self.call("Input.dispatchMouseEvent", type="mouseReleased", x=x1, y=y1, button="left", clickCount=1)
        self.settle()

    def swipe(self, start, end):
        places = [[{"x": start[0] + (end[0] - start[0]) * k / 4, "y": start[1] + (end[1] - start[1]) * k / 4}]
                  for k in range(5)]
        self.call("Input.dispatchTouchEvent", type="touchStart", touchPoints=places[0])
        for place in places[1:]:
            self.call("Input.dispatchTouchEvent", type="touchMove", touchPoints=place)
        self.call("Input.dispatchTouchEvent", type="touchEnd", touchPoints=[])
        self.settle()

    def screenshot(self, clip=None):
        """The PNG of the window, or of a box of x, y, width, height and scale, in base 64."""
        return self.call("Page.captureScreenshot", **({"clip": clip} if clip else {}))["data"]
