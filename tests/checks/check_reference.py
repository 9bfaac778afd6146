"""The reference of the public headers: Doxygen reads every one and warns of nothing.

    check_reference.py DOXYGEN [FOLDER]    with a folder the pages are made there, as HTML
    check_reference.py DOXYGEN --self-test plants faults and sees to it that they are found

A comment that names a parameter that is not there, a reference that leads nowhere, a command that Doxygen does not know: each is a
warning, and none is allowed.
"""

import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import tree

SKIPPED = 77
LISTED = re.compile(r"^  (\S+\.h)\)?$", re.MULTILINE)
SETTINGS = """
PROJECT_NAME = timeshare
FULL_PATH_NAMES = YES
JAVADOC_AUTOBRIEF = YES
EXTRACT_ALL = YES
WARN_IF_INCOMPLETE_DOC = NO
WARN_NO_PARAMDOC = NO
GENERATE_LATEX = NO
INCLUDED_BY_GRAPH = NO
HAVE_DOT = NO
QUIET = YES
MACRO_EXPANSION = YES
EXPAND_ONLY_PREDEF = YES
PREDEFINED = TIMESHARE_EXPORT= Q_OBJECT= Q_SIGNALS=signals Q_SLOTS=slots
"""


def public_headers(root):
    """What is installed: the headers that CMake lists, and all of host/."""
    listed = LISTED.findall((root / "cmake/PublicHeaders.cmake").read_text(encoding="utf-8"))
    return [root / name for name in listed] + sorted((root / "host").rglob("*.h"))


def read_by_doxygen(doxygen, root, headers, folder, pages):
    """Complaints of Doxygen, a warning each. Its pages are made in the folder."""
    settings = Path(folder) / "Doxyfile"
    inputs = " ".join(f'"{header}"' for header in headers)
    form = "GENERATE_HTML = YES" if pages else "GENERATE_HTML = NO\nGENERATE_XML = YES\nXML_PROGRAMLISTING = NO"
    settings.write_text(f"{SETTINGS}\n{form}\nINPUT = {inputs}\nSTRIP_FROM_PATH = {root}\nOUTPUT_DIRECTORY = {folder}\n",
                        encoding="utf-8")
    done = subprocess.run([doxygen, str(settings)], capture_output=True, text=True)
    said = [line for line in (done.stderr + done.stdout).splitlines() if line.strip()]
    if done.returncode and not said:
        said = [f"{doxygen} ended with {done.returncode}"]
    return [line.replace(f"{root}/", "") for line in said]


def check(doxygen, root, pages=None):
    headers = public_headers(root)
    missing = [f"{header.relative_to(root)}: not there" for header in headers if not header.is_file()]
    with tempfile.TemporaryDirectory() as scratch:
        if pages:
            Path(pages).mkdir(parents=True, exist_ok=True)
        return missing + read_by_doxygen(doxygen, root, headers, pages or scratch, bool(pages)), len(headers)


PLANTED = {
    "host/Sound.h": "/// Adds two numbers.\n/// \\param a one of them\nint add(int a);\n",
    "host/Parameter.h": "/// Adds.\n/// \\param nothing is called so\nint add2(int a);\n",
    "host/Command.h": "/// A \\nosuchcommand here.\nint number();\n",
    "host/Reference.h": "/// See \\ref there_is_no_such_thing.\nint other();\n",
}


def self_test(doxygen):
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        for name, text in {**PLANTED, "cmake/PublicHeaders.cmake": "set(LIST\n  view/Gone.h)\n"}.items():
            (root / name).parent.mkdir(parents=True, exist_ok=True)
            (root / name).write_text(text, encoding="utf-8")
        found, _ = check(doxygen, root)
    told = {name for name in [*PLANTED, "view/Gone.h"] if any(name in one for one in found)}
    wrong = [f"not found: {name}" for name in [*PLANTED, "view/Gone.h"] if name != "host/Sound.h" and name not in told]
    wrong += [f"found without being planted: {name}" for name in told & {"host/Sound.h"}]
    return tree.finish("reference, planted faults", wrong, len(PLANTED))


def main():
    doxygen, *more = sys.argv[1:]
    if not shutil.which(doxygen):
        print(f"skipped: this machine has no {doxygen}")
        return SKIPPED
    if more == ["--self-test"]:
        return self_test(doxygen)
    return tree.finish("reference", *check(doxygen, tree.ROOT, more[0] if more else None))


if __name__ == "__main__":
    sys.exit(main())
