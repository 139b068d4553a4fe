"""The examples print what stands beside them, and the code of the page runs."""

import os
import re
import subprocess
import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).parents[2]
EXAMPLES = sorted((ROOT / "examples" / "python").glob("*.py"))
ENVIRONMENT = {**os.environ, "MPLBACKEND": "Agg", "VORN3D_DATA": str(ROOT / "data")}


def run(cwd, *arguments):
    return subprocess.run([sys.executable, *arguments], cwd=cwd, env=ENVIRONMENT, text=True, stdout=-1, check=True).stdout


@pytest.mark.parametrize("example", EXAMPLES, ids=lambda path: path.stem)
def test_example(example, tmp_path):
    assert run(tmp_path, example) == example.with_suffix(".expected").read_text()
    pictures = re.findall(r'savefig\("(.*?)"', example.read_text())
    assert sorted(path.name for path in tmp_path.iterdir()) == sorted(pictures)


def test_code_of_the_page(tmp_path):
    blocks = re.findall(r"```python\n(.*?)```", (ROOT / "docs" / "python.md").read_text(), re.DOTALL)
    assert len(blocks) > 1
    run(tmp_path, "-c", "\n".join(blocks))
