"""The blocks of docs/python.md run, and print what the block behind them says."""

import contextlib
import io
import os
import pathlib
import re

import pytest

DOCUMENT = pathlib.Path(__file__).resolve().parents[2] / "docs" / "python.md"
BLOCKS = re.findall(
    r"^```python\n(.*?)^```\n(?:\n*^```text\n(.*?)^```\n)?",
    DOCUMENT.read_text(encoding="utf-8"),
    re.MULTILINE | re.DOTALL,
)


def test_there_are_blocks():
    assert len(BLOCKS) >= 5


@pytest.mark.parametrize("number", range(len(BLOCKS)))
def test_block(number, tmp_path):
    code, expected = BLOCKS[number]
    out = io.StringIO()
    before = os.getcwd()
    os.chdir(tmp_path)
    try:
        with contextlib.redirect_stdout(out):
            exec(compile(code, f"block {number + 1} of python.md", "exec"), {})
    finally:
        os.chdir(before)
    assert out.getvalue() == expected
