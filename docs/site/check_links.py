"""Checks that every link of the project's Markdown, and of the site where that is built, leads somewhere.

A link within the project must name a file, or a heading of a page. A page of the site must load nothing from elsewhere,
so that it can be read without a network.

Usage: check_links.py PROJECT_FOLDER [--site SITE_FOLDER]
"""
import argparse
import html
import os
import pathlib
import posixpath
import re
import sys
import urllib.parse

import markdown_pages

LINK = re.compile(r"""<(\w+)\b[^>]*?\s(href|src)\s*=\s*(?:"([^"]*)"|'([^']*)')""")
LOADED = {"img", "script", "iframe", "source", "video", "audio", "link"}
REFERENCE = "reference/cpp/"
ANCHOR = re.compile(r"""\s(?:id|name)\s*=\s*(?:"([^"]*)"|'([^']*)')""")


def is_elsewhere(target):
    return re.match(r"[a-z][a-z0-9+.-]*:|//", target, re.IGNORECASE) is not None


def check_markdown(project):
    """What is wrong with the links of the Markdown, a line each."""
    folders = ("docs", "benchmarks", "python", "examples")
    pages = [path for folder in folders for path in (project / folder).rglob("*.md")]
    pages += project.glob("*.md")
    anchors = {path: markdown_pages.anchors(path.read_text(encoding="utf-8")) for path in pages}
    wrong, number_of_links = [], 0
    for page in sorted(pages):
        for line, target in markdown_pages.links(page.read_text(encoding="utf-8")):
            number_of_links += 1
            if is_elsewhere(target):
                continue
            path, _, anchor = target.partition("#")
            file = pathlib.Path(os.path.normpath(page.parent / path)) if path else page
            where = f"{page.relative_to(project)}:{line}: {target}"
            if not file.exists():
                wrong.append(f"{where}: there is no such file")
            elif anchor and anchor not in anchors.get(file, []):
                wrong.append(f"{where}: there is no such heading")
    print(f"{number_of_links} links of {len(pages)} Markdown pages")
    return wrong


def check_site(site):
    """What is wrong with the links of the built pages, a line each."""
    texts = {path: path.read_text(encoding="utf-8", errors="replace") for path in site.rglob("*.html")}
    files = {path.relative_to(site).as_posix() for path in site.rglob("*") if path.is_file()}
    anchors = {path.relative_to(site).as_posix():
               {html.unescape(match[1] or match[2] or "") for match in ANCHOR.finditer(text)}
               for path, text in texts.items()}
    wrong, number_of_links = [], 0
    for path, text in texts.items():
        page = path.relative_to(site).as_posix()
        text = re.sub(r"<!--.*?-->|(<script\b[^>]*>).*?</script>", lambda match: match[1] or "", text, flags=re.DOTALL)
        for tag, _, double, single in LINK.findall(text):
            target = html.unescape(double or single)
            number_of_links += 1
            if is_elsewhere(target):
                if tag in LOADED and not target.startswith(("data:", "javascript:")):
                    wrong.append(f"{page}: {target} is loaded from elsewhere")
                continue
            file, _, anchor = target.partition("#")
            file = urllib.parse.unquote(file.partition("?")[0])
            file = posixpath.normpath(posixpath.join(posixpath.dirname(page), file)) if file else page
            if file not in files:
                wrong.append(f"{page}: {target}: there is no such file")
            elif page.startswith(REFERENCE) and file.startswith(REFERENCE):
                continue  # Doxygen links to members that it leaves out
            elif anchor and urllib.parse.unquote(anchor) not in anchors.get(file, ()):
                wrong.append(f"{page}: {target}: there is no such place")
    for path in site.rglob("*.css"):
        for target in re.findall(r"url\(\s*['\"]?([^'\")]+)", path.read_text(encoding="utf-8", errors="replace")):
            if is_elsewhere(target) and not target.startswith("data:"):
                wrong.append(f"{path.relative_to(site)}: {target} is loaded from elsewhere")
    print(f"{number_of_links} links of {len(texts)} pages of the site")
    return wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("project", type=pathlib.Path)
    parser.add_argument("--site", type=pathlib.Path)
    arguments = parser.parse_args()
    wrong = check_markdown(arguments.project)
    if arguments.site:
        wrong += check_site(arguments.site)
    for line in wrong[:50]:
        print(line, file=sys.stderr)
    if len(wrong) > 50:
        print(f"and {len(wrong) - 50} more", file=sys.stderr)
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
