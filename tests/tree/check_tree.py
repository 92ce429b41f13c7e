"""check_tree.py CHECK ROOT: runs one check over the tree; exit status 1 when it finds anything."""

import pathlib
import sys

import documented
import includes
import links
import reaches
import sizes
import words

CHECKS = {"documented": documented, "includes": includes, "links": links, "reaches": reaches,
          "sizes": sizes, "words": words}


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in CHECKS:
        sys.exit(f"usage: check_tree.py {'|'.join(CHECKS)} ROOT")
    found = CHECKS[sys.argv[1]].violations(pathlib.Path(sys.argv[2]))
    for line in found:
        print(line)
    print(f"{sys.argv[1]}: {len(found)} found")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
