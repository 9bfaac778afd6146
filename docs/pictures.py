#!/usr/bin/env python3
"""Makes every picture of the documents anew, from running programs, with what a build has.

    docs/pictures.py [BUILD]      makes them; BUILD is build/dev when nothing is said
    docs/pictures.py --check      complains of pictures that it does not make, that are missing, or that no document shows
    docs/pictures.py --self-test  sees to it that the check finds such pictures
"""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
PICTURES = "docs/pictures"
# What makes which pictures.
WINDOW = ("terminal-dark.png", "terminal-light.png")
ENGLISH = ("terminal-english.png",)
EXAMPLES = ("minimal.png", "formula_pane.png", "trades.png")
SHEETS = ("theme-dark.svg", "theme-light.svg")
SHOWN = re.compile(r"pictures/([\w.-]+\.(?:png|svg|jpg))")


def run(*command, **keywords):
    subprocess.run([str(word) for word in command], check=True, cwd=ROOT, **keywords)


def draw(build, *command):
    """Runs what keeps pictures. The fonts are those of the tests."""
    run(*command, env=dict(os.environ, TZ="Asia/Shanghai", LC_ALL="C.UTF-8", QT_QPA_PLATFORM="offscreen", QT_FONT_DPI="96",
                           FONTCONFIG_FILE=str(build / "fonts.conf"), TIMESHARE_PICTURES=str(ROOT / PICTURES)))


def make(build):
    run("ninja", "-C", build, "test_integration", "test_english")
    draw(build, build / "bin/test_integration", "--gtest_filter=DocumentPicturesTest.*")
    draw(build, build / "bin/test_english", "--gtest_filter=EnglishTerminalTest.TheWindowAtTwoSizesInBothThemes")
    cache = dict(re.findall(r"^(\w+):\w+=(.*)$", (build / "CMakeCache.txt").read_text(), re.MULTILINE))
    run("ninja", "-C", build, "all")  # the package test installs what is built
    draw(build, sys.executable, "-B", "tests/package/installed.py", "--build", build, "--release",
         cache["CMAKE_PROJECT_VERSION"], "--qt", cache["TIMESHARE_QT"], "--cmake", "cmake", "--update")
    run(sys.executable, "-B", "tests/checks/theme_page.py")


def check(root):
    made = {*WINDOW, *ENGLISH, *EXAMPLES, *SHEETS}
    kept = {path.name for path in (root / PICTURES).iterdir()}
    documents = [root / "README.md", root / "CONTRIBUTING.md", *sorted((root / "docs").rglob("*.md"))]
    shown = {name for path in documents if path.exists() for name in SHOWN.findall(path.read_text(encoding="utf-8"))}
    yield from (f"{PICTURES}/{name}: nothing makes it" for name in sorted((kept | shown) - made))
    yield from (f"{PICTURES}/{name}: is missing" for name in sorted((made | shown) - kept))
    yield from (f"{PICTURES}/{name}: no document shows it" for name in sorted(kept - shown))


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        (root / PICTURES).mkdir(parents=True)
        names = [*WINDOW, *ENGLISH, *EXAMPLES, *SHEETS]
        for name in names:
            (root / PICTURES / name).touch()
        guide = root / "docs/guide.md"
        guide.write_text("".join(f"![x](pictures/{name})\n" for name in names))
        found = [list(check(root))]
        (root / PICTURES / "by-hand.png").touch()
        (root / PICTURES / names[0]).unlink()
        guide.write_text(guide.read_text().replace(names[1], "elsewhere.png"))
        found.append(sorted(line.split("/")[-1] for line in check(root)))
    expected = [[], sorted(["by-hand.png: nothing makes it", "by-hand.png: no document shows it", "elsewhere.png: nothing makes it",
                            "elsewhere.png: is missing", f"{names[0]}: is missing", f"{names[1]}: no document shows it"])]
    if found != expected:
        sys.exit(f"found {found}, expected {expected}")
    print("pictures: all planted faults are found")


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    if sys.argv[1:] == ["--check"]:
        complaints = list(check(ROOT))
        print("\n".join(complaints) or "pictures: all are made by this script and shown")
        return 1 if complaints else 0
    return make((ROOT / (sys.argv[1] if sys.argv[1:] else "build/dev")).resolve())


if __name__ == "__main__":
    sys.exit(main())
