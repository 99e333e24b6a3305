"""Runs the examples of the documentation: whole programs of C++ are compiled and run, other blocks of C++ compiled
within the declarations that their page takes for granted, and blocks of Python run one after the other.

What a program must print stands behind it: in a block of the language `text`, also for the block of C++ before one
of Python, or as code in a sentence that begins with "It prints". Each page is run in a folder of its own, with the
files of examples/data and those that `FILES` adds.

The library is that which pkg-config finds in a folder, as it is installed, and programs are built by the command
that the pages tell: g++ -std=c++17 x.cpp $(pkg-config --cflags --libs ormixgeometry) -o x

Usage: run_examples.py PROJECT_FOLDER WORK_FOLDER --libraries LIBRARY_FOLDER [--compiler g++]
                       [--python-package FOLDER] [--page PAGE]...
"""
import argparse
import importlib.util
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

# What blocks that are no whole programs take for granted, by page.
DECLARATIONS = {
    "docs/overview.md": """
        std::vector<ormix::omUInt8> mask, volume; std::vector<ormix::omUInt16> labels;
        std::size_t width = 0, height = 0, depth = 0; std::ptrdiff_t rowStride = 0, sliceStride = 0;
        boost::shared_ptr<Shape2d> shape; Polygon2d<double> polygonA, polygonB; Mesh3d<double> mesh;
        std::vector<float> xyz; std::vector<ormix::omUInt32> indices; std::size_t nbVertices = 0, nbTriangles = 0;
        std::vector<double> deviations; FitReport holeReport, edgeReport; std::vector<Point2dData<double>> points;
        """,
    "docs/archives.md": "Polygon2d<double> ring; ormix::SerializationObjectPtrColl objects;",
}
# Files of a page, by name; a program that asks for an argument gets the first one.
CORNERS = "".join(f"{x} {y} {z}\n" for z in (30, 32) for y in (20, 22) for x in (10, 12))
CUBE = f"OFF\n8 6 0\n{CORNERS}4 0 2 3 1\n4 4 5 7 6\n4 0 1 5 4\n4 2 6 7 3\n4 0 4 6 2\n4 1 3 7 5\n"
FILES = {"README.md": {"cube.off": CUBE}}
# A program that is run before the blocks of a page.
BEFORE = {"docs/archives.md": """
    Polygon2d<double> ring; fromString(ring, "0 0, 10 0, 10 5"); Mesh3d<double> mesh;
    quickHull(std::vector<Point3dData<double>>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, mesh);
    ormix::save("ring.json", ring); ormix::save("contours.cbor", mesh);
    """}
PROLOGUE = "#include <ORMIXGeometry/ORMIXGeometry.h>\n#include <iostream>\nusing namespace ormix::geom;\n"


class Failure(Exception):
    pass


def run(command, folder, what):
    try:
        done = subprocess.run(command, cwd=folder, capture_output=True, text=True, timeout=600, check=False)
    except subprocess.TimeoutExpired as error:
        raise Failure(f"{what} did not end within ten minutes") from error
    if done.returncode != 0:
        raise Failure(f"{what} ended with {done.returncode}:\n{done.stdout[-4000:]}{done.stderr[-4000:]}")
    return done.stdout


class Build:
    """How programs are built with the library that is installed in a folder."""

    def __init__(self, compiler, libraries):
        environment = {**os.environ, "PKG_CONFIG_PATH": str(libraries / "pkgconfig")}
        flags = subprocess.run(["pkg-config", "--cflags", "--libs", "ormixgeometry"], env=environment, text=True,
                               capture_output=True, check=True).stdout.split()
        self.before = [*shlex.split(compiler), "-std=c++17", "-Wall", "-Wextra"]
        self.after = [*flags, f"-Wl,-rpath,{libraries}"]

    def command(self, source):
        return [*self.before, str(source), *self.after]


