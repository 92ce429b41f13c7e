"""What documents point to is there. Returns one line for every relative link of a *.md file whose
target is no file or folder of the tree, or has no heading of the name behind the '#', and for every
path written out from the root of the tree, in prose, code and commands, that leads nowhere.
"""

import os.path
import re

import tree_files

# Fenced blocks and `code` hold no links, whatever they look like.
FENCED = re.compile(r"^ *```.*?^ *```[^\n]*$", re.MULTILINE | re.DOTALL)
CODE = re.compile(r"`[^`\n]+`")
LINK = re.compile(r"\]\(\s*<?([^)\s>]*)[^)]*\)"  # [text](target "title")
                  r"|^ {0,3}\[[^\]]+\]:\s*<?([^\s>]+)", re.MULTILINE)  # [text]: target
ELSEWHERE = re.compile(r"[a-z][a-z0-9+.-]*:", re.IGNORECASE)
PATH = r"(?<![\w./-])(?:{tops})/[\w./-]*[\w-]"
HEADING = re.compile(r"^ {0,3}#{1,6}\s+(.*?)\s*#*$", re.MULTILINE)


def anchors(text):
    """The names under which the headings of a document can be linked to."""
    seen, names = {}, set()
    for heading in HEADING.findall(FENCED.sub("", text)):
        words = re.sub(r"\]\([^)]*\)", "]", heading).lower()
        name = re.sub(r"[^\w\- ]", "", words).replace(" ", "-")
        count = seen.get(name, 0)
        seen[name] = count + 1
        names.add(f"{name}-{count}" if count else name)
    return names


def links(text):
    """(line number, target) of every link."""
    text = FENCED.sub(lambda block: "\n" * block.group().count("\n"), text)
    text = CODE.sub("", text)
    for match in LINK.finditer(text):
        yield text.count("\n", 0, match.start()) + 1, match.group(1) or match.group(2) or ""


def paths(text, folders):
    """(line number, path) of every path that begins with a folder at the top of the tree."""
    tops = "|".join(re.escape(folder) for folder in sorted(folders) if folder.strip("./").isalnum())
    for match in re.finditer(PATH.format(tops=tops), text):
        yield text.count("\n", 0, match.start()) + 1, match.group()


def _without_links(text):
    return LINK.sub(lambda link: "\n" * link.group().count("\n"), text)


def violations(root):
    files = {path.as_posix() for path in tree_files.all_files(root)}
    folders = {parent.as_posix() for path in tree_files.all_files(root) for parent in path.parents}
    found = []
    for page in (path for path in tree_files.all_files(root) if path.suffix == ".md"):
        text = tree_files.read_text(root, page) or ""
        found += [f"{page}:{number}: {path}: no such file in the tree"
                  for number, path in paths(_without_links(text), folders)
                  if path not in files | folders]
        for number, link in links(text):
            if ELSEWHERE.match(link):
                continue
            file, _, heading = link.partition("#")
            target = os.path.normpath(page.parent / file) if file else page.as_posix()
            if not link or target not in files | folders:
                found.append(f"{page}:{number}: {link}: no such file in the tree")
            elif heading and (target not in files
                              or heading not in anchors(tree_files.read_text(root, target) or "")):
                found.append(f"{page}:{number}: {link}: no such heading")
    return found
