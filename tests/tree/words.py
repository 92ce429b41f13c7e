"""The tree stands alone: it names no document, machine or service outside it.

Returns one line for every place that does. The patterns are written so that they do not match
themselves.
"""

import re

import tree_files

PATTERNS = (
    (re.compile(r"\b[s]pec\.md\b|\bthe [s]pec(ification)?\b(?! of)", re.IGNORECASE),
     "a document outside the tree"),
    (re.compile(r"\b[P]arts? [0-9]+\.[0-9]"), "a document outside the tree"),
    (re.compile(r"\b[h]ost-behaviour|\b[h]ost-abi\b|\b[s]tyle-notes"), "a document outside the tree"),
    (re.compile(r"\b[i]ssue #?[0-9]|\bthe [i]ssue\b", re.IGNORECASE), "a ticket outside the tree"),
    (re.compile(r"(?<![\w.$}/-])/(wor[k]|tm[p]|hom[e]|roo[t])/"), "a path of one machine"),
    (re.compile(r"\b(deb|security|snapshot)\.[d]ebian\.org|\b[p]ypi\.org|\b[c]rates\.io"
                r"|\b[n]pmjs\.|\b[p]roxy\.golang|\b[a]rtifact-?registry", re.IGNORECASE),
     "the host of a package registry"),
)


def violations(root):
    found = []
    for path in tree_files.all_files(root):
        found += [f"{path}: its name holds '{m.group()}': {reason}"
                  for pattern, reason in PATTERNS if (m := pattern.search(str(path)))]
        text = tree_files.read_text(root, path)
        for number, line in enumerate((text or "").splitlines(), 1):
            found += [f"{path}:{number}: '{m.group()}': {reason}"
                      for pattern, reason in PATTERNS if (m := pattern.search(line))]
    return found
