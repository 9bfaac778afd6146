"""All sources are formatted as .clang-format says. The first argument is the program."""

import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from os import cpu_count

import tree


def is_formatted(program, path):
    run = subprocess.run([program, "--dry-run", "-Werror", "--ferror-limit=1", str(path)], cwd=tree.ROOT,
                         capture_output=True)
    return run.returncode == 0


def main():
    program = sys.argv[1]
    files = tree.sources(tree.ROOT)
    with ThreadPoolExecutor(cpu_count()) as pool:
        results = list(pool.map(lambda path: is_formatted(program, path), files))
    complaints = [f"{path.relative_to(tree.ROOT)}: not formatted, run clang-format -i"
                  for path, good in zip(files, results) if not good]
    return tree.finish("format", complaints, len(files))


if __name__ == "__main__":
    sys.exit(main())
