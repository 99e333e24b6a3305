"""Writes the reference of the Python package as a page of Markdown, from the docstrings of the module.

Usage: python_reference.py FOLDER_OF_THE_PACKAGE PAGE.md
"""
import inspect
import pathlib
import re
import sys

def short_names(text):
    """Without the names of modules, which are the same everywhere."""
    return re.sub(r"<(\w+\.\w+): \d+>", r"\1", re.sub(r"\bormixgeometry\.(_core\.)?", "", text))


def parts_of(name, doc):
    """The signatures of a docstring as pybind11 writes it, and the rest."""
    signatures, rest = [], []
    lines = short_names(inspect.cleandoc(doc or "")).split("\n")
    is_overloaded = "Overloaded function." in lines[:3]
    for number, line in enumerate(lines):
        match = re.match(rf"(?:\d+\. ){{{int(is_overloaded and number > 0)}}}{re.escape(name)}(\(.*\).*)", line)
        if match and (number == 0 or is_overloaded):
            arguments = re.sub(r"^\(self: [^,()]+(?:, )?", "(", match[1])
            if arguments.partition(" ->")[0] != "(*args, **kwargs)":
                signatures.append(name + arguments)
        elif line != "Overloaded function.":
            rest.append(line)
    return list(dict.fromkeys(signatures)), "\n".join(rest).strip()


def markdown(text):
    """A docstring as Markdown: examples become blocks of code, and lines that name an argument items of a list."""
    paragraphs = []
    for paragraph in re.split(r"\n\s*\n", text):
        if paragraph.startswith(">>>"):
            paragraphs.append(f"```python\n{paragraph}\n```")
        else:
            paragraphs.append(re.sub(r"^(`?\w+(?:, \w+)*`?: +\S)", r"- \1", paragraph, flags=re.MULTILINE))
    return "\n\n".join(paragraphs)


def function_entry(name, function):
    signatures, rest = parts_of(name, inspect.getdoc(function))
    if not signatures:
        signatures = [f"{name}{inspect.signature(function)}"]
    return f"### {name}\n\n" + code(signatures) + f"\n{markdown(rest)}\n"


def code(lines):
    return "```python\n" + "\n".join(lines) + "\n```\n"


def class_entry(name, cls):
    # A family is documented by its class of float64.
    concrete = getattr(cls, "_classes", {}).get("float64", cls)
    text = [f"### {name}\n"]
    constructors = parts_of("__init__", getattr(vars(concrete).get("__init__"), "__doc__", ""))[0]
    if concrete is not cls:
        constructors = [line.replace(")", ", dtype='float64')").replace("(, ", "(") for line in constructors]
    if constructors:
        text.append(code(name + line[len("__init__"):].removesuffix(" -> None") for line in constructors))
    text.append(markdown(parts_of(name, inspect.getdoc(cls))[1]) + "\n")
    if concrete is not cls:
        text.append("`dtype` is one of " + ", ".join(cls._classes) + ".\n")
    rows = []
    for member, value in sorted(vars(concrete).items()):
        if member.startswith("_"):
            continue
        if isinstance(value, property) or type(value).__name__ == "pybind11_static_property":
            signatures, rest = [member], parts_of(member, value.__doc__)[1]
        elif callable(value) or isinstance(value, (staticmethod, classmethod)):
            signatures, rest = parts_of(member, inspect.getdoc(getattr(concrete, member)))
        else:
            continue  # values: those of an enumeration stand in its docstring
        description = " ".join(rest.split("\n\n")[0].split())
        rows.append(f"- `{(signatures or [member + '()'])[0]}`" + (f": {description}" if description else ""))
    if rows:
        text.append("\n".join(rows) + "\n")
    bases = [base.__name__ for base in concrete.__bases__ if base.__name__ not in ("object", "pybind11_object")]
    if bases:
        text.append("And what every " + ", ".join(f"`{base}`" for base in bases) + " has.\n")
    return "\n".join(text)


def page(module):
    names = sorted(getattr(module, "__all__", [name for name in dir(module) if not name.startswith("_")]))
    things = {name: getattr(module, name) for name in names if not inspect.ismodule(getattr(module, name))}
    functions = {name: thing for name, thing in things.items() if inspect.isroutine(thing)}
    # The classes of a family stand in the family.
    in_families = {cls for thing in things.values() for cls in getattr(thing, "_classes", {}).values()}
    classes = {name: thing for name, thing in things.items() if inspect.isclass(thing) and thing not in in_families}
    text = ["# Python reference\n", markdown(short_names(inspect.getdoc(module) or "")) + "\n", "## Classes\n"]
    text += [class_entry(name, cls) for name, cls in classes.items()]
    text += ["## Functions\n"] + [function_entry(name, function) for name, function in functions.items()]
    return "\n".join(text)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.path.insert(0, sys.argv[1])
    import ormixgeometry
    path = pathlib.Path(sys.argv[2])
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(page(ormixgeometry), encoding="utf-8")


if __name__ == "__main__":
    main()