class Page:
    def __init__(self, name, project, work, build, markdown):
        self.name, self.build = name, build
        self.text = (project / name).read_text(encoding="utf-8")
        self.blocks = markdown.blocks(self.text)
        self.folder = work / name.replace("/", "_")
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.copytree(project / "examples/data", self.folder)
        for file, content in FILES.get(name, {}).items():
            (self.folder / file).write_text(content)

    def expected(self, index):
        """What the block of this index must print: all of it, or lines; (None, []) where that is not said."""
        block, following = self.blocks[index], self.blocks[index + 1:]
        lines = self.text.split("\n")
        if following and block.language == "cpp" and following[0].language == "python" \
                and not any(line.strip() for line in lines[block.last_line:following[0].line - 1]):
            return self.expected(index + 1)
        end = following[0].line - 1 if following else len(lines)
        prose = " ".join(lines[block.last_line:end])
        sentence = re.search(r"[Ii]t prints (?:[^`.]|`[^`]*`)*", prose)
        parts = re.findall(r"`([^`]*)`", sentence[0]) if sentence else []
        whole = following[0].text if following and following[0].language == "text" else None
        return whole, parts

    def compare(self, index, output):
        whole, parts = self.expected(index)
        where = f"{self.name}:{self.blocks[index].line}"
        if whole is not None and output.rstrip() != whole.rstrip():
            raise Failure(f"{where}: it should print\n{whole}\nand prints\n{output}")
        for part in parts:
            if part not in output.split("\n"):
                raise Failure(f"{where}: it should print the line\n{part}\nand prints\n{output}")
        return whole is not None or bool(parts)

    def program(self, source, name, line):
        """Builds a program of this page and answers its path."""
        path = self.folder / f"{name}.cpp"
        path.write_text(f'#line {line} "{self.name}"\n{source}')
        png = ["-lpng"] if "<png.h>" in self.text else []
        run([*self.build.command(path), *png, "-o", str(self.folder / name)], self.folder,
            f"{self.name}:{line}: compiling")
        return str(self.folder / name)

    def run_cpp(self):
        if self.name in BEFORE:
            before = self.program(f"{PROLOGUE}int main() {{ {BEFORE[self.name]} }}", "before", 1)
            run([before], self.folder, f"{self.name}: the program before")
        counts, fragments = [0, 0, 0], []
        for index, block in enumerate(self.blocks):
            if block.language != "cpp":
                continue
            header = re.match(r"// (\w+\.h)\n", block.text)
            if header:
                (self.folder / header[1]).write_text(block.text)
                continue
            if "int main(" not in block.text:
                fragments.append(block)
                continue
            arguments = list(FILES.get(self.name, {}))[:1] if "argv" in block.text else []
            program = self.program(block.text, f"block{block.line}", block.line + 1)
            output = run([program, *arguments], self.folder, f"{self.name}:{block.line}: the program")
            counts[0] += 1
            counts[2] += self.compare(index, output)
        if fragments:
            source, known = PROLOGUE, DECLARATIONS.get(self.name, "")
            for block in fragments:
                source += f"[[maybe_unused]] static void fragment{block.line}() {{ {known}\n"
                source += f'{{\n#line {block.line + 1} "{self.name}"\n{block.text}}}\n}}\n'
            path = self.folder / "fragments.cpp"
            path.write_text(source)
            quiet = ["-Wno-unused-variable", "-Wno-unused-but-set-variable"]
            run([*self.build.command(path), *quiet, "-fsyntax-only"], self.folder,
                f"{self.name}: compiling its fragments")
            counts[1] = len(fragments)
        return counts

    def check_pictures(self, project, markdown):
        """The pictures that lie beside the page must be those that its programs have drawn."""
        for _, target in markdown.links(self.text):
            drawn, shown = self.folder / target, project / pathlib.Path(self.name).parent / target
            is_beside = "/" not in target and target.endswith(".svg")
            if is_beside and drawn.exists() and drawn.read_bytes() != shown.read_bytes():
                raise Failure(f"{self.name}: {target} is not what is drawn: {drawn}")

    def run_python(self):
        """Runs the blocks in one process, up to the first one that needs a module that is not there."""
        found = [(index, block) for index, block in enumerate(self.blocks) if block.language == "python"]
        runnable, left_out = [], ""
        for index, block in found:
            modules = re.findall(r"^(?:import|from) +([\w, ]+)", block.text, re.MULTILINE)
            modules = {word.split()[0] for line in modules for word in line.split(" import ")[0].split(",")}
            missing = [module for module in sorted(modules) if importlib.util.find_spec(module) is None]
            if missing:
                left_out = f", Python from line {block.line} on left out: no {', '.join(missing)}"
                break
            runnable.append((index, block))
        mark = "---- next block ----"
        script = "".join(f"{block.text}\nprint({mark!r}, flush=True)\n" for _, block in runnable)
        if script:
            path = self.folder / "blocks.py"
            path.write_text(script)
            outputs = run([sys.executable, str(path)], self.folder, f"{self.name}: its Python").split(mark + "\n")
            for (index, _), output in zip(runnable, outputs):
                self.compare(index, output)
        return len(runnable), left_out

    def run_javascript(self):
        """Runs each block by itself, where there is Node."""
        node, count = shutil.which("node"), 0
        for index, block in enumerate(self.blocks):
            if block.language == "javascript" and node:
                path = self.folder / f"block{block.line}.js"
                path.write_text(block.text)
                self.compare(index, run([node, str(path)], self.folder, f"{self.name}:{block.line}: the script"))
                count += 1
        return count


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("project", type=pathlib.Path)
    parser.add_argument("work", type=pathlib.Path)
    parser.add_argument("--libraries", type=pathlib.Path, required=True)
    parser.add_argument("--compiler", default="g++")
    parser.add_argument("--python-package", help="the folder that has the package ormixgeometry, if it was built")
    parser.add_argument("--page", action="append", help="only these pages")
    arguments = parser.parse_args()
    sys.path.insert(0, str(arguments.project / "docs/site"))
    import markdown_pages
    if arguments.python_package:
        sys.path.insert(0, arguments.python_package)
        os.environ["PYTHONPATH"] = arguments.python_package
    os.makedirs(arguments.work, exist_ok=True)
    build, failed = Build(arguments.compiler, arguments.libraries.resolve()), 0
    pages = [path.relative_to(arguments.project).as_posix()
             for pattern in ("*.md", "docs/**/*.md") for path in sorted(arguments.project.glob(pattern))]
    for name in arguments.page or pages:
        page = Page(name, arguments.project, arguments.work, build, markdown_pages)
        if not any(block.language in ("cpp", "python", "javascript") for block in page.blocks):
            continue
        try:
            nb_programs, nb_fragments, nb_compared = page.run_cpp()
            page.check_pictures(arguments.project, markdown_pages)
            nb_python, left_out = page.run_python()
            page.check_pictures(arguments.project, markdown_pages)
            nb_scripts = page.run_javascript()
            print(f"{name}: {nb_programs} programs ({nb_compared} with their output), {nb_fragments} fragments, "
                  f"{nb_python} blocks of Python{left_out}, {nb_scripts} of JavaScript", flush=True)
        except Failure as failure:
            failed += 1
            print(failure, file=sys.stderr, flush=True)
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
