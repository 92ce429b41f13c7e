"""The files of the tree: what is checked, and how it is read."""

import os
import pathlib

GENERATED = {".git", "build", "out", "__pycache__"}
CPP_SUFFIXES = {".h", ".cpp"}


def all_files(root):
    """Every file of the tree, as paths relative to root, without what is built."""
    for folder, folders, names in os.walk(root):
        folders[:] = sorted(set(folders) - GENERATED)
        for name in sorted(names):
            yield pathlib.Path(folder, name).relative_to(root)


def cpp_files(root):
    return [path for path in all_files(root) if path.suffix in CPP_SUFFIXES]


def read_text(root, path):
    """The text of a file, or None for one that is not text (pictures, for example)."""
    data = (root / path).read_bytes()
    if b"\0" in data:
        return None
    return data.decode("utf-8", errors="replace")
