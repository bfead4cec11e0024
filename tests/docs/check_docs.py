#!/usr/bin/env python3
"""Whether what the documents say can be done: compiles, runs or looks up every block of code in
them, and every path that they name.

- A block below `<!-- file: NAME -->` is written to NAME in a folder of the document's own.
- A block of sh below `<!-- run -->` is run in that folder; the library is installed in ~/parchlet.
- cpp: a program is compiled, linked and run; anything else is compiled, as declarations or as
  statements of a host (see CONTEXT). c: a program is compiled and run. python: is run.
- cmake: is configured, as a project of its own or as a part of one.
- sh: its scripts, presets, targets and options must exist. json: must be JSON, line by line.
- Links lead to files, and names of files in `code` name files of the tree.

Usage: check_docs.py SOURCE_FOLDER PREFIX LIBRARY_FOLDER WORK_FOLDER COMPILER
"""
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

source, prefix, library, work = (pathlib.Path(path) for path in sys.argv[1:5])
compiler = sys.argv[5]
tracked = [path.relative_to(source).as_posix() for folder in source.iterdir()
           if folder.name not in ("build", "out", ".git")
           for path in ([folder] if folder.is_file() else folder.rglob("*"))]
presets = {preset["name"] for preset in json.loads((source / "CMakePresets.json").read_text())
           ["configurePresets"]}
cmake_lists = "\n".join(path.read_text() for path in source.rglob("CMakeLists.txt")
                        if "build" not in path.relative_to(source).parts)
faults = []

# What a part of a host may take for granted.
CONTEXT = """
#include <parchlet/MemoryWindow.h>
#include <parchlet/Parchlet.h>
#if __has_include(<parchlet/x11/X11Window.h>)
#include <parchlet/x11/X11Display.h>
#include <parchlet/x11/X11Overlay.h>
#include <parchlet/x11/X11Window.h>
#include <xcb/xcb.h>
xcb_window_t MakeWindow();
#endif
extern Parchlet engine;
extern AnnotationPageInfo info;
"""


BLOCK = re.compile(
    r"(?:<!-- (?P<order>file: (?P<file>\S+)|run) -->\n)?^```(?P<language>\w*)\n(?P<code>.*?)^```$",
    re.MULTILINE | re.DOTALL)


class Failure(Exception):
    pass


def run(folder, *command, env=None):
    result = subprocess.run(command, cwd=folder, env=env or environment, capture_output=True,
                            text=True, check=False)
    if result.returncode != 0:
        raise Failure(f"{shlex.join(map(str, command))}:\n{result.stdout}{result.stderr}")


# What a reader types must find the library by itself; for the other blocks it is found for them.
of_reader = {name: value for name, value in os.environ.items() if name != "LD_LIBRARY_PATH"}
of_reader |= {"HOME": str(work / "home"), "CXX": compiler}
environment = {**of_reader, "LD_LIBRARY_PATH": str(library)}
flags = [f"-I{prefix}/include", "-Wall", "-Wextra", "-Werror"]
link = [f"-L{library}", "-lparchlet"]


def compile_cpp(folder, text, *more):
    (folder / "block.cpp").write_text(text)
    run(folder, compiler, "-std=c++17", *flags, "block.cpp", *more)


def check_cpp(folder, text):
    if "int main(" in text:
        compile_cpp(folder, text, *link, "-o", "block")
        run(folder, "./block")
        return
    try:
        compile_cpp(folder, CONTEXT + text, "-fsyntax-only")
    except Failure:
        body = f"{CONTEXT}void Host();\nvoid Host() {{\n{text}\n}}\n"
        compile_cpp(folder, body, "-fsyntax-only")


def check_c(folder, text):
    (folder / "block.c").write_text(text)
    run(folder, "cc", "-std=c11", *flags, "block.c", *link, "-o", "block")
    run(folder, "./block")


def check_python(folder, text):
    (folder / "block.py").write_text(text)
    run(folder, sys.executable, "block.py")


def check_cmake(folder, text):
    part = folder / "part"
    shutil.rmtree(part, ignore_errors=True)
    part.mkdir()
    if "project(" not in text:
        text = ("cmake_minimum_required(VERSION 3.16)\nproject(Part LANGUAGES CXX)\n"
                f"add_executable(your_host main.cpp)\n{text}")
    (part / "main.cpp").write_text("int main() {}\n")
    (part / "CMakeLists.txt").write_text(text)
    run(part, "cmake", "-B", "build", "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}")


def words_of(line):
    try:
        return shlex.split(line, comments=True)
    except ValueError as error:
        raise Failure(f"{line}: {error}") from error


