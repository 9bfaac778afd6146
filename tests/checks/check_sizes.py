"""No source file is longer than 600 lines: a class with several concerns is defined in several files."""

import sys

import tree

LIMIT = 600


def main():
    files = tree.sources(tree.ROOT, (".h", ".cpp", ".py", ".lua"))
    complaints = []
    for path in files:
        lines = path.read_bytes().count(b"\n")
        if lines > LIMIT:
            complaints.append(f"{path.relative_to(tree.ROOT)}: {lines} lines, {LIMIT} at most")
    return tree.finish("sizes", complaints, len(files))


if __name__ == "__main__":
    sys.exit(main())
