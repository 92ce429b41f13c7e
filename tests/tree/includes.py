"""Includes point one way. Returns one line for every include that does not.

Between the big folders: src/ and stage/ meet only at hostapi/, apps/ are front ends of stage/, and
the oracle shares nothing with what it judges.
Inside src/: entry -> {params, instance, render, ui} -> scopes -> draw -> host -> hostapi. Files that
do not see the host at all (pure files) lie below everything: any folder may include them, and they
include only each other.
"""

import pathlib
import re

import tree_files

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)

# Longest matching folder first: what it must not include.
FORBIDDEN = (
    ("tests/oracle", ("src", "stage", "apps", "tests/entry")),
    ("hostapi", ("src", "stage", "apps", "tests", "bench")),
    ("src", ("stage", "apps", "tests", "bench")),
    ("stage", ("src", "apps", "tests", "bench")),
    ("apps", ("src", "tests", "bench")),
)

# A folder of src/ may include shell files of its own and of any lower layer.
LAYERS = (("entry",), ("params", "instance", "render", "ui"), ("scopes",), ("draw",), ("host",))
LAYER_OF = {folder: depth for depth, folders in enumerate(LAYERS) for folder in folders}

# Shell includes between folders of one layer, each with its reason.
EXCEPTIONS = {
    ("params", "instance"): "a reset writes the instance record",
    ("instance", "params"): "setting up an instance runs the lock script",
}

# What the plug-in may include of the system besides the C++ standard library.
SYSTEM_HEADERS = {
    "windows.h",
    "emmintrin.h",  # SSE2, part of every 64-bit x86: the compiler brings it
}


class Tree:
    def __init__(self, root):
        self.root = root
        self.files = {str(path): path for path in tree_files.cpp_files(root)}
        self.files.update(
            {str(p): p for p in tree_files.all_files(root) if p.suffix in {".inc", ".hpp"}})
        self._pure = {}

    def includes(self, path):
        """(delimiter, text, resolved path or None) for each include of a file."""
        text = tree_files.read_text(self.root, path) or ""
        for delimiter, name in INCLUDE.findall(text):
            yield delimiter, name, self.resolve(path, name) if delimiter == '"' else None

    def resolve(self, path, name):
        for base in (path.parent, pathlib.Path("."), pathlib.Path("src"), pathlib.Path("stage"),
                     pathlib.Path("tests")):
            candidate = _normal(base / name)
            if candidate in self.files:
                return self.files[candidate]
        return None

    def is_pure(self, path):
        """Whether a file of src/ reaches no file of hostapi/ through its includes."""
        if path.parts[0] == "hostapi":
            return False
        if path not in self._pure:
            self._pure[path] = True  # a cycle of includes decides nothing
            self._pure[path] = all(
                target is None or self.is_pure(target)
                for _, _, target in self.includes(path))
        return self._pure[path]


def _normal(path):
    parts = []
    for part in path.parts:
        if part == ".." and parts:
            parts.pop()
        else:
            parts.append(part)
    return str(pathlib.Path(*parts)) if parts else ""


def _under(path, folder):
    return path.parts[: folder.count("/") + 1] == tuple(folder.split("/"))


def _folder_violation(path, target):
    for folder, forbidden in FORBIDDEN:
        if _under(path, folder):
            return next((f"{folder}/ does not include {f}/" for f in forbidden
                         if _under(target, f)), None)
    return None


def _layer_violation(tree, path, target):
    if not (_under(path, "src") and _under(target, "src")) or len(target.parts) < 3:
        return None
    source, goal = path.parts[1], target.parts[1]
    if source == goal or tree.is_pure(target) or (source, goal) in EXCEPTIONS:
        return None
    for folder in (source, goal):
        if folder not in LAYER_OF:
            return f"src/{folder}/ has no layer"
    if LAYER_OF[goal] > LAYER_OF[source]:
        return None
    return f"src/{goal}/ is not below src/{source}/, and {target.name} sees the host"


def _system_violation(path, name):
    if not _under(path, "src") or name in SYSTEM_HEADERS:
        return None
    if re.fullmatch(r"[a-z0-9_]+", name):
        return None  # <cmath>: the C++ standard library
    return "the plug-in uses only the C++ standard library"


def violations(root):
    tree = Tree(root)
    found = []
    for path in tree.files.values():
        for delimiter, name, target in tree.includes(path):
            if delimiter == "<":
                reason = _system_violation(path, name)
            elif target is None:
                reason = _unresolved(path, name)
            else:
                reason = _folder_violation(path, target) or _layer_violation(tree, path, target)
            if reason:
                found.append(f'{path}: includes {name}: {reason}')
    return found


def _unresolved(path, name):
    return "no such file in the tree" if _under(path, "src") else None
