"""Writes the type stub of the package from the signatures in its docstrings.

Usage: make_stubs.py STUB.pyi, with the package in the path of Python.

pybind11 writes a signature into each docstring. What it calls `object` is named here: arrays and callbacks by the names
of their arguments, results that depend on the arguments by `OVERLOADS`. A family is a generic class, and the class of
one `dtype` an alias of it: `Circle2d_float32` is `Circle2d[np.float32]`.
"""

import enum
import inspect
import re
import sys

import ormixgeometry as og
from ormixgeometry import _core

ARRAYS = set(
    "points vertices triangles samples params values matrix mask masks image labels volume weights lines sources targets "
    "start residuals items runs row slice spacing coordinates indices connectivity_array other_points".split()
)
ENTITIES = "Entity | Iterable[Entity]"
ARGUMENTS = {
    "entities": ENTITIES,
    "progress": "Callable[[float], object] | None",
    "dtype": "npt.DTypeLike",
    "estimator": "Estimator | str",
}
NUMBERS = ["(entities: {0}{1}) -> float", "(entities: Iterable[{0}]{1}) -> npt.NDArray[np.float64]"]
POLICY = ", *, hole_policy: _eHoleMsrPolicy = ..."
DERIVED = ["(entities: Entity2d) -> Entity2d", "(entities: Entity3d) -> Entity3d", "(entities: Iterable[Entity]) -> list[Any]"]
SIMPLIFIED = ", tolerance: float, method: _ePathSimplification = ...)"
FIT = (
    ", {0}method: Optional[_eFitMethod] = ..., weights: Optional[npt.ArrayLike] = ..., sigma: float = ..., loss: _eLoss = ..., "
    "loss_scale: float = ..., robust: Union[bool, Dict[str, Any], None] = ..., nb_max_iterations: int = ..., "
    "progress: Optional[Callable[[float], object]] = ...)"
)
FITTED = {
    "fit_circle": "Circle2d[np.float64]",
    "fit_ellipse": "Ellipse2d[np.float64]",
    "fit_line": "Line2d",
    "fit_plan": "Plan3d",
    "fit_sphere": "Sphere3d[np.float64]",
    "fit_ellipsoid": "Ellipsoid3d[np.float64]",
}
# Functions whose results depend on what they are given.
OVERLOADS = {
    **{
        name: [
            f"(points: npt.ArrayLike, *{FIT.format('report: Literal[False] = ..., ')} -> {entity}",
            f"(points: npt.ArrayLike, *{FIT.format('report: Literal[True], ')} -> tuple[{entity}, FitReport]",
        ]
        for name, entity in FITTED.items()
    },
    "fit_intersection": [
        f"(lines: Union[npt.ArrayLike, Sequence[Line2d]], *{FIT.format(report)} -> {answer}"
        for report, answer in (
            ("report: Literal[False] = ..., ", "Point2d[np.float64]"),
            ("report: Literal[True], ", "tuple[Point2d[np.float64], FitReport]"),
        )
    ],
    **{
        f"fit_{name.lower()}{d}d": [
            f"(sources: npt.ArrayLike, targets: npt.ArrayLike, *{FIT.format(report)} -> {answer}"
            for report, answer in (
                ("report: Literal[False] = ..., ", f"{name}Transform{d}d"),
                ("report: Literal[True], ", f"tuple[{name}Transform{d}d, FitReport]"),
            )
        ]
        for name in ("Translation", "Rigid", "Similarity", "Homography")
        for d in (2, 3)
    },
    "area": [line.format("Entity", POLICY) for line in NUMBERS],
    "perimeter": [line.format("Entity2d", POLICY) for line in NUMBERS],
    "volume": [line.format("Entity3d", POLICY) for line in NUMBERS],
    "moments": [
        f"(entities: Entity2d{POLICY}) -> Moments2dO3",
        f"(entities: Iterable[Entity2d]{POLICY}) -> list[Moments2dO3]",
    ],
    "hu_moments": [
        f"(entities: Entity2d{POLICY}) -> HuMoments2dO3",
        f"(entities: Iterable[Entity2d]{POLICY}) -> npt.NDArray[np.float64]",
    ],
    "centroid": [
        f"(entities: Entity2d{POLICY}) -> tuple[float, float]",
        f"(entities: Entity3d{POLICY}) -> tuple[float, float, float]",
        f"(entities: Iterable[Entity]{POLICY}) -> npt.NDArray[np.float64]",
    ],
    "convex_hull": DERIVED,
    "envelope": DERIVED,
    "min_enclosing_circle": [
        "(entities: Entity2d) -> Circle2d[np.float64]",
        "(entities: Iterable[Entity2d]) -> list[Circle2d[np.float64]]",
    ],
    "min_enclosing_sphere": [
        "(entities: Entity3d) -> Sphere3d[np.float64]",
        "(entities: Iterable[Entity3d]) -> list[Sphere3d[np.float64]]",
    ],
    "simplify": [f"(entities: _Entity{SIMPLIFIED} -> _Entity", f"(entities: Iterable[Entity2d]{SIMPLIFIED} -> list[Any]"],
    "simplify_all": [f"(entities: Iterable[Entity2d]{SIMPLIFIED} -> list[Any]"],
    "Transform.__matmul__": [
        "(self, operand: Transform) -> Transform",
        "(self, operand: Entity) -> Any",
        "(self, operand: npt.NDArray[Any]) -> npt.NDArray[Any]",
        "(self, operand: Iterable[Entity] | Sequence[float] | Sequence[Sequence[float]]) -> Any",
    ],
}
HEADER = '''"""Types of the package, made by make_stubs.py from its docstrings."""

import enum
import os
from typing import Any, Callable, Dict, Generic, Iterable, Iterator, List, Literal, Optional, Sequence, Tuple, TypeVar, Union, overload

import numpy as np
import numpy.typing as npt

_Scalar = TypeVar("_Scalar", np.float64, np.float32, np.int32, np.uint32)
_Entity = TypeVar("_Entity", bound=Entity2d)
_Point2dLike = Union[Sequence[float], npt.NDArray[Any]]
_Point3dLike = Union[Sequence[float], npt.NDArray[Any]]
'''
MOST_OVERLOADS = 3  # more are one for each class or dtype, and unions say the same
SCALARS = {"double": "float64", "float": "float32", "int": "int32", "unsigned int": "uint32"}
# A class whose objects are of other classes.
CLASSES = {
    "RTree": "class RTree:\n    def __new__(cls, items: npt.ArrayLike, boxes: bool = ..., dtype: npt.DTypeLike = ...) -> Any: ..."
}
# What every class has from `object`, and what only pickle calls.
SKIPPED = set("__new__ __repr__ __eq__ __ne__ __hash__ __getstate__ __setstate__ __reduce__ __init_subclass__".split())

