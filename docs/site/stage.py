"""Puts the Markdown of the project into one folder in the order of the site, as Sphinx reads it.

The sources stay as a forge shows them. Here links between pages follow the pages to their places in the site, links to
other files of the project lead to pages that show them, and neighbouring blocks of C++ and Python become tabs.

Usage: stage.py PROJECT_FOLDER STAGE_FOLDER [--python-reference FILE.md]
"""
import argparse
import os
import pathlib
import posixpath
import sys

import markdown_pages

# The pages in order, as far as they are there, under the headings of the table of contents.
CONTENTS = {
    "": ["docs/README.md"],
    "Start": ["README.md", "docs/gallery/README.md"],
    "Tutorials": ["docs/tutorials/images.md", "docs/tutorials/parts.md", "docs/tutorials/fitting.md",
                  "docs/tutorials/choosing.md", "docs/tutorials/archives.md"],
    "The library": ["docs/overview.md", "docs/python.md", "docs/command.md", "docs/cluster.md", "docs/reference.md",
                    "docs/archives.md", "docs/behaviours.md", "docs/messages.md"],
    "How good it is": ["docs/accuracy.md", "benchmarks/README.md", "docs/References.md"],
    "The project": ["CHANGELOG.md", "CONTRIBUTING.md", "docs/development.md"],
}
# Pages that are not under docs/, or would collide there.
PLACES = {"README.md": "first-look.md", "benchmarks/README.md": "benchmarks.md"}
# What the table of contents calls a page, if not by its title.
TITLES = {"README.md": "First look", "docs/development.md": "Notes for developers"}
# Linked files that are shown as pages; others are for download.
LANGUAGES = {".cpp": "cpp", ".h": "cpp", ".py": "python", ".sh": "sh", ".txt": "text", ".cmake": "cmake"}
REFERENCE_MARK = "<!-- the site puts its links here -->"


def place_of(source):
    """Where a page of the project is in the site."""
    if source in PLACES:
        return PLACES[source]
    place = source[len("docs/"):] if source.startswith("docs/") else source.lower()
    return posixpath.join(posixpath.dirname(place), "index.md") if posixpath.basename(place) == "README.md" else place


def contents_of(project):
    """`CONTENTS` as far as it is there, and the pages that it does not name behind those of their kind."""
    listed = {source for sources in CONTENTS.values() for source in sources}
    contents = {caption: [source for source in sources if (project / source).exists()]
                for caption, sources in CONTENTS.items()}
    for caption, pattern in (("The library", "docs/**/*.md"), ("The library", "python/*.md"), ("The project", "*.md")):
        sources = sorted(path.relative_to(project).as_posix() for path in project.glob(pattern))
        contents[caption] += [source for source in sources if source not in listed]
    return contents


class Site:
    def __init__(self, project, stage):
        self.project, self.stage = project, stage
        self.contents = contents_of(project)
        self.places = {source: place_of(source) for sources in self.contents.values() for source in sources}
        self.shown = set()  # files that are no pages and are linked

    def link(self, source, target, is_image):
        """The target of a link of a page, as it is in the site."""
        if "://" in target or target.startswith(("#", "mailto:")):
            return target
        path, mark, anchor = target.partition("#")
        path = posixpath.normpath(posixpath.join(posixpath.dirname(source), path))
        if path in self.places:
            place = self.places[path]
        elif (self.project / path).is_file():
            place = path[len("docs/"):] if path.startswith("docs/") else path
            if is_image or pathlib.PurePosixPath(path).suffix not in LANGUAGES:  # a picture, or for download
                self.write(place, (self.project / path).read_bytes())
            else:
                self.shown.add(path)
                place = f"sources/{path}.md"
        else:
            raise ValueError(f"{source}: {target} is neither a page nor a file")
        return posixpath.relpath(place, posixpath.dirname(self.places[source]) or ".") + mark + anchor

    def write(self, place, content):
        """Writes a file unless it is there with this content, so that Sphinx renews only what changed."""
        path = self.stage / place
        content = content if isinstance(content, bytes) else content.encode()
        if not path.exists() or path.read_bytes() != content:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
        self.written.add(path)

    def build(self, python_reference):
        self.written = set()
        for source, place in self.places.items():
            text = (self.project / source).read_text(encoding="utf-8")
            text = markdown_pages.map_links(text, lambda target, is_image, _: self.link(source, target, is_image))
            text = tabbed(text)
            if source == "docs/README.md":
                text += "\n" + self.table_of_contents(python_reference is not None)
            if source == "docs/reference.md":
                text = text.replace(REFERENCE_MARK, reference_links(python_reference is not None))
            self.write(place, text)
        if python_reference:
            self.write("reference/python.md", pathlib.Path(python_reference).read_text(encoding="utf-8"))
        for path in sorted(self.shown):
            self.write(f"sources/{path}.md", source_page(path, (self.project / path).read_text(encoding="utf-8")))
        for path in self.stage.rglob("*"):
            if path.is_file() and path not in self.written:
                path.unlink()

    def table_of_contents(self, has_python_reference):
        trees = []
        for caption, sources in self.contents.items():
            names = ["/" + self.places[source][:-len(".md")] for source in sources]
            names = [f"{TITLES[source]} <{name}>" if source in TITLES else name for source, name in zip(sources, names)]
            if has_python_reference and "docs/reference.md" in sources:
                names.insert(sources.index("docs/reference.md") + 1, "/reference/python")
            if caption:
                trees.append(f"```{{toctree}}\n:hidden:\n:caption: {caption}\n\n" + "\n".join(names) + "\n```\n")
        return "\n".join(trees)


def tabbed(text):
    """Puts a block of C++ and the block of Python that follows it into tabs."""
    lines, tabs = text.split("\n"), []
    found = markdown_pages.blocks(text)
    for first, second in zip(found, found[1:]):
        between = lines[first.last_line:second.line - 1]
        if (first.language, second.language) == ("cpp", "python") and not any(line.strip() for line in between):
            tabs.append((first, second))
    for first, second in reversed(tabs):
        def tab(name, block):
            return [f"````{{tab}} {name}", *lines[block.line - 1:block.last_line], "````", ""]
        lines[first.line - 1:second.last_line] = tab("C++", first) + tab("Python", second)
    return "\n".join(lines)


def reference_links(has_python):
    cpp = "reference/cpp/"
    links = ['- <a href="' + cpp + 'annotated.html">C++ classes</a>, <a href="' + cpp
             + 'namespaceormix_1_1geom.html">functions</a>, <a href="' + cpp + 'files.html">headers</a>']
    links.append("- [Python classes and functions](reference/python.md)" if has_python else
                 "- Python: left out, since the module was not built with these pages (`ORMIX_BUILD_PYTHON`)")
    return "\n".join(links)


def source_page(path, text):
    language = LANGUAGES[pathlib.PurePosixPath(path).suffix]
    return f"---\norphan: true\n---\n# {posixpath.basename(path)}\n\n`{path}`\n\n`````{language}\n{text}`````\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("project", type=pathlib.Path)
    parser.add_argument("stage", type=pathlib.Path)
    parser.add_argument("--python-reference")
    arguments = parser.parse_args()
    site = Site(arguments.project, arguments.stage)
    os.makedirs(arguments.stage, exist_ok=True)
    try:
        site.build(arguments.python_reference)
    except (OSError, ValueError) as error:
        sys.exit(f"stage.py: {error}")


if __name__ == "__main__":
    main()
