"""Includes go downward: host < viewmodel < chartdata < chartview, linkage, statistics < containers < terminal,
and the toolkit stands on host alone. The upward meetings that belong to the system are listed below; they stay
inside .cpp files. With --self-test, plants violations in a tree of its own and sees to it that they are found.
"""

import re
import sys
import tempfile
from fnmatch import fnmatch
from pathlib import Path

import tree

RANKS = {"host": 0, "viewmodel": 1, "chartdata": 2, "chartview": 3, "linkage": 3, "statistics": 3,
         "containers": 4, "terminal": 5}
TOOLKIT = "toolkit"
# Whoever takes the library may include all of it; nothing of the product includes these.
OUTER = {"tests", "bench"}
STRATEGIES = ("chartview/CRealtimeBaseFormulaAxis.h", "chartview/CRealTimeNomalAxis.h",
              "chartview/CRealTimeCustomIndexAxis.h", "chartview/CRealTimePortfolioAxis.h")
# (source, header): the view parameters and their strategies, the view parameters and the axis strips, the data
# and its axis strip, and the title strip, which reads the public members of the
# view parameters that it is handed.
MEETINGS = [("viewmodel/CRealtimeUiParam*.cpp", header) for header in STRATEGIES] + [
    ("viewmodel/CRealtimeUiParam*.cpp", "chartview/CGraphAxisWidget.h"),
    ("chartdata/CRealtimeData*.cpp", "chartview/CGraphAxisWidget.h"),
    ("toolkit/drawing/CIndexTitleWidget*.cpp", "viewmodel/CRealtimeUiParam.h"),
]
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]', re.MULTILINE)


def is_allowed(source, header):
    """Whether a file may include a header; both are paths from the root."""
    here, there = source.split("/")[0], header.split("/")[0]
    if there in OUTER:
        return False
    if is_strategy(source):
        return there == "host" or header in STRATEGIES
    if TOOLKIT in (here, there):
        if there in ("host", here) or here == "terminal":
            return True
    elif RANKS[there] <= RANKS[here]:
        return True
    return any(fnmatch(source, pattern) and header == met for pattern, met in MEETINGS)


def is_strategy(source):
    return source.rsplit(".", 1)[0] + ".h" in STRATEGIES


def complaints_of(root, source, text):
    """Complaints about the includes of one file."""
    for match in INCLUDE.finditer(text):
        quote, header = match.groups()
        line = text.count("\n", 0, match.start(2)) + 1
        folder = header.split("/")[0]
        is_ours = folder in RANKS or folder == TOOLKIT or folder in OUTER
        if is_ours:
            if not is_allowed(source, header):
                yield f"{source}:{line}: must not include {header}"
            elif not (root / header).is_file():
                yield f"{source}:{line}: there is no {header}"
        elif quote == '"' and not header.endswith(".moc") and not header.startswith("ui_"):
            yield f'{source}:{line}: "{header}" does not begin at the root of the tree'


def check(root):
    complaints, looked_at = [], 0
    for path in tree.sources(root):
        source = path.relative_to(root).as_posix()
        if source.split("/")[0] in RANKS or source.startswith(TOOLKIT + "/"):
            looked_at += 1
            complaints += complaints_of(root, source, path.read_text(encoding="utf-8"))
    return complaints, looked_at