families = {name: vars(og)[name] for name in _core._families}
members = {cls.__name__: (name, dtype) for name, family in families.items() for dtype, cls in family._classes.items()}
enumerations = {name for name, value in vars(og).items() if hasattr(value, "__members__")}


def split(text):
    """The parts of a list at its outer commas."""
    parts, depth, quote, begin = [], 0, "", 0
    for i, char in enumerate(text):
        if quote:
            quote = "" if char == quote else quote
        elif char in "'\"":
            quote = char
        elif char in "([{<":
            depth += 1
        elif char in ")]}" or (char == ">" and text[i - 1] != "-"):
            depth -= 1
        elif char == "," and depth == 0:
            parts.append(text[begin:i].strip())
            begin = i + 1
    return [part for part in parts + [text[begin:].strip()] if part]


def of_family(match):
    name, dtype = members[match[0]]
    return f"{name}[np.{dtype}]"


def python_type(text, name="", is_argument=False):
    """The type that a part of a signature stands for."""
    text = re.sub(r"\bormixgeometry\.(_core\.)?", "", text)
    text = re.sub(r"ormix::geom::(\w+)<(double|float|int|unsigned int)>", lambda m: f"{m[1]}_{SCALARS[m[2]]}", text)
    text = re.sub(r"ormix::(geom::)?(\w+)", r"\2", text)
    if is_argument and text in ("object", "handle", "numpy.ndarray") or name in ARGUMENTS:
        return ARGUMENTS.get(name, "npt.ArrayLike" if name in ARRAYS else "Any")
    text = re.sub(r"\b(object|handle)\b", "Any", text)
    text = re.sub(r"numpy\.ndarray\[(numpy\.)?(\w+)\]", lambda m: f"npt.NDArray[np.{m[2].replace('bool', 'bool_')}]", text)
    text = re.sub(r"\bnumpy\.ndarray\b", "npt.NDArray[Any]", text)
    text = re.sub(r"(?<!\.)\bdtype\b", "np.dtype[Any]", text)
    text = re.sub(r"List\[(\w+)\[\d+\]\]", r"List[\1]", text)
    text = re.sub(r"\bos\.PathLike\b", "Union[str, os.PathLike[str]]" if is_argument else "os.PathLike[str]", text)
    text = re.sub(r"\bPoint2dLike\b", "_Point2dLike" if is_argument else "Tuple[float, float]", text)
    text = re.sub(r"\bPoint3dLike\b", "_Point3dLike" if is_argument else "Tuple[float, float, float]", text)
    text = re.sub(r"\b(PixelsLike|VoxelsLike|MeshLike|BoundingBox2dLike)\b", "Any", text)
    text = re.sub(r"\b(dict|list|Iterable|Iterator|List)\b(?!\[)", lambda m: f"{m[0]}[Any, Any]" if m[0] == "dict" else f"{m[0]}[Any]", text)
    text = re.sub(r"\b(tuple)\b(?!\[)", r"\1[Any, ...]", text)
    if is_argument:
        text = re.sub(r"\be[A-Z]\w*\b", lambda m: "_" + m[0] if m[0] in enumerations else m[0], text)
    return re.sub(r"\b\w+_(float64|float32|int32|uint32)\b", lambda m: of_family(m) if m[0] in members else m[0], text)


