"""Files stay small enough to be read at one go. Returns one line for every file that is not."""

import tree_files

LIMIT = 500  # lines

EXCEPTIONS = {
    "hostapi/constants.h": "one list of the host's constants",
}


def violations(root):
    found = []
    for path in tree_files.cpp_files(root):
        text = tree_files.read_text(root, path)
        lines = 0 if text is None else len(text.splitlines())
        if lines > LIMIT and str(path) not in EXCEPTIONS:
            found.append(f"{path}: {lines} lines, the limit is {LIMIT}")
    return found