# Every planted file with the line of its complaint, 0 for none.
PLANTED = [
    ("host/records/A.h", '#include <QString>\n', 0),
    ("host/records/Up.h", '#include "viewmodel/CRealtimeUiParam.h"\n', 1),
    ("host/records/Toolkit.h", '#include "toolkit/W.h"\n', 1),
    ("toolkit/W.h", '#include "host/records/A.h"\n#include "toolkit/V.h"\n', 0),
    ("toolkit/V.h", '#include "host/records/A.h"\n\n#include "viewmodel/CRealtimeUiParam.h"\n', 3),
    ("toolkit/drawing/CIndexTitleWidget_text.cpp", '#include "viewmodel/CRealtimeUiParam.h"\n', 0),
    ("toolkit/drawing/CIndexTitleWidget.h", '#include "viewmodel/CRealtimeUiParam.h"\n', 1),
    ("toolkit/drawing/CIndexTitleWidget.cpp", '#include "viewmodel/Other.h"\n', 1),
    ("viewmodel/CRealtimeUiParam.h", '#include "host/records/A.h"\n', 0),
    ("viewmodel/CRealtimeUiParam_axis.cpp", '#include "chartview/CRealTimeNomalAxis.h"\n', 0),
    ("viewmodel/CRealtimeUiParam_bad.h", '#include "chartview/CRealTimeNomalAxis.h"\n', 1),
    ("viewmodel/Other.cpp", '#include "chartview/CRealTimeNomalAxis.h"\n', 1),
    ("viewmodel/Angle.cpp", '#include <chartdata/CRealtimeData.h>\n', 1),
    ("viewmodel/Missing.cpp", '#include "viewmodel/Nowhere.h"\n', 1),
    ("viewmodel/Relative.cpp", '#include "CRealtimeUiParam.h"\n', 1),
    ("viewmodel/Kit.cpp", '#include "toolkit/W.h"\n', 1),
    ("viewmodel/Test.cpp", '#include "tests/fakehost/FakeHost.h"\n', 1),
    ("chartdata/CRealtimeData.h", '#include "viewmodel/CRealtimeUiParam.h"\n', 0),
    ("chartdata/CRealtimeData_scale.cpp", '#include "chartview/CGraphAxisWidget.h"\n', 0),
    ("chartdata/CRealtimeData_bad.cpp", '  #  include "chartview/CRealTimeNomalAxis.h"\n', 1),
    ("chartview/CRealtimeBaseFormulaAxis.h", '#include "host/records/A.h"\n', 0),
    ("chartview/CRealTimeNomalAxis.h", '#include "chartview/CRealtimeBaseFormulaAxis.h"\n', 0),
    ("chartview/CRealTimeNomalAxis.cpp", '#include "viewmodel/CRealtimeUiParam.h"\n', 1),
    ("chartview/CGraphAxisWidget.h", '#include "linkage/Dialog.h"\n', 0),
    ("chartview/CRealtimeTimeWidget.cpp", '#include "containers/CRealtimeMainWidget.h"\n', 1),
    ("chartview/CRealtimeTimeWidget.h", '#include "containers/CRealtimeMainWidget.h"\n', 1),
    ("chartview/CRealtimeGraphWidget.cpp", '#include "containers/CRealtimeMainWidget.h"\n', 1),
    ("linkage/Dialog.h", '#include "chartdata/CRealtimeData.h"\n', 0),
    ("statistics/Dialog.cpp", '#include "containers/CRealtimeMainWidget.h"\n', 1),
    ("containers/CRealtimeMainWidget.h", '#include "chartview/CGraphAxisWidget.h"\n', 0),
    ("containers/Main.cpp", '#include "terminal/App.h"\n', 1),
    ("terminal/App.h", '#include "containers/CRealtimeMainWidget.h"\n#include "toolkit/W.h"\n', 0),
]


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        for source, text, _ in PLANTED:
            (root / source).parent.mkdir(parents=True, exist_ok=True)
            (root / source).write_text(text, encoding="utf-8")
        found, looked_at = check(root)
    expected = sorted(f"{source}:{line}" for source, _, line in PLANTED if line)
    seen = sorted(complaint.split(": ")[0] for complaint in found)
    wrong = [f"expected and not found: {name}" for name in expected if name not in seen]
    wrong += [f"found and not expected: {name}" for name in seen if name not in expected]
    if looked_at != len(PLANTED):
        wrong.append(f"looked at {looked_at} of {len(PLANTED)} files")
    return tree.finish("layers, planted violations", wrong, looked_at)


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    complaints, looked_at = check(tree.ROOT)
    return tree.finish("layers", complaints, looked_at)


if __name__ == "__main__":
    sys.exit(main())
