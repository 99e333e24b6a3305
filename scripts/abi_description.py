"""The binary interface of the shared libraries in three short texts, and what of a change to them breaks programs that were
linked before.

Usage: abi_description.py describe LIBRARY_FOLDER SOURCE_FOLDER OUTPUT_FOLDER
       abi_description.py compare OLD_FOLDER NEW_FOLDER      (exit status 1 when something broke)

symbols  the names that the libraries export, mangled, one a line: "library name"
tables   the tables of virtual functions: first each order of functions that occurs, then for each class the number of its
         order. Functions stand without their class, since it does not matter who defines them; "pure" has no definition.
sizes    size and alignment of each class that the public headers show

Needs g++, and libraries with the symbol table that the linker made (not stripped). Debug information is not needed: what
is in a table stands in the relocations by which the loader fills it.
"""

import bisect
import difflib
import os
import re
import subprocess
import sys
import tempfile

LIBRARIES = ("ORMIXUtil", "ORMIXSerialization", "ORMIXMath", "ORMIXGeometry")
HEADERS = tuple(f"{name}/{name}.h" for name in LIBRARIES)


def run(*command, text=None):
    return subprocess.run(command, input=text, stdout=subprocess.PIPE, check=True, text=True).stdout


def demangled(names):
    names = list(names)
    return dict(zip(names, run("c++filt", text="\n".join(names) + "\n").splitlines()))


def exported_symbols(path):
    """Names that the dynamic symbol table defines, with address and length."""
    symbols = {}
    for line in run("readelf", "-W", "--dyn-syms", path).splitlines():
        words = line.split()
        if len(words) == 8 and words[0].endswith(":") and words[0] != "Num:" and words[6] not in ("UND", "ABS"):
            symbols[words[7].split("@")[0]] = (int(words[1], 16), int(words[2], 0))
    return symbols


def local_functions(path):
    """Address to name of what is defined but not exported."""
    names = {}
    for line in run("nm", "--defined-only", "--format=posix", path).splitlines():
        words = line.split()
        if len(words) >= 3:
            names.setdefault(int(words[2], 16), words[0])
    return names


def relocations(path):
    """Address and contents of each pointer that the loader fills in: a name, or an address inside the library."""
    for line in run("readelf", "-W", "--relocs", path).splitlines():
        words = line.split()
        if len(words) >= 4 and words[2] == "R_X86_64_64" or len(words) >= 4 and words[2] == "R_AARCH64_ABS64":
            yield int(words[0], 16), words[4].split("@")[0] if len(words) > 4 else words[3]
        elif len(words) == 4 and words[2] in ("R_X86_64_RELATIVE", "R_AARCH64_RELATIVE"):
            yield int(words[0], 16), int(words[3], 16)


def without_class(function):
    """The name and the parameters of a demangled member function."""
    function = re.sub(r"^(non-virtual|virtual|covariant return) thunk to ", "", function)
    depth = start = 0
    for i, letter in enumerate(function):
        if letter == "<":
            depth += 1
        elif letter == ">":
            depth -= 1
        elif depth == 0 and function.startswith("::", i):
            start = i + 2
        elif depth == 0 and letter == "(" and i > start:
            break
    name = function[start:]
    return "~" + name[name.index("(") :] if name.startswith("~") else name