def check_command(words):
    program = words[0]
    if program in ("sudo", "nice"):
        return check_command(words[1:])
    if program == "taskset":
        return check_command(words[3:])
    if program.startswith("scripts/"):
        text = (source / program).read_text() if (source / program).is_file() else ""
        if not text:
            raise Failure(f"there is no {program}")
        text += "".join(path.read_text() for path in source.glob("apps/*/Options.cpp"))
        for option in words[1:]:
            if option.startswith("--") and option[2:].split("=")[0] not in text:
                raise Failure(f"{program} knows no {option}")
    elif program.startswith("build/"):
        check_built(program)
    elif program in ("cmake", "ctest"):
        for option, value in zip(words, words[1:]):
            if option == "--preset" and value not in presets:
                raise Failure(f"there is no preset {value}")
            if option == "--target" and not re.search(rf"[( ]{re.escape(value)}\b", cmake_lists):
                raise Failure(f"there is no target {value}")
    elif shutil.which(program) is None:
        raise Failure(f"there is no program {program}")


def check_built(path):
    """A path below build/PRESET/, by the folder that it is built from and the target's name."""
    parts = path.split("/")
    if len(parts) < 4 or parts[1] not in presets:
        return
    folder = "/".join(parts[2:-1])
    stem = parts[-1].split(".")[0].removeprefix("lib")
    if not (source / folder / "CMakeLists.txt").is_file() or not re.search(
            rf"\b{re.escape(stem)}\b", (source / folder / "CMakeLists.txt").read_text()):
        raise Failure(f"nothing builds {path}")


def check_sh(_folder, text):
    text = text.replace("\\\n", " ")
    for line in text.splitlines():
        for command in re.split(r"&&|\|\||\||;", line.split(" #")[0]):
            words = [word for word in words_of(command) if word not in ("{", "}", "(", ")")]
            if words:
                check_command(words)


def check_json(_folder, text):
    for line in text.splitlines():
        json.loads(line)


checks = {"cpp": check_cpp, "c": check_c, "python": check_python, "cmake": check_cmake,
          "sh": check_sh, "json": check_json}


def check_blocks(name, text):
    folder = work / name.replace("/", "-")
    folder.mkdir()
    checked = 0
    for found in BLOCK.finditer(text):
        language, code = found["language"], found["code"]
        if not language:
            continue
        line = text.count("\n", 0, found.start("code"))
        try:
            if found["file"]:
                (folder / found["file"]).write_text(code)
            elif found["order"]:
                run(folder, "bash", "-eu", "-c", code, env=of_reader)
            elif language not in checks:
                raise Failure(f"nobody can check a block of {language}")
            else:
                checks[language](folder, code)
            checked += 1
        except (Failure, ValueError) as fault:
            faults.append(f"{name}:{line}: {fault}")
    return checked


def is_file(name, folder):
    pattern = name.rstrip("/")
    if "*" in pattern:
        return any(pathlib.PurePosixPath(path).match(pattern) for path in tracked)
    return ((folder / pattern).exists() or (source / pattern).exists()
            or any(path.endswith("/" + pattern) for path in tracked))


def check_paths(name, text):
    folder = (source / name).parent
    text = re.sub(r"^```.*?^```$", "", text, flags=re.MULTILINE | re.DOTALL)
    rooms = "|".join(re.escape(path.name) for path in source.iterdir()
                     if path.is_dir() and path.name not in ("build", "out"))
    named = 0
    for link_to in re.findall(r"\]\(([^)#\s]+)", text):
        named += 1
        if "://" not in link_to and not (folder / link_to).exists():
            faults.append(f"{name}: links to {link_to}, which does not exist")
    for code in re.findall(r"`([^`\n]+)`", text):
        if code.startswith("build/"):
            try:
                check_built(code.split()[0])
            except Failure as fault:
                faults.append(f"{name}: {fault}")
            continue
        for word in re.findall(r"[\w.*/-]+", code):
            is_path = re.fullmatch(rf"({rooms})/[\w.*/-]*", word)
            if is_path or re.fullmatch(r"[\w./-]+\.(h|hpp|c|cpp|cmake|map|sh|py|md|jsonl)", word):
                named += 1
                if not is_file(word, folder):
                    faults.append(f"{name}: names {word}, which does not exist")
    return named


shutil.rmtree(work, ignore_errors=True)
(work / "home").mkdir(parents=True)
(work / "home" / "parchlet").symlink_to(prefix)
documents = [name for name in tracked if name.endswith(".md")]
blocks = paths = 0
for document in documents:
    content = (source / document).read_text(encoding="utf-8")
    blocks += check_blocks(document, content)
    paths += check_paths(document, content)
if faults:
    sys.exit("\n".join(faults))
print(f"{len(documents)} documents, {blocks} blocks, {paths} paths: all is as they say")
