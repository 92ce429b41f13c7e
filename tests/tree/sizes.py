"""What is read stays small enough to be read at one go. Returns one line for whatever is not.

Files have a limit of lines, folders of files, functions of lines. Functions are found by the layout
that the formatter gives: a line that ends with an opening brace, and the closing brace in the same
column.
"""

import collections
import re

import tree_files

FILE_LIMIT = 400  # lines
FUNCTION_LIMIT = 60  # lines, from its first to the closing brace
FOLDER_LIMIT = 25  # files

# Tables of facts, one a file.
TABLES = {"hostapi/constants.h"}

# What opens a brace and is no function: types, namespaces, tables.
NO_FUNCTION = re.compile(r"\b(namespace|class|struct|enum|union)\b|=\s*\{+$|^extern|\w\{+$")


def functions(text):
    """(first line, number of lines, head) of every function of a formatted file, from 1."""
    lines = text.splitlines()
    # A body closes in the column where its head begins, a lambda's in that of its own line.
    open_braces = []  # (columns, first line of the head, its text)
    for number, line in enumerate(lines):
        if line.lstrip().startswith("}"):
            column = _column(line)
            while open_braces and min(open_braces[-1][0]) > column:
                open_braces.pop()
            if open_braces and column in open_braces[-1][0]:
                _, first, head = open_braces.pop()
                if not NO_FUNCTION.search(head):
                    yield first + 1, number - first + 1, head
        if line.rstrip().endswith("{"):
            begin = _head(lines, number)
            open_braces.append(((_column(lines[begin]), _column(line)), begin,
                                " ".join(part.strip() for part in lines[begin : number + 1])))


def _column(line):
    return len(line) - len(line.lstrip())


def _head(lines, brace):
    """The line with the first of the words that stand before an opening brace."""
    begin = brace
    while begin > 0 and not re.search(r"[;{}:>]\s*$|^\s*$|^\s*#|^\s*//", lines[begin - 1]):
        begin -= 1
    return begin


def violations(root):
    found, folders = [], collections.Counter()
    for path in tree_files.all_files(root):
        folders[path.parent] += 1
    for folder, files in sorted(folders.items()):
        if files > FOLDER_LIMIT:
            found.append(f"{folder}/: {files} files, the limit is {FOLDER_LIMIT}")
    for path in tree_files.cpp_files(root):
        text = tree_files.read_text(root, path) or ""
        lines = len(text.splitlines())
        if lines > FILE_LIMIT and str(path) not in TABLES:
            found.append(f"{path}: {lines} lines, the limit is {FILE_LIMIT}")
        found += [f"{path}:{first}: a function of {length} lines, the limit is {FUNCTION_LIMIT}"
                  for first, length, _ in functions(text) if length > FUNCTION_LIMIT]
    return found
