"""The English texts are complete: translations/NAME_en.ts has a finished translation of every text of the sources, none of a text
that is gone, and each has the placeholders and the accelerator of its source and no Chinese left.

    check_translations.py LUPDATE [--update | --self-test]

LUPDATE is Qt's program. --update brings the files up to date with the sources: new texts stand there unfinished then. With
--self-test, plants faults in a tree of its own and sees to it that they are found.
"""

import collections
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml
from pathlib import Path

import tree

FOLDERS = {
    "timeshare": ("host", "viewmodel", "chartdata", "chartview", "linkage", "statistics", "containers", "toolkit"),
    "terminal": ("terminal",),
}
FORMS = 2  # of English: one, and all other counts
CHINESE = re.compile(r"[\u3000-\u3001\u3003-\u303f\u3400-\u9fff\uff00-\uffef]")
PLACE = re.compile(r"%(?:\d+|L?n)|\[\*\]")
ACCELERATOR = re.compile(r"&[A-Za-z0-9]")

Message = collections.namedtuple("Message", "context source comment counts kind forms")


def messages_of(path):
    for context in xml.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            counts = message.get("numerus") == "yes"
            forms = [form.text or "" for form in translation.iter("numerusform")] if counts else [translation.text or ""]
            yield Message(context.findtext("name"), message.findtext("source"), message.findtext("comment") or "", counts,
                          translation.get("type", ""), forms)


def faults_of(message):
    """What is wrong with a message, by itself."""
    if message.kind:
        yield f"is {message.kind}"
        return
    if message.counts and len(message.forms) != FORMS:
        yield f"has {len(message.forms)} forms, not {FORMS}"
    for form in message.forms:
        if not form:
            yield "has an empty translation"
        elif sorted(PLACE.findall(form)) != sorted(PLACE.findall(message.source)):
            yield f'has other placeholders: "{form}"'
        elif len(ACCELERATOR.findall(form)) != len(ACCELERATOR.findall(message.source)):
            yield f'has another number of accelerators: "{form}"'
        elif CHINESE.search(form) and "\u3000" not in message.source:
            yield f'has Chinese left: "{form}"'


def lupdate(program, root, name, texts):
    """Brings a file of texts up to date; answers what lupdate says of classes whose texts it would look for in vain."""
    # Where a text stands is left out of the files: it would change with every line of a source.
    folders = [folder for folder in FOLDERS[name] if (root / folder).is_dir()]
    run = subprocess.run([program, "-I", ".", "-locations", "none", *folders, "-source-language", "zh_CN", "-target-language",
                          "en", "-ts", texts], cwd=root, capture_output=True, text=True, check=True)
    return [line for line in (run.stdout + run.stderr).splitlines() if "lacks Q_OBJECT" in line]


def check(program, root):
    complaints, looked_at = [], 0
    for name in FOLDERS:
        path = root / "translations" / f"{name}_en.ts"
        with tempfile.TemporaryDirectory() as folder:
            fresh = Path(folder) / path.name
            shutil.copy(path, fresh)
            complaints += lupdate(program, root, name, fresh)
            before = {message[:4] for message in messages_of(path)}
            for message in messages_of(fresh):
                looked_at += 1
                faults = faults_of(message) if message[:4] in before else ["is in the sources only: run --update"]
                complaints += [f"{path.name}: {message.context}: \"{message.source}\" {fault}" for fault in faults]
    return complaints, looked_at


def planted(source, texts):
    """A tree with one source of the library, one class A, and its file of texts."""
    messages = "".join(f"<message{attributes}><source>{text}</source>{translation}</message>"
                       for attributes, text, translation in texts)
    empty = '<?xml version="1.0" encoding="utf-8"?><!DOCTYPE TS><TS version="2.1" language="en" sourcelanguage="zh_CN">%s</TS>'
    return {"toolkit/A.cpp": source, "terminal/B.cpp": "",
            "translations/terminal_en.ts": empty % "",
            "translations/timeshare_en.ts": empty % f"<context><name>A</name>{messages}</context>"}


CLASS = "struct A { Q_DECLARE_TR_FUNCTIONS(A) };\n"
OPEN = CLASS + 'auto a = A::tr("打开 %1");\n'
COUNT = CLASS + 'auto a = A::tr("%n 条", nullptr, 2);\n'


def one(text, translation, attributes=""):
    return [(attributes, text, translation)]


PLANTED = [
    (planted(OPEN, one("打开 %1", "<translation>Open %1</translation>")), []),
    (planted(COUNT, one("%n 条", "<translation><numerusform>%n row</numerusform><numerusform>%n rows</numerusform></translation>",
                        ' numerus="yes"')), []),
    (planted(OPEN, one("打开 %1", "<translation>Open %2</translation>")), ["other placeholders"]),
    (planted(OPEN, one("打开 %1", '<translation type="unfinished">Open %1</translation>')), ["is unfinished"]),
    (planted(OPEN, one("打开 %1", "<translation>打开 %1</translation>")), ["Chinese left"]),
    (planted(OPEN, one("打开 %1", "<translation>&amp;Open %1</translation>")), ["accelerators"]),
    (planted(CLASS, one("打开 %1", "<translation>Open %1</translation>")), ["is vanished"]),
    (planted(OPEN, []), ["is in the sources only"]),
    (planted(COUNT, one("%n 条", "<translation><numerusform>%n rows</numerusform></translation>", ' numerus="yes"')),
     ["has an empty translation"]),
    (planted('#include <B>\nnamespace N { void f() { tr("打开 %1"); } }\n', []), ["lacks Q_OBJECT", "is in the sources only"]),
]


def self_test(program):
    failures = []
    for files, expected in PLANTED:
        with tempfile.TemporaryDirectory() as folder:
            for name, text in files.items():
                path = Path(folder) / name
                path.parent.mkdir(exist_ok=True)
                path.write_text(text, encoding="utf-8")
            found, _ = check(program, Path(folder))
        if len(found) != len(expected) or not all(any(word in line for line in found) for word in expected):
            failures.append(f"{files['toolkit/A.cpp']}: found {found}, expected {expected}")
    for failure in failures:
        print(failure)
    print(f"translations: {len(PLANTED)} planted trees, {len(failures)} not found as they should be")
    return 1 if failures else 0


def main():
    program, *words = sys.argv[1:]
    if words == ["--self-test"]:
        return self_test(program)
    if words == ["--update"]:
        for name in FOLDERS:
            lupdate(program, tree.ROOT, name, f"translations/{name}_en.ts")
        return 0
    return tree.finish("translations", *check(program, tree.ROOT))


if __name__ == "__main__":
    sys.exit(main())
