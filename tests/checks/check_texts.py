"""Every Chinese text of the product stands in tr or another call that translators' tools know, so that none is missing where the
texts are translated; data stand in the files that are listed here with what they are. With --self-test, plants faults in a tree of
its own and sees to it that they are found.
"""

import re
import sys

import cpp
import tree

CHINESE = re.compile(r"[\u3400-\u9fff]")
TRANSLATED = {"tr", "trUtf8", "translate", "QT_TR_NOOP", "QT_TRANSLATE_NOOP", "QT_TRANSLATE_NOOP3", "QT_TRID_NOOP"}
FOLDERS = ("host", "viewmodel", "chartdata", "chartview", "linkage", "statistics", "containers", "toolkit", "terminal")
# Texts that are names in files, requests and stores: what is translated there would not be found any more.
DATA = {
    "viewmodel/CRealTimePortfolioAxis.cpp": "formulas of a portfolio, as requested",
    "viewmodel/CRealtimeUiParam.cpp": "a formula, as requested",
    "chartdata/SceneSource.cpp": "a line, as its formula names it",
    "chartview/FormulaMenu.cpp": "folders of the catalogue",
    "linkage/CRealtimeProgressWidget.cpp": "a font",
    "toolkit/services/MainSeries.cpp": "lines, as their formula names them",
    "terminal/market/BarColumns.cpp": "headings of files",
    "terminal/market/TickColumns.cpp": "headings of files",
    "terminal/market/ImportedInstrument.cpp": "markets, as files name them",
    "terminal/market/SimulatedInstruments.cpp": "instruments of the made-up market",
    "terminal/market/StoreSchema.cpp": "the list that a new store has",
    "terminal/trade/DemoRoster.cpp": "accounts and strategies of the made-up market",
}


def complaints_of(source, text):
    """Chinese texts outside of a translated call, by line."""
    stack, found = [], cpp.tokens(text)
    for i, token in enumerate(found):
        if token.kind == "sign" and token.text == "(":
            before = found[i - 1] if i else None
            stack.append(before.text if before and before.kind == "name" else "")
        elif token.kind == "sign" and token.text == ")" and stack:
            stack.pop()
        elif token.kind in ("text", "raw", "char") and CHINESE.search(token.text) and not TRANSLATED & set(stack):
            yield f"{source}:{token.line}: {token.text} is not translated"


def check(root):
    complaints, looked_at = [], 0
    for path in tree.sources(root):
        source = path.relative_to(root).as_posix()
        if source.split("/")[0] not in FOLDERS:
            continue
        looked_at += 1
        found = list(complaints_of(source, path.read_text(encoding="utf-8")))
        if source in DATA and not found:
            complaints.append(f"{source}:1: has no data any more, and is listed in tests/checks/check_texts.py")
        elif source not in DATA:
            complaints += found
    return complaints, looked_at


PLANTED = [
    ("linkage/A.cpp", 'auto a = tr("关闭");\nauto b = obj.tr(on ? "开" : "关");\n// 注释\n', []),
    ("linkage/B.cpp", 'auto a = QStringLiteral("关闭");\n', [1]),
    ("toolkit/C.cpp", 'auto a = tr("关闭").arg(1) + f("打开");\nauto b = QCoreApplication::translate("C",\n  "确定");\n', [1]),
    ("terminal/app/D.cpp", 'const char *d = QT_TRANSLATE_NOOP("D", "取消");\nconst char *e =\n R"(多行)";\n', [3]),
    ("viewmodel/CRealtimeUiParam.cpp", 'auto a = QStringLiteral("均价");\n', []),
    ("terminal/market/StoreSchema.cpp", "int nothing = 0;\n", [1]),
    ("tests/E.cpp", 'auto a = QStringLiteral("关闭");\n', []),
]


def main():
    if sys.argv[1:] == ["--self-test"]:
        return tree.self_test("texts", PLANTED, check, lambda source: source.split("/")[0] in FOLDERS)
    return tree.finish("texts", *check(tree.ROOT))


if __name__ == "__main__":
    sys.exit(main())
