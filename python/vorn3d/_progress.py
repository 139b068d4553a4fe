"""What the argument `progress` of long calls means."""

from __future__ import annotations

import contextlib
import sys
from collections.abc import Iterator
from typing import Callable, Union

__all__ = ["Observer", "Progress", "observing"]

Observer = Callable[[int, int], object]
Progress = Union[Observer, bool, None]


class _Line:
    """A line on stderr that is written over and over."""

    def __init__(self, label: str) -> None:
        self._label = label

    def tell(self, done: int, total: int) -> None:
        sys.stderr.write(f"\r{self._label}: {done:,} of {total:,}")
        sys.stderr.flush()

    def close(self) -> None:
        sys.stderr.write("\n")


class _Bar:
    """The bar of tqdm."""

    def __init__(self, label: str) -> None:
        from tqdm.auto import tqdm

        self._bar = tqdm(desc=label, unit_scale=True)

    def tell(self, done: int, total: int) -> None:
        self._bar.total = total
        self._bar.update(done - self._bar.n)

    def close(self) -> None:
        self._bar.close()


@contextlib.contextmanager
def observing(progress: Progress, label: str) -> Iterator[Observer | None]:
    """What the extension is to call with the numbers done and in all; None for nothing."""
    if progress is None or progress is False:
        yield None
    elif progress is True:
        try:
            display: _Bar | _Line = _Bar(label)
        except ImportError:
            display = _Line(label)
        try:
            yield display.tell
        finally:
            display.close()
    elif callable(progress):
        yield progress
    else:
        raise TypeError("progress must be a function of two numbers, True or None")
