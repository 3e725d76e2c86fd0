"""The type stubs say what the module has."""

import ast
import pathlib

import brum
from brum import _brum

STUB = ast.parse(pathlib.Path(brum.__file__).with_name("_brum.pyi").read_text(encoding="utf-8"))


def names_of(body):
    for statement in body:
        if isinstance(statement, (ast.FunctionDef, ast.ClassDef)):
            yield statement.name
        elif isinstance(statement, ast.AnnAssign):
            yield statement.target.id


def test_the_names_of_the_module():
    runtime = {name for name in vars(_brum) if not name.startswith("_")} | {"__version__"}
    stubbed = {name for name in names_of(STUB.body) if not name.startswith("_File")}
    assert {name for name in stubbed if not name.endswith("File")} == runtime
    assert set(brum.__all__) == runtime


def test_the_members_of_the_classes():
    operators = {"__eq__", "__hash__", "__lt__", "__le__", "__gt__", "__ge__"}
    inherited = set(dir(object)) - operators
    for statement in STUB.body:
        if not isinstance(statement, ast.ClassDef) or not hasattr(_brum, statement.name):
            continue
        members = vars(getattr(_brum, statement.name))
        if issubclass(getattr(_brum, statement.name), Exception):
            continue
        runtime = {
            name
            for name, value in members.items()
            if name not in inherited and not name.startswith("_pybind11")
        }
        runtime -= {"__module__", "__doc__"}
        stubbed = set(names_of(statement.body))
        assert stubbed - {"__init__"} == runtime, statement.name


def test_everything_is_documented():
    for name in ("TermManager", "Term", "Sort", "Symbol", "Trace"):
        assert getattr(brum, name).__doc__


def test_the_version():
    assert [part.isdigit() for part in brum.__version__.split(".")] == [True, True, True]
