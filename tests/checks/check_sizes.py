"""Sizes that tell of a class or a function with more than one concern. With --self-test, plants faults in a tree of
its own and sees to it that they are found.

A product source has at most 450 lines, a header 220, a function 60 from the first word of its declaration to its last
brace, a class 20 data members. What is no source of the product has at most 600 lines.
"""

import sys

import cpp
import tree

PRODUCT = ("host", "viewmodel", "chartdata", "chartview", "containers", "linkage", "statistics", "toolkit", "terminal")
SOURCE_LINES, HEADER_LINES, FUNCTION_LINES, MEMBERS, OTHER_LINES = 450, 220, 60, 20, 600
# What has its size from elsewhere.
HEADERS_ASIDE = {"host/toolkit/Events.h"}  # a list of all events
CLASSES_ASIDE = {"CRealtimeUiParam",  # the shared state of a view, with public members that others are told to use
                 "CFormulaParam"}  # a record of the host


# Still over a limit, by file and the name of the function or class: as large as they may be until they are split.
STILL_OVER = {}


def measures(source, text):
    """What of a file has a limit: line, name, amount, what it is counted in, the limit."""
    lines = text.count("\n")
    if source.split("/")[0] not in PRODUCT or not source.endswith((".h", ".cpp")):
        yield OTHER_LINES + 1, "", lines, "lines", OTHER_LINES
        return
    limit = HEADER_LINES if source.endswith(".h") else SOURCE_LINES
    if source not in HEADERS_ASIDE:
        yield limit + 1, "", lines, "lines", limit
    for block in cpp.shape(cpp.tokens(text)).blocks:
        if block.kind == "function":
            yield block.first, block.name, block.last - block.first + 1, "lines", FUNCTION_LINES
        elif block.kind == "class" and block.name not in CLASSES_ASIDE:
            yield block.first, block.name, block.members, "data members", MEMBERS


def complaints_of(source, text, still_over):
    needed = set()
    for line, name, amount, unit, limit in measures(source, text):
        if amount > limit:
            needed.add((source, name))
            limit = still_over.get((source, name), limit)
        if amount > limit:
            yield f"{source}:{line}: {name + ' has ' if name else ''}{amount} {unit}, {limit} at most"
    for known, name in still_over:
        if known == source and (known, name) not in needed:
            yield f"{source}:1: {name or 'the file'} is within its limit: take it from the list in check_sizes.py"


def check(root, still_over):
    complaints, files = [], tree.sources(root, (".h", ".cpp", ".py", ".lua"))
    for path in files:
        complaints += complaints_of(path.relative_to(root).as_posix(), path.read_text(encoding="utf-8"), still_over)
    gone = {source for source, _ in still_over} - {path.relative_to(root).as_posix() for path in files}
    complaints += [f"{source}:1: is on the list in check_sizes.py and not there" for source in sorted(gone)]
    return complaints, len(files)


def body(lines):
    """A body so that a function with a declaration of one line has this number of lines."""
    return "{\n" + "    g();\n" * (lines - 2) + "}\n"


TRICKY = """// void f() {
const char *const kBrace = "{ \\" {"; const char kSign = '{'; const auto kRaw = R"x({ ")" {)x";
#define OPEN {
struct Table { const char *name; std::function<void(int)> act; } // one line
;
const Table kTable[] = {
""" + "    {\"a\", [](int) { g(); }},\n" * 70 + "};\n"
MEMBERS_TEXT = """class X : public Base<int, 3> {
    Q_OBJECT
public:
    explicit X(int a = 0, QString b = {}) : mA{a}, mB(b) {}
    bool operator<(const X &other) const { return mA < other.mA; }
    void f(), g();
    static constexpr int kLimit = 3;
    static int sCount;
    using Pair = std::pair<int, int>;
    friend class Y;
    class Inner;
    enum E { eA, eB };
    template <class T> void h(T t);
    std::map<int, std::pair<int, int>> map() const;
signals:
    void changed(int a, int b);
private:
    struct Part { int a; int b; };
"""
FIELDS = ["int mA = 0;", "std::map<int, QString> mB;", "std::function<void(int, int)> mC{[](int, int) {}};",
          "void (*mD)(int) = nullptr;", "const QString mE{QStringLiteral(\"a;b\")};", "int mF, mG;", "Part mH[3] = {};",
          "std::array<int, (2 + 3)> mI;", "mutable std::atomic<int> mJ{f(1)};", "alignas(8) int mK;", "QRect mL = QRect(1, 2);"]
NUMBER_OF_FIELDS = len(FIELDS) + 1  # mF and mG are two
PLANTED = [
    ("host/Long.h", "\n" * 221, [221]),
    ("host/Full.h", "\n" * 220, []),
    ("host/toolkit/Events.h", "\n" * 300, []),
    ("chartdata/Long.cpp", "\n" * 451, [451]),
    ("chartdata/Full.cpp", "\n" * 450, []),
    ("tests/Long.cpp", "\n" * 601, [601]),
    ("tests/Full.cpp", "\n" * 600 , []),
    ("tests/Function.cpp", "void f() " + body(100), []),
    ("formulas/Long.lua", "\n" * 601, [601]),
    ("chartview/Function.cpp", "namespace TC {\nnamespace {\n\nvoid f() " + body(61) + "void g() " + body(60) + "}\n}\n", [4]),
    ("chartview/Method.cpp", "X::X(int a)\n    : mA{a}, mB(QString{}) " + body(60) + "bool X::operator==(const X &b) const "
     + body(61) + "X::~X() " + body(60), [1, 62]),
    ("chartview/Inline.h", "class X final : public Y {\npublic:\n    int f(int a = {}) const noexcept override "
     + body(61) + "};\n", [3]),
    ("chartview/Template.cpp", "template <class T, class = std::enable_if_t<(sizeof(T) > 3)>>\nstd::map<int, T> f(T t) "
     + body(60), [1]),
    ("terminal/Tricky.cpp", TRICKY + "void f() " + body(61), [78]),
    ("toolkit/Members.h", MEMBERS_TEXT + "\n".join(FIELDS) + "\n" + "    int mMore;\n" * (20 - NUMBER_OF_FIELDS) + "};\n", []),
    ("toolkit/MoreMembers.h", MEMBERS_TEXT + "\n".join(FIELDS) + "\n" + "    int mMore;\n" * (21 - NUMBER_OF_FIELDS) + "};\n",
     [1]),
    ("viewmodel/CRealtimeUiParam.h", "class CRealtimeUiParam {\n" + "    int mMore;\n" * 50 + "};\n", []),
    ("host/Known.h", "\n" * 230, []),
    ("host/Grown.h", "\n" * 231, [221]),
    ("host/Mended.h", "\n" * 220, [1]),
    ("host/Table.cpp", "void f() " + body(80), []),
    ("viewmodel/Nested.h", "class X {\n    struct Y {\n" + "        int a;\n" * 21 + "    };\n};\n", [2]),
]


PLANTED_OVER = {("host/Known.h", ""): 230, ("host/Grown.h", ""): 230, ("host/Mended.h", ""): 230,
                ("host/Table.cpp", "f"): 80}


def main():
    if sys.argv[1:] == ["--self-test"]:
        return tree.self_test("sizes", PLANTED, lambda root: check(root, PLANTED_OVER))
    complaints, looked_at = check(tree.ROOT, STILL_OVER)
    return tree.finish("sizes", complaints, looked_at)


if __name__ == "__main__":
    sys.exit(main())
