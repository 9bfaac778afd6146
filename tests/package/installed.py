"""Installs a build tree into an empty prefix and uses it as a stranger does.

    installed.py --build FOLDER --release NUMBER --qt MAJOR --cmake PROGRAM [--update]

With --update the pictures of the examples are made anew: in docs/pictures, those of Qt 6 in qt6/ beside this.

Programs outside of the tree find the package by CMake and by pkg-config, are compiled by both compilers with the strictest
settings, and run. The headers stand by themselves, and what their inline functions call is there.
"""

import argparse
import json
import os
import re
import shlex
import shutil
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
HOST = ROOT / "examples/minimal"
EXAMPLES = ("minimal", "formula_pane", "trades")
# Those of the guide; over Qt 6, which lays texts out otherwise (tests/golden/images/qt6/README.md), its own.
PICTURES = {"5": ROOT / "docs/pictures", "6": HERE / "qt6"}
STRICT = ["-std=c++17", "-fPIC", "-fvisibility=hidden", "-fvisibility-inlines-hidden", "-DQT_NO_KEYWORDS", "-Wall",
          "-Wextra", "-Wconversion", "-Werror"]


def run(*command, fails=False, **more):
    """Runs a command and answers its output; ends with it when the command does not end as it should."""
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, **more)
    if (done.returncode != 0) != fails:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}\nended with {done.returncode}")
    return done.stdout + done.stderr


CACHE = [shutil.which("ccache")] if shutil.which("ccache") else []  # what has not changed is not compiled again
os.environ["CCACHE_SLOPPINESS"] = "include_file_ctime,include_file_mtime"  # although it has just been installed


