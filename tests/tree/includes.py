"""Includes go where cmake/rooms.txt says. Returns one line for every include that does not.

Every C++ file of hostapi/, src/, stage/ and apps/ lies in a room; it may include the files of its own
room and of the rooms on its line, the C++ standard library, and headers of the libraries on its line.
The oracle of the tests shares nothing with what it judges.
"""

import pathlib
import re

import rooms
import tree_files

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)

ROOM_TREES = ("hostapi", "src", "stage", "apps")
# Folders below a room that hold only what the room's own files include.
PARTS_OF_ROOMS = ("hostapi/tables",)
ORACLE = "tests/oracle"

# Where a quoted name is looked for, besides the folder of the file.
BASES = tuple(pathlib.Path(base) for base in (".", "src", "apps", "tests"))

# The headers of each library: whoever includes one lists the target.
LIBRARY_OF = (
    (r"nlohmann/|CLI/", "ks_foreign_headers"),
    (r"fmt/", "ks_fmt"),
    (r"utf8(cpp)?[./]", "ks_utf8"),
    (r"stb/|stb_", "ks_foreign_headers"),
    (r"OpenImageIO/", "OpenImageIO::OpenImageIO"),
    (r"lib(av|sw)[a-z]+/", "PkgConfig::LIBAV"),
    (r"cairo|fontconfig/", "ks_cairo"),
    (r"duktape\.h", "ks_duktape"),
    (r"imgui|backends/imgui|SDL", "ks_imgui"),
)

# What comes with every compiler of a platform, by the trees that may use it.
SYSTEM = {
    "hostapi": (),
    "src": ("windows.h", "emmintrin.h"),  # SSE2 is part of every 64-bit x86
    "stage": ("windows.h", "winver.h", "dlfcn.h", "emmintrin.h"),
    "apps": ("windows.h", "shellapi.h", "io.h", "unistd.h"),
}


class Tree:
    def __init__(self, root):
        self.root = root
        self.rooms, self.wrong = rooms.read(root)
        self.files = {str(path): path for path in tree_files.all_files(root)
                      if path.suffix in {".h", ".cpp", ".inc", ".hpp"}}

    def includes(self, path):
        """(delimiter, name) for each include of a file."""
        return INCLUDE.findall(tree_files.read_text(self.root, path) or "")

    def resolve(self, path, name):
        for base in (path.parent, *BASES):
            candidate = _normal(base / name)
            if candidate in self.files:
                return self.files[candidate]
        return None

    def room_of(self, path):
        folder = path.parent
        if str(folder) in PARTS_OF_ROOMS:
            folder = folder.parent
        return self.rooms.get(folder.as_posix())


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


def _quoted(tree, room, path, name):
    target = tree.resolve(path, name)
    if target is None:
        return "no such file in the tree"
    goal = tree.room_of(target)
    if goal is None:
        return f"{target.parent}/ is no room"
    if goal is room or goal.name in room.includes:
        return None
    return f"cmake/rooms.txt does not let {room.name} include {goal.name}"


def _bracketed(room, path, name):
    for pattern, library in LIBRARY_OF:
        if re.match(pattern, name):
            return None if library in room.libraries else f"{room.name} does not list {library}"
    if re.fullmatch(r"[a-z0-9_]+", name):
        return None  # <cmath>: the C++ standard library
    if name in SYSTEM[path.parts[0]]:
        return None
    return "a library that no room lists"


def _in_room(tree, path):
    room = tree.room_of(path)
    if room is None:
        yield f"{path}: {path.parent}/ is not listed in {rooms.TABLE}"
        return
    for delimiter, name in tree.includes(path):
        reason = (_bracketed(room, path, name) if delimiter == "<"
                  else _quoted(tree, room, path, name))
        if reason:
            yield f"{path}: includes {name}: {reason}"


def _in_oracle(tree, path):
    for delimiter, name in tree.includes(path):
        target = tree.resolve(path, name) if delimiter == '"' else None
        if target and not (_under(target, ORACLE) or _under(target, "hostapi")
                           or _under(target, "tests/support")):
            yield f"{path}: includes {name}: the oracle shares nothing with what it judges"


def violations(root):
    tree = Tree(root)
    found = list(tree.wrong)
    for path in tree.files.values():
        if path.parts[0] in ROOM_TREES:
            found += _in_room(tree, path)
        elif _under(path, ORACLE):
            found += _in_oracle(tree, path)
    return found