def argument(text, is_first, is_method):
    if text in ("*", "/"):
        return text
    name, _, rest = text.partition(":")
    kind, has_default, _ = rest.partition(" = ")
    if name.startswith("*"):
        return f"{name}: Any"
    if is_first and is_method:
        return "self"
    name = f"__{name}" if re.fullmatch(r"arg\d+", name) else name
    return f"{name}: {python_type(kind.strip(), name, True)}" + (" = ..." if has_default else "")


def raw_signatures(name, doc):
    """(arguments, result) of each overload in a docstring."""
    found = []
    for line in (doc or "").split("\n"):
        match = re.fullmatch(rf"(?:\d+\. )?(?:{re.escape(name)})?\((.*)\) -> (.*)", line.strip())
        if match and match[1] != "*args, **kwargs":
            found.append((match[1], match[2]))
    return found


def signatures(name, doc, is_method=False):
    result = []
    for arguments, returned in raw_signatures(name, doc):
        given = [argument(text, i == 0, is_method) for i, text in enumerate(split(arguments))]
        result.append(f"({', '.join(given)}) -> {python_type(returned)}")
    result = list(dict.fromkeys(result))
    return result if len(result) <= MOST_OVERLOADS else merged(result)


def untyped(function):
    """The signature of a function that is written in Python."""
    parameters = []
    for parameter in inspect.signature(function).parameters.values():
        star = {parameter.VAR_POSITIONAL: "*", parameter.VAR_KEYWORD: "**"}.get(parameter.kind, "")
        is_self = parameter.name == "self"
        default = "" if parameter.default is parameter.empty else " = ..."
        parameters.append("self" if is_self else f"{star}{parameter.name}: Any{default}")
    return [f"({', '.join(parameters)}) -> Any"]


def one_family(kinds):
    """Classes of one family as the family."""
    names = [kind.partition("[np.")[0] for kind in kinds]
    shared = [f"{name}[Any]" if names.count(name) > 1 else kind for name, kind in zip(names, kinds)]
    return list(dict.fromkeys(shared))


def merged(found):
    """Overloads whose arguments have the same names as one, with unions of their types."""
    groups = {}
    for signature in found:
        arguments, _, returned = signature[1:].rpartition(") -> ")
        parts = [part.partition(": ") for part in split(arguments)]
        groups.setdefault(tuple(name for name, _, _ in parts), []).append([kind for _, _, kind in parts] + [returned])
    result = []
    for names, rows in groups.items():
        kinds = []
        for column in zip(*rows):
            plain = list(dict.fromkeys(kind.removesuffix(" = ...") for kind in column))
            plain = one_family(plain)
            union = "Any" if "Any" in plain else plain[0] if len(plain) == 1 else f"Union[{', '.join(plain)}]"
            kinds.append(union + (" = ..." if any(kind.endswith(" = ...") for kind in column) else ""))
        arguments = ", ".join(name + (f": {kind}" if kind else "") for name, kind in zip(names, kinds))
        result.append(f"({arguments}) -> {kinds[-1]}")
    return result


def definitions(name, found, indent="", decorator=""):
    lines = []
    for signature in found:
        if len(found) > 1:
            lines.append(f"{indent}@overload")
        if decorator:
            lines.append(f"{indent}@{decorator}")
        if name == "__init__":
            signature = re.sub(r"-> .*", "-> None", signature)
        lines.append(f"{indent}def {name}{signature}: ...")
    return lines


def family_doc(doc, other):
    """A docstring of a class of float64 in terms of its family, where the class of float32 says the same of its own."""
    doc, other = doc or "", other or ""
    common = re.sub(r"(\w+)_float64\b", r"\1§", doc)
    if common == re.sub(r"(\w+)_float32\b", r"\1§", other):
        common = re.sub(r"ormixgeometry\._core\.", "", common)
        return re.sub(r"(\w+)§", lambda m: f"{m[1]}[_Scalar]" if m[1] in families else f"{m[1]}_float64", common)
    return doc