def virtual_tables(path, exported):
    """For each exported table the functions in it, in order; offsets and type information stand as numbers and \"type\"."""
    locals_ = local_functions(path)
    filled = sorted(relocations(path), key=lambda place: place[0])
    addresses = [address for address, _ in filled]
    tables = {}
    for table, (begin, length) in exported.items():
        if not table.startswith("_ZTV"):
            continue
        slots = {}
        for i in range(bisect.bisect_left(addresses, begin), bisect.bisect_left(addresses, begin + length)):
            address, contents = filled[i]
            slots[(address - begin) // 8] = locals_.get(contents, "?") if isinstance(contents, int) else contents
        tables[table] = [slots.get(i, "0") for i in range(length // 8)]
    return tables


def orders_of(tables):
    """The tables by class, with their functions demangled and without class."""
    names = demangled({name for slots in tables.values() for name in slots} | set(tables))
    short = {"0": "0", "__cxa_pure_virtual": "pure"}
    for mangled, name in names.items():
        short.setdefault(mangled, "type" if mangled.startswith("_ZTI") else without_class(name))
    return {names[table].replace("vtable for ", ""): tuple(short[name] for name in slots)
            for table, slots in tables.items()}


def class_sizes(sources):
    with tempfile.TemporaryDirectory() as folder:
        with open(f"{folder}/all.cpp", "w", encoding="utf-8") as file:
            file.writelines(f"#include <{header}>\n" for header in HEADERS)
        run("g++", "-std=c++17", f"-I{sources}", "-fsyntax-only", f"-fdump-lang-class={folder}/classes", f"{folder}/all.cpp")
        with open(f"{folder}/classes", encoding="utf-8") as file:
            lines = file.read().splitlines()
    sizes = set()
    for line, following in zip(lines, lines[1:]):
        if line.startswith("Class ormix::") and "::detail::" not in line:
            sizes.add(f"{line[len('Class '):]} {following.strip()}")
    return sorted(sizes)


def write(folder, name, lines):
    with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
        file.writelines(line + "\n" for line in lines)


def describe(libraries, sources, output):
    os.makedirs(output, exist_ok=True)
    symbols, classes = [], {}
    for library in LIBRARIES:
        path = os.path.join(libraries, f"lib{library}.so")
        exported = exported_symbols(path)
        if not exported:
            sys.exit(f"abi_description.py: {path} exports nothing")
        symbols += [f"{library} {name}" for name in sorted(exported)]
        classes.update(orders_of(virtual_tables(path, exported)))
    numbers = {order: i for i, order in enumerate(sorted(set(classes.values())))}
    lines = []
    for order, number in numbers.items():
        lines += [f"order {number}:"] + [f"  {function}" for function in order]
    lines += [f"{name}: order {numbers[order]}" for name, order in sorted(classes.items())]
    write(output, "symbols", symbols)
    write(output, "tables", lines)
    write(output, "sizes", class_sizes(sources))


def read(folder, name):
    with open(os.path.join(folder, name), encoding="utf-8") as file:
        return file.read().splitlines()


def read_tables(folder):
    orders, classes = {}, {}
    for line in read(folder, "tables"):
        if line.startswith("  "):
            order.append(line.strip())
        elif line.startswith("order "):
            order = orders[line[: -len(":")]] = []
        else:
            name, _, number = line.rpartition(": ")
            classes[name] = orders[number]
    return classes


def read_sizes(folder):
    return dict(line.split(" size=") for line in read(folder, "sizes"))


def compare(old, new):
    """Prints what is gone or changed, one a line, and how much is new."""
    symbols_before, symbols = set(read(old, "symbols")), set(read(new, "symbols"))
    gone = sorted(symbols_before - symbols)
    names = demangled(line.split()[1] for line in gone)
    broken = [f"no longer exported by {library}: {names[name]}" for library, name in map(str.split, gone)]

    tables = read_tables(new)
    for name, before in read_tables(old).items():
        now = tables.get(name, before)  # a table that is gone is a symbol that is gone
        if now != before:
            changes = difflib.unified_diff(before, now, lineterm="", n=1)
            broken.append("\n    ".join([f"virtual functions of {name}:"] + list(changes)[3:]))

    sizes = read_sizes(new)
    for name, before in read_sizes(old).items():
        if sizes.get(name) != before:
            broken.append(f"size of {name}: {before} before, {sizes.get(name, 'not in the headers')} now")

    print("".join(line + "\n" for line in broken), end="")
    print(f"{len(broken)} broken, {len(symbols - symbols_before)} exported symbols new")
    return 1 if broken else 0


if __name__ == "__main__":
    if len(sys.argv) == 5 and sys.argv[1] == "describe":
        describe(*sys.argv[2:])
    elif len(sys.argv) == 4 and sys.argv[1] == "compare":
        sys.exit(compare(*sys.argv[2:]))
    else:
        sys.exit(__doc__)