class Installed:
    def __init__(self, options):
        self.cmake = options.cmake
        self.build = Path(options.build)
        self.release = options.release
        self.qt = options.qt
        self.work = self.build / "tests/package/work"
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir(parents=True)
        # Installed in one place and used in another: nothing remembers where it was put.
        for component in ("runtime", "development"):
            run(self.cmake, "--install", self.build, "--prefix", self.work / "first", "--component", component)
        self.prefix = (self.work / "first").rename(self.work / "prefix")
        self.libraries = next(self.prefix.rglob("cmake/timeshare")).parents[1]
        self.environment = {**os.environ, "PKG_CONFIG_PATH": str(self.libraries / "pkgconfig")}

    def configure(self, source, name, *more, fails=False):
        return run(self.cmake, "-S", source, "-B", self.work / name, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER_LAUNCHER={';'.join(CACHE)}",
                   f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DEXPECTED_RELEASE={self.release}", *more, fails=fails)

    def by_cmake(self, source, compiler):
        """Builds programs by find_package and answers where they are."""
        name = f"{source.name}-{compiler}"
        self.configure(source, name, f"-DCMAKE_CXX_COMPILER={compiler}")
        run(self.cmake, "--build", self.work / name)
        return self.work / name

    def ask(self, option, package="timeshare"):
        """What pkg-config answers."""
        return run("pkg-config", option, package, env=self.environment).split()

    def compile(self, source, name, *more):
        """Compiles a source by the flags of pkg-config, the folders of Qt as those of the system."""
        qt = set(self.ask("--cflags", f"Qt{self.qt}Widgets"))
        flags = [flag.replace("-I", "-isystem", 1) if flag in qt else flag for flag in self.ask("--cflags")]
        run(*CACHE, "g++", *STRICT, *more, *flags, "-c", source, "-o", self.work / name)
        return self.work / name

    def by_pkg_config(self):
        assert self.ask("--modversion") == ["1." + self.release], self.ask("--modversion")
        program = self.work / "outside-pkg-config"
        run("g++", self.compile(HERE / "program/main.cpp", "outside.o", "-I", HOST), "-o", program, *self.ask("--libs"),
            f"-Wl,-rpath,{self.libraries}")
        return program

    def headers(self):
        """All public headers in one unit, with every inline function kept: it asks for nothing that is hidden."""
        unit = self.work / "headers.cpp"
        folder = self.prefix / "include/timeshare"
        names = sorted(path.relative_to(folder).as_posix() for path in folder.rglob("*.h"))
        assert len(names) > 100, names
        unit.write_text("".join(f"#include <timeshare/{name}>\n" for name in names))
        compiled = self.compile(unit, "headers.o", "-fkeep-inline-functions")
        shown = set()
        for library in self.libraries.glob("*.so"):
            for line in run("nm", "-D", "--defined-only", library).splitlines():
                shown.add(line.split()[-1].split("@")[0])
        wanted = {line.split()[-1] for line in run("nm", "-u", compiled).splitlines()}
        ours = re.compile(r"_ZN?K?(TVN|TIN|TSN|TTN)?(2TC|2GZ|2se|4bson|9kvservice|6quoter|5utils|9timeshare)")
        hidden = sorted(name for name in wanted - shown if ours.match(name))
        if hidden:
            sys.exit("called by inline functions of public headers, and hidden:\n"
                     + run("c++filt", *hidden))


def look_at_pictures(made, outside, pictures, update):
    """The pictures of the examples are those that are kept, give or take what a font engine does at the edge of letters."""
    for name in EXAMPLES:
        shown = pictures / f"{name}.png"
        if update:
            shutil.copyfile(made / f"{name}.png", shown)
        different = int(run(outside, "--differences", shown, made / f"{name}.png").split()[0])
        if different > 300:
            sys.exit(f"{made / name}.png is not {shown}: {different} pixels differ; "
                     "look at both, and with --update take the new ones")


def in_tree(installed):
    """The tree as a folder of another project: nothing but the libraries comes with it."""
    folder = installed.work / "around"
    folder.mkdir()
    (folder / "main.cpp").write_text("#include <timeshare/containers/CRealtimeMainWidget.h>\nint main() {}\n")
    (folder / "CMakeLists.txt").write_text(
        "cmake_minimum_required(VERSION 3.25)\nproject(around LANGUAGES CXX)\n"
        f"add_subdirectory({ROOT} timeshare)\nadd_executable(around main.cpp)\n"
        "target_link_libraries(around PRIVATE timeshare::chart)\n"
        "if(TARGET timeshare_terminal OR TARGET test_toolkit)\n  message(FATAL_ERROR \"more than the libraries\")\nendif()\n")
    installed.configure(folder, "around-build", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON")
    commands = json.loads((installed.work / "around-build/compile_commands.json").read_text())
    command = next(entry["command"] for entry in commands if entry["file"].endswith("around/main.cpp"))
    run(*shlex.split(command), "-fsyntax-only", cwd=installed.work)


def main():
    parser = argparse.ArgumentParser()
    for option in ("build", "release", "qt", "cmake"):
        parser.add_argument("--" + option, required=True)
    parser.add_argument("--update", action="store_true", help="take the pictures of the examples into the guide")
    options = parser.parse_args()
    installed = Installed(options)
    run("ldd", "-r", installed.libraries / f"libtimeshare{'' if options.qt == '5' else '-qt' + options.qt}.so")
    outside = installed.by_cmake(HERE / "program", "clang++") / "outside"
    for program in (outside, installed.by_pkg_config()):
        print(program.name, run(program).splitlines()[-1])
    examples = installed.by_cmake(ROOT / "examples", "clang++")
    for name in EXAMPLES:
        run(examples / name, "--snapshot", examples / f"{name}.png")
    look_at_pictures(examples, outside, PICTURES[options.qt], options.update)

    # What is asked for and not there is refused, and so is a project of the other Qt.
    other = {"5": 6, "6": 5}[options.qt]
    for line, words in (("find_package(timeshare 2 CONFIG REQUIRED)", "version: 1.0"),
                        ("find_package(timeshare 1 CONFIG REQUIRED COMPONENTS terminal)", "no terminal"),
                        (f"find_package(Qt{other} QUIET COMPONENTS Core)\nif(NOT TARGET Qt{other}::Core)\n"
                         f"  add_library(Qt{other}::Core INTERFACE IMPORTED)\nendif()\n"
                         "find_package(timeshare 1 CONFIG REQUIRED)",
                         f"built with Qt {options.qt}, and the project uses Qt {other}")):
        folder = installed.work / "refused"
        folder.mkdir(exist_ok=True)
        (folder / "CMakeLists.txt").write_text(
            f"cmake_minimum_required(VERSION 3.16)\nproject(refused LANGUAGES CXX)\n{line}\n")
        said = installed.configure(folder, "refused-build", fails=True)
        assert words in " ".join(said.split()), said
    installed.headers()
    in_tree(installed)
    print("installed: found, compiled against and run")


if __name__ == "__main__":
    main()