def constructors(name, cls):
    """Of a family: each constructor with the values of `dtype` that decide the class."""
    result = []
    for dtype, concrete in cls._classes.items():
        for signature in signatures("__init__", vars(concrete)["__init__"].__doc__, True):
            keyword = f'dtype: Literal["{dtype}"] | type[np.{dtype}]' + (" = ..." if dtype == "float64" else "")
            star = "" if re.search(r"[(,] ?\*", signature) else "*, "
            inner = signature[signature.index("(") + 5 : signature.rindex(") ->")].lstrip(", ")
            inner = f"{inner}, " if inner else ""
            result.append(f"(self: {name}[np.{dtype}], {inner}{star}{keyword}) -> None")
    return list(dict.fromkeys(result))


def member_lines(cls_name, concrete, other, family):
    lines = []
    for member, value in sorted(vars(concrete).items()):
        if member in SKIPPED or (member.startswith("_") and not member.startswith("__")):
            continue
        twin = vars(other).get(member) if other else None

        def doc(get):
            return family_doc(get(value), get(twin)) if twin is not None else get(value)

        if isinstance(value, property):
            found = signatures("", doc(lambda v: v.fget.__doc__), True) or ["(self) -> Any"]
            kind = found[0].split(" -> ")[1]
            if family and member in ("points", "vertices") and "NDArray[Any]" in kind:
                kind = "npt.NDArray[_Scalar]"
            lines += ["    @property", f"    def {member}(self) -> {kind}: ..."]
            if value.fset:
                given = signatures("", doc(lambda v: v.fset.__doc__), True)
                taken = given[0].split(": ", 1)[1].split(") -> ")[0] if given else "Any"
                lines += [f"    @{member}.setter", f"    def {member}(self, value: {taken.removesuffix(', /')}) -> None: ..."]
        elif member == "__init__":
            found = constructors(cls_name, families[cls_name]) if family else signatures(member, value.__doc__, True)
            lines += definitions(member, found, "    ")
        elif isinstance(value, staticmethod):
            function = getattr(concrete, member)
            lines += definitions(member, signatures(member, doc(lambda v: v.__func__.__doc__)) or ["(*args: Any) -> Any"], "    ", "staticmethod")
        elif member == "__matmul__":
            pass  # that of all transforms
        elif callable(value):
            found = OVERLOADS.get(f"{cls_name}.{member}") or signatures(member, doc(lambda v: v.__doc__), True)
            if not found and inspect.isfunction(value):
                found = untyped(value)
            if found:
                lines += definitions(member, found, "    ")
        elif not member.startswith("__"):
            lines.append(f"    {member}: {'np.dtype[Any]' if member == 'dtype' else type(value).__name__}")
    if f"{cls_name}.__matmul__" in OVERLOADS:
        lines += definitions("__matmul__", OVERLOADS[f"{cls_name}.__matmul__"], "    ")
    return lines


def class_lines(name, cls):
    if name in enumerations:
        aliases = ", ".join(f'"{member}"' for member in cls.__members__)
        values = [f"    {member} = {int(value)}" for member, value in cls.__members__.items()]
        return [f"class {name}(enum.Enum):", *values, "    def __int__(self) -> int: ...", f"_{name} = Union[{name}, Literal[{aliases}]]"]
    family = name in families
    is_generic = family and raw_signatures("__init__", getattr(vars(cls._classes.get("float64", cls)).get("__init__"), "__doc__", ""))
    concrete = cls._classes["float64"] if is_generic else cls
    other = cls._classes.get("float32") if is_generic else None
    bases = [base.__name__ for base in concrete.__bases__ if base.__name__ not in ("object", "pybind11_object")]
    if is_generic:
        bases.append("Generic[_Scalar]")
    lines = [f"class {name}({', '.join(bases)}):" if bases else f"class {name}:"]
    if issubclass(concrete, BaseException):
        return lines + [f"    {text}" for text in ("message: str", "class_name: str", "key: str", "function: str", "file: str", "line: int")]
    body = member_lines(name, concrete, other, is_generic)
    if is_generic:
        aliases = [f"{member.__name__} = {name}[np.{dtype}]" for dtype, member in cls._classes.items()]
        return lines + (body or ["    ..."]) + aliases
    return lines + (body or ["    ..."])


def stub(module):
    public = {name: value for name, value in sorted(vars(module).items()) if not name.startswith("_") and not inspect.ismodule(value)}
    public = {name: value for name, value in public.items() if name in module.__all__}
    classes = [name for name, value in public.items() if isinstance(value, type) and name not in members]
    classes.sort(key=lambda name: (name not in enumerations, name))
    lines = [HEADER.rstrip(), "__version__: str", ""]
    for name in classes:
        lines += ([CLASSES[name]] if name in CLASSES else class_lines(name, public[name])) + [""]
    for name, value in public.items():
        if isinstance(value, type):
            continue
        if callable(value):
            found = OVERLOADS.get(name) or signatures(name, value.__doc__) or untyped(value)
            lines += definitions(name, found)
        else:
            lines.append(f"{name}: {type(value).__name__}")
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    with open(sys.argv[1], "w", encoding="utf-8") as file:
        file.write(stub(og))
