"""Looks at a page in headless Chromium: it loads without an error or a request, its scenes are drawn and turn, tables sort.

Usage: page_test.py MAKE_PAGE STORED.png [--renew]; --renew writes the stored picture anew. Ends with 77, skipped, when there is no
Chromium or no three.js.
"""

import base64
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from browser import Browser

THREE = os.environ.get("ORMIX_THREE_SCRIPT") or "/usr/share/javascript/three/three.min.js"

# Counts of the drawn, red and blue pixels of a scene, and the mean places of the latter two.
PIXELS = """(() => {
  const canvas = document.querySelectorAll(".viewer canvas")[%d];
  const data = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height).data;
  const found = { drawn: 0, red: 0, blue: 0, redX: 0, blueX: 0, sum: 0 };
  for (let i = 0; i < data.length; i += 4) {
    if (data[i + 3] === 0) continue;
    ++found.drawn;
    found.sum += (data[i] + 3 * data[i + 1] + 7 * data[i + 2]) * (i %% 9973);
    const kind = data[i] > data[i + 2] + 60 ? "red" : data[i + 2] > data[i] + 60 ? "blue" : undefined;
    if (!kind) continue;
    ++found[kind];
    found[kind + "X"] += (i / 4) %% canvas.width;
  }
  found.redX /= found.red;
  found.blueX /= found.blue;
  return found;
})()"""

# The mean difference of two pictures in base 64, of 255.
DIFFERENCE = """(async () => {
  const [a, b] = await Promise.all(["%s", "%s"].map(async (text) => {
    const image = new Image();
    image.src = "data:image/png;base64," + text;
    await image.decode();
    const canvas = document.createElement("canvas");
    [canvas.width, canvas.height] = [image.width, image.height];
    canvas.getContext("2d").drawImage(image, 0, 0);
    return canvas.getContext("2d").getImageData(0, 0, image.width, image.height).data;
  }));
  return a.length !== b.length ? 255 : a.reduce((sum, each, i) => sum + Math.abs(each - b[i]), 0) / a.length;
})()"""

BOX = """(() => { const box = document.querySelectorAll(".viewer canvas")[0].getBoundingClientRect();
  return [box.x + scrollX, box.y + scrollY, box.width, box.height]; })()"""
COLUMN = '[...document.querySelectorAll("tbody tr")].map((row) => row.cells[1]?.textContent ?? "")'


def check(what, holds):
    if not holds:
        raise AssertionError(what)


def check_load(browser, page):
    browser.open(page)
    check(f"errors: {browser.errors}", not browser.errors)
    check(f"requests: {browser.requests}", all(url == page or url.startswith("data:") for url in browser.requests))
    check("hostile texts run", browser.evaluate("window.hacked") is None)
    check("hostile texts are no elements", browser.evaluate("document.images.length") == 1)
    check("a title", browser.evaluate("document.title").startswith("Title</script>"))
    check("a name for each picture and scene", browser.evaluate(
        "[...document.querySelectorAll('img, canvas')].every((each) => each.alt || each.ariaLabel)"))


def check_table(browser):
    click = 'document.querySelectorAll("th button")[1].%s()'
    browser.evaluate(click % "click")
    check("ascending, the empty last", browser.evaluate(COLUMN) == ["-1e3", "9", "10", ""])
    browser.evaluate(click % "focus")
    browser.press("Enter")
    check("descending by keyboard", browser.evaluate(COLUMN) == ["10", "9", "-1e3", ""])
    check("aria-sort", browser.evaluate('document.querySelectorAll("th")[1].ariaSort') == "descending")


def check_turning(browser):
    for viewer in range(2):
        browser.wait(f"({PIXELS % viewer}).drawn > 0")
    start = browser.evaluate(PIXELS % 0)
    check(f"drawn: {start}", start["drawn"] > 20000 and start["red"] > 2000 and start["blue"] > 2000)
    check("x grows to the right", start["redX"] > start["blueX"] + 50)
    second = browser.evaluate(PIXELS % 1)
    check(f"the second scene, far from the origin: {second}", second["drawn"] > 10000)
    browser.evaluate('document.querySelectorAll(".viewer canvas")[0].focus()')
    for _ in range(18):
        browser.press("ArrowRight")
    turned = browser.evaluate(PIXELS % 0)
    check(f"half a turn by keyboard: {turned}", turned["redX"] < turned["blueX"] - 50)
    browser.press("+")
    check("zoomed by keyboard", browser.evaluate(PIXELS % 0)["drawn"] > 1.3 * turned["drawn"])
    browser.press("Home")
    check("as at first", browser.evaluate(PIXELS % 0)["sum"] == start["sum"])
    x, y, width, height = browser.evaluate(BOX)
    for move in (browser.drag, browser.swipe):
        browser.press("Home")
        move((x + width / 2, y + height / 2), (x + width / 2 + 100, y + height / 2 + 10))
        moved = browser.evaluate(PIXELS % 0)
        check(f"turned by {move.__name__}", moved["sum"] != start["sum"] and moved["drawn"] > 20000)
    browser.press("Home")


def check_picture(browser, stored, is_renewed):
    x, y, width, height = browser.evaluate(BOX)
    picture = browser.screenshot({"x": x, "y": y, "width": width, "height": height, "scale": 160 / width})
    if is_renewed:
        stored.write_bytes(base64.b64decode(picture))
    kept = base64.b64encode(stored.read_bytes()).decode()
    difference = browser.evaluate(DIFFERENCE % (picture, kept))
    check(f"the picture differs by {difference} from {stored}", difference < 4)


def check_phone(browser):
    browser.resize(390, 844, mobile=True)
    browser.settle()
    check("nothing wider than a phone", browser.evaluate("document.documentElement.scrollWidth") <= 390)
    browser.call("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": "dark"}])
    check("dark ground", browser.evaluate("getComputedStyle(document.body).backgroundColor") == "rgb(21, 23, 26)")


def main(make_page, stored, *options):
    chromium = shutil.which("chromium") or shutil.which("chromium-browser") or shutil.which("google-chrome")
    if not chromium or not os.access(THREE, os.R_OK):
        print("skipped: no Chromium or no three.js (scripts/setup.sh page installs both)")
        return 77
    with tempfile.TemporaryDirectory() as folder:
        page = pathlib.Path(folder) / "page.html"
        subprocess.run([make_page, page], check=True)
        browser = Browser(chromium)
        try:
            check_load(browser, page.as_uri())
            check_table(browser)
            check_turning(browser)
            check_picture(browser, pathlib.Path(stored), "--renew" in options)
            check_phone(browser)
            check(f"errors: {browser.errors}", not browser.errors)
        finally:
            browser.close()
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
