"""The examples in the docstrings of all that the package has."""

import doctest

import numpy as np
import pytest

import ormixgeometry as og


def examples():
    """(name, docstring) of each example; what is reached by several names is named once."""
    pending = [(name, value) for name, value in vars(og).items() if not name.startswith("__")] + [("ormixgeometry", og)]
    seen = set()
    while pending:
        name, value = pending.pop()
        if id(value) in seen:
            continue
        seen.add(id(value))
        own = getattr(value, "fget", value)
        own = getattr(own, "__func__", own)
        if isinstance(value, type):
            pending += [(f"{name}.{member}", item) for member, item in vars(value).items() if member != "_classes"]
        if ">>>" in (getattr(own, "__doc__", None) or ""):
            yield name, own.__doc__


EXAMPLES = dict(examples())


@pytest.mark.parametrize("name", sorted(EXAMPLES))
def test_example(name, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    names = {key: value for key, value in vars(og).items() if not key.startswith("_")}
    test = doctest.DocTestParser().get_doctest(EXAMPLES[name], {**names, "og": og, "np": np}, name, None, 0)
    output = []
    assert doctest.DocTestRunner().run(test, out=output.append).failed == 0, "".join(output)


def test_there_are_examples():
    assert len(EXAMPLES) > 30 and "ormixgeometry" in EXAMPLES
