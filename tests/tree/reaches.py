"""Users of a session ask it: they do not reach through it for the organs of its host.

Returns one line for every place that does. Tests and what lies below the session are free to.
"""

import re

import tree_files

USERS = ("stage/desk/", "stage/play/", "apps/", "bench/")
REACH = re.compile(r"\bsession(_|\(\))?(\.|->)host\b")


def violations(root):
    found = []
    for path in tree_files.cpp_files(root):
        if not str(path).startswith(USERS):
            continue
        text = tree_files.read_text(root, path)
        found += [f"{path}:{number}: '{m.group()}': ask the session"
                  for number, line in enumerate((text or "").splitlines(), 1)
                  if (m := REACH.search(line))]
    return found
