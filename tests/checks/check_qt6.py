"""The public headers, and the sources that meet what differs between Qt 5 and Qt 6, compile over Qt 6 without a warning.

    check_qt6.py COMPILER INCLUDE...    the include folders of the build
    check_qt6.py COMPILER INCLUDE... --self-test

Those sources are the ones that include QtCompat.h, which has what differs in one place, and those below. All stand in one
translation unit. The whole of it, with the tests, is what `cmake --preset qt6` builds. Where there is no Qt 6 the check says
so and ends with 77.
"""

import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import tree

PRODUCT = ("host", "viewmodel", "chartdata", "chartview", "containers", "linkage", "statistics", "toolkit")
ALSO = re.compile(r"containers/(ViewKeys\.cpp|accessibility/\w+\.cpp)$")  # keys as sums, QAccessible
FLAGS = ["-std=c++17", "-fPIC", "-fsyntax-only", "-fno-show-column", "-Wall", "-Wextra", "-Werror", "-DQT_DEPRECATED_WARNINGS",
         "-DQT_NO_FOREACH", "-DQT_NO_KEYWORDS", "-x", "c++"]


def qt_folders():
    """Where the headers of Qt 6 are; none where it is not installed."""
    program = shutil.which("qmake6")
    if not program:
        return []
    said = subprocess.run([program, "-query", "QT_INSTALL_HEADERS"], capture_output=True, text=True)
    folder = Path(said.stdout.strip())
    if said.returncode or not (folder / "QtWidgets").is_dir():
        return []
    return [folder, *(folder / module for module in ("QtCore", "QtGui", "QtWidgets"))]


def looked_at(root):
    """The public headers, and after them the sources."""
    names = [path.relative_to(root).as_posix() for path in tree.sources(root)]
    names = [name for name in names if name.split("/")[0] in PRODUCT]
    listed = (root / "cmake/PublicHeaders.cmake").read_text(encoding="utf-8")
    headers = [name for name in names if name.startswith("host/") and name.endswith(".h") or re.search(rf"\s{name}\s", listed)]
    sources = [name for name in names if name.endswith(".cpp") and (
        ALSO.search(name) or '"host/toolkit/QtCompat.h"' in (root / name).read_text(encoding="utf-8"))]
    return headers + sources


def check(compiler, folders, root):
    names = looked_at(root)
    with tempfile.TemporaryDirectory() as scratch:
        unit = Path(scratch) / "qt6.cpp"
        unit.write_text("".join(f'#include "{root / name}"\n' for name in names), encoding="utf-8")
        systems = [word for folder in qt_folders() for word in ("-isystem", str(folder))]
        done = subprocess.run([compiler, *FLAGS, f"-I{root}", *(f"-I{folder}" for folder in folders), *systems, str(unit)],
                              capture_output=True, text=True)
    complaints = [line.replace(f"{root}/", "") for line in done.stderr.splitlines()
                  if re.search(r":\d+: (fatal )?error: ", line)]
    if done.returncode and not complaints:
        complaints = done.stderr.splitlines() or [f"{compiler} ended with {done.returncode}"]
    return complaints, len(names)


PLANTED = [
    ("cmake/PublicHeaders.cmake", "set(TIMESHARE_PUBLIC_HEADERS\n  toolkit/Shown.h\n)\n", []),
    ("host/Sound.h", "#pragma once\n#include <QString>\ninline qsizetype sound(const QString &text) { return text.size(); }\n", []),
    ("toolkit/Shown.h", "#pragma once\n#include <QRegExp>\n", [2]),
    ("toolkit/Hidden.h", "#error no public header\n", []),
]
DEPRECATED = [
    ("cmake/PublicHeaders.cmake", "", []),
    ("host/toolkit/QtCompat.h", "#pragma once\n#include <QWidget>\n", []),
    ("toolkit/Sum.cpp", '#include "host/toolkit/QtCompat.h"\n#include <QKeySequence>\n'
                        "QKeySequence sum() { return Qt::CTRL + Qt::Key_Up; }\n", [3]),
    ("containers/ViewKeys.cpp", "#include <QVariant>\nQVariant none() { return QVariant(QVariant::Int); }\n", [2, 2]),
    ("toolkit/Other.cpp", "#error not looked at\n", []),
]


def self_test(compiler, folders):
    def look(root):
        return check(compiler, folders, root)

    return max(tree.self_test("check_qt6", planted, look, lambda name: name.split("/")[-1] in counted)
               for planted, counted in ((PLANTED, {"Sound.h", "Shown.h"}),
                                        (DEPRECATED, {"QtCompat.h", "Sum.cpp", "ViewKeys.cpp"})))


def main():
    compiler, *folders = [word for word in sys.argv[1:] if word != "--self-test"]
    if not qt_folders():
        print("check_qt6: no Qt 6 here (qt6-base-dev), nothing is looked at")
        return 77
    if "--self-test" in sys.argv:
        return self_test(compiler, folders)
    complaints, count = check(compiler, folders, tree.ROOT)
    return tree.finish("check_qt6", complaints, count)


if __name__ == "__main__":
    sys.exit(main())
