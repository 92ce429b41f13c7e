"""The table of rooms, cmake/rooms.txt: which folders there are, and what each may include."""

import dataclasses
import pathlib
import re

TABLE = "cmake/rooms.txt"
LINE = re.compile(r"([a-z0-9/-]+) *(?:\[native\])? *:([^:]*):(.*)")


@dataclasses.dataclass(frozen=True)
class Room:
    name: str
    includes: tuple  # names of rooms
    libraries: tuple  # names of CMake targets, without native: and windows:


def read(root):
    """The rooms by name, in the order of the table, and one line for everything wrong with it."""
    rooms, wrong = {}, []
    for number, line in enumerate((root / TABLE).read_text().splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        match = LINE.fullmatch(line)
        if not match:
            wrong.append(f"{TABLE}:{number}: not a room")
            continue
        name, includes, libraries = match.groups()
        room = Room(name, tuple(includes.split()),
                    tuple(re.sub("^(native|windows):", "", word) for word in libraries.split()))
        wrong += [f"{TABLE}:{number}: {name}: {reason}" for reason in _wrong(root, room, rooms)]
        rooms[name] = room
    return rooms, wrong


def _wrong(root, room, above):
    if room.name in above:
        yield "listed twice"
    if not (root / room.name).is_dir():
        yield "no such folder"
    for lower in room.includes:
        if lower not in above:
            yield f"{lower} is not listed above it"
        elif not _may_meet(room.name, lower):
            yield f"{_top(room.name)}/ does not include {_top(lower)}/"


def _top(name):
    return pathlib.PurePath(name).parts[0]


# The plug-in and the stage meet only at the binary interface; the apps are front ends of the stage.
BELOW = {"hostapi": (), "src": ("src", "hostapi"), "stage": ("stage", "hostapi"),
         "apps": ("apps", "stage", "hostapi")}


def _may_meet(name, lower):
    return _top(lower) in BELOW.get(_top(name), ())
