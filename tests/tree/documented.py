"""The pages that say where things are name what is there. Returns one line for whatever they miss.

docs/develop/architecture.md has one row for each room of cmake/rooms.txt, in which the room stands
first; README.md has one row for each folder at the top, and for each tree below tests/ and docs/.
"""

import re

import rooms
import tree_files

ARCHITECTURE = "docs/develop/architecture.md"
README = "README.md"
ROW = re.compile(r"^\| `([a-z0-9/.-]+)/` \| *(.*?) *\|?$", re.MULTILINE)


def _rows(root, page):
    return ROW.findall((root / page).read_text())


def _compare(page, rows, wanted):
    named = [name for name, _ in rows]
    yield from (f"{page}: no row for {name}/" for name in wanted if name not in named)
    yield from (f"{page}: {name}/ has {named.count(name)} rows" for name in sorted(set(named))
                if named.count(name) > 1)
    yield from (f"{page}: {name}/ is not there" for name in named if name not in wanted)
    yield from (f"{page}: {name}/: nothing is said" for name, text in rows if not text)


def _top_folders(root):
    """Folders at the top that hold files of the tree, and the folders in tests/ and docs/."""
    folders = set()
    for path in tree_files.all_files(root):
        parts = path.parts
        if len(parts) > 1 and not parts[0].startswith("."):
            folders.add(parts[0])
        if len(parts) > 2 and parts[0] in ("tests", "docs"):
            folders.add("/".join(parts[:2]))
    return sorted(folders - {"tests", "docs"})


def violations(root):
    known, _ = rooms.read(root)
    return [*_compare(ARCHITECTURE, _rows(root, ARCHITECTURE), list(known)),
            *_compare(README, _rows(root, README), _top_folders(root))]
