"""Includes go downward, without exception: host < viewmodel < chartdata < chartview, linkage, statistics < containers
< terminal, the toolkit stands on host alone, and the terminal's folders have an order of their own. The library
asks the services of a view, never those of the program past it. With --self-test, plants violations in a tree of its own
and sees to it that they are found.
"""

import re
import sys

import tree

RANKS = {"host": 0, "viewmodel": 1, "chartdata": 2, "chartview": 3, "linkage": 3, "statistics": 3,
         "containers": 4, "terminal": 5}
# Folders of the terminal: each includes its own and those of lower ranks.
TERMINAL = {"threads": 0, "supervisor": 0, "files": 1, "config": 1, "market": 1, "servers": 1, "feed": 2, "history": 2, "formula": 2, "trade": 2, "replay": 3,
            "feeder": 3, "loader": 3, "app": 4}
TOOLKIT = "toolkit"
# Whoever takes the library may include all of it; nothing of the product includes these.
OUTER = {"tests", "bench"}
# Look-ups of the program's own services, which the library leaves to host/ and to the services themselves.
PROGRAM_WIDE = re.compile(r"\bC(?:Manual)?SingletonT<|(?<![.>\w])(?:hostNow|genRequestID|getConfig|getUserConfig|isBrokerQuoteMode)\(\)|"
                          r"\bCAppConfig::|\bSingletonManager::|\bConfigCollector::|\bStockTypeCenter::isTypedStock\(")
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]', re.MULTILINE)


def is_allowed(source, header):
    """Whether a file may include a header; both are paths from the root."""
    here, there = source.split("/")[0], header.split("/")[0]
    if there in OUTER:
        return False
    if here == there == "terminal":
        return is_below_in_terminal(source.split("/")[1], header.split("/")[1])
    if TOOLKIT in (here, there):
        return there in ("host", here) or here == "terminal"
    return RANKS[there] <= RANKS[here]


def is_below_in_terminal(here, there):
    known = here in TERMINAL and there in TERMINAL
    return known and (here == there or TERMINAL[there] < TERMINAL[here])


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


def asks_program(source, text):
    """Complaints about look-ups past the services of a view."""
    folder = source.split("/")[0]
    if folder in ("host", "terminal") or source.startswith("toolkit/services/"):
        return
    for match in PROGRAM_WIDE.finditer(text):
        line = text.count("\n", 0, match.start()) + 1
        yield f"{source}:{line}: asks the program's services, not those of the view ({match.group()})"


def check(root):
    complaints, looked_at = [], 0
    for path in tree.sources(root):
        source = path.relative_to(root).as_posix()
        if is_product(source):
            looked_at += 1
            text = path.read_text(encoding="utf-8")
            complaints += complaints_of(root, source, text)
            complaints += asks_program(source, text)
    return complaints, looked_at


def is_product(source):
    return source.split("/")[0] in RANKS or source.startswith(TOOLKIT + "/")


# Every planted file with the lines of its complaints.
PLANTED = [
    ("host/records/A.h", '#include <QString>\n', []),
    ("host/records/Up.h", '#include "viewmodel/CRealtimeUiParam.h"\n', [1]),
    ("host/records/Toolkit.h", '#include "toolkit/W.h"\n', [1]),
    ("toolkit/W.h", '#include "host/records/A.h"\n#include "toolkit/V.h"\n', []),
    ("toolkit/V.h", '#include "host/records/A.h"\n\n#include "viewmodel/CRealtimeUiParam.h"\n', [3]),
    ("toolkit/drawing/CIndexTitleWidget_text.cpp", '#include "viewmodel/CRealtimeUiParam.h"\n', [1]),
    ("viewmodel/CRealtimeUiParam.h", '#include "host/records/A.h"\n', []),
    ("viewmodel/CRealtimeUiParam_axis.cpp", '#include "chartview/CRealTimeNomalAxis.h"\n', [1]),
    ("viewmodel/CRealtimeUiParam_strip.cpp", '#include "chartview/CGraphAxisWidget.h"\n', [1]),
    ("viewmodel/Angle.cpp", '#include <chartdata/CRealtimeData.h>\n', [1]),
    ("viewmodel/Missing.cpp", '#include "viewmodel/Nowhere.h"\n', [1]),
    ("viewmodel/Relative.cpp", '#include "CRealtimeUiParam.h"\n', [1]),
    ("viewmodel/Kit.cpp", '#include "toolkit/W.h"\n', [1]),
    ("viewmodel/Test.cpp", '#include "tests/fakehost/FakeHost.h"\n', [1]),
    ("chartdata/CRealtimeData.h", '#include "viewmodel/CRealtimeUiParam.h"\n', []),
    ("chartdata/CRealtimeData_scale.cpp", '#include "chartview/CGraphAxisWidget.h"\n', [1]),
    ("chartdata/CRealtimeData_bad.cpp", '  #  include "chartview/CRealTimeNomalAxis.h"\n', [1]),
    ("chartview/CRealTimeNomalAxis.h", '#include "viewmodel/CRealtimeUiParam.h"\n', []),
    ("chartview/CGraphAxisWidget.h", '#include "linkage/Dialog.h"\n', []),
    ("chartview/CRealtimeTimeWidget.cpp", '#include "containers/CRealtimeMainWidget.h"\n', [1]),
    ("linkage/Dialog.h", '#include "chartdata/CRealtimeData.h"\n', []),
    ("statistics/Dialog.cpp", '#include "containers/CRealtimeMainWidget.h"\n', [1]),
    ("containers/CRealtimeMainWidget.h", '#include "chartview/CGraphAxisWidget.h"\n', []),
    ("containers/Main.cpp", '#include "terminal/app/App.h"\n', [1]),
    ("terminal/app/App.h", '#include "containers/CRealtimeMainWidget.h"\n#include "toolkit/W.h"\n'
     '#include "terminal/market/Store.h"\n#include "terminal/app/App.h"\n', []),
    ("terminal/market/Store.h", '#include "host/records/A.h"\n', []),
    ("terminal/market/Up.cpp", '#include "terminal/app/App.h"\n#include "terminal/formula/Service.h"\n', [1, 2]),
    ("terminal/formula/Service.h", '#include "terminal/market/Store.h"\n', []),
    ("terminal/threads/Worker.h", '#include "terminal/market/Store.h"\n', [1]),
    ("terminal/trade/Beside.h", '#include "terminal/market/Store.h"\n#include "terminal/formula/Service.h"\n', [2]),
    ("terminal/replay/Replay.h", '#include "terminal/threads/Worker.h"\n#include "terminal/formula/Service.h"\n', []),
    ("chartdata/Ask.cpp", 'int a = CSingletonT<Stocks>::instance().count();\nauto b = hostNow();\nif (config.getConfig()) {\n',
     [1, 2]),
    ("toolkit/Ask.cpp", 'auto type = CAppConfig::isClientType(1);\nauto user = getUserConfig();\n', [1, 2]),
    ("toolkit/services/Default.cpp", 'int a = CSingletonT<Stocks>::instance().count();\n', []),
    ("terminal/app/Ask.cpp", 'auto b = hostNow();\n', []),
    ("terminal/unknown/Place.cpp", '#include "terminal/market/Store.h"\n', [1]),
]


def main():
    if sys.argv[1:] == ["--self-test"]:
        return tree.self_test("layers", PLANTED, check)
    complaints, looked_at = check(tree.ROOT)
    return tree.finish("layers", complaints, looked_at)


if __name__ == "__main__":
    sys.exit(main())
