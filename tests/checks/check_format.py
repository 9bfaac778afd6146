"""All sources are formatted as .clang-format says. The first argument is the program; with --self-test after it, sees to
it that a file that is not formatted is found among those that are.
"""

import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from os import cpu_count
from pathlib import Path

import tree

AT_ONCE = 50  # the program takes longer to start than to look at a file
SAID = re.compile(r"^(.+?):\d+:\d+: error: ", re.MULTILINE)


def complaints_of(program, root, paths):
    """Complaints about some files; a program that fails without a word is one as well."""
    run = subprocess.run([program, "--dry-run", "-Werror", *map(str, paths)], cwd=root, capture_output=True, text=True,
                         errors="replace")
    bad = sorted(set(SAID.findall(run.stderr)))
    if run.returncode != 0 and not bad:
        return [f"{program} failed: {run.stderr[:1000]}"]
    return [f"{Path(name).relative_to(root)}: not formatted, run clang-format -i" for name in bad]


def check(program, root):
    files = tree.sources(root)
    parts = [files[at:at + AT_ONCE] for at in range(0, len(files), AT_ONCE)]
    with ThreadPoolExecutor(cpu_count()) as pool:
        found = list(pool.map(lambda part: complaints_of(program, root, part), parts))
    return sum(found, []), len(files)


def self_test(program):
    wrong = []
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        (root / ".clang-format").write_text((tree.ROOT / ".clang-format").read_text(encoding="utf-8"), encoding="utf-8")
        for name in range(120):
            (root / f"{name}.cpp").write_text("int f();\n" if name not in (7, 70) else "int  f( );\n", encoding="utf-8")
        found, looked_at = check(program, root)
        seen = sorted(said.split(":")[0] for said in found)
        if seen != ["7.cpp", "70.cpp"] or looked_at != 120:
            wrong.append(f"found {seen} among {looked_at} files, expected 7.cpp and 70.cpp among 120")
        if not complaints_of(program, root, [root / "nowhere.cpp"]):
            wrong.append("a file that cannot be read is no complaint")
    return tree.finish("format, planted faults", wrong, looked_at)


def main():
    if sys.argv[2:] == ["--self-test"]:
        return self_test(sys.argv[1])
    complaints, looked_at = check(sys.argv[1], tree.ROOT)
    return tree.finish("format", complaints, looked_at)


if __name__ == "__main__":
    sys.exit(main())
