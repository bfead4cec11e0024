"""Runs the mutation check; see scripts/mutate.sh."""

import json
import os
import re
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from sites import break_line, choose_sites, is_painter

SEED = 7
ROOMS = ["engine", "document", "page", "annotation", "utils", "platform/clock", "platform/com",
         "platform/display", "platform/gdi", "platform/graphics", "platform/image", "platform/log",
         "platform/text", "platform/window", "platform/canvas", "platform/raster"]
# Fast ones first; a break is put to the next program only when the ones before missed it.
PROGRAMS = ["parchlet_tests", "parchlet_fault_tests", "parchlet-display-tests",
            "parchlet-text-tests", "parchlet-image-tests", "parchlet_model_tests",
            "parchlet_thread_tests"]
# Who holds the canvas and the rasterizer, and nothing else. Every test that paints comes across
# them, so that a survivor would be put to nearly all tests there are.
PAINTER_PROGRAMS = ["parchlet-painter-tests", "parchlet_tests"]
ALL_PROGRAMS = list(dict.fromkeys(PROGRAMS + PAINTER_PROGRAMS))
LEAK = "leak"
MISSED = ("survived", "never reached")
# A leak is a failure; a break may ask for any amount of memory.
LEAKS = (f"suppressions={os.getcwd()}/tests/support/leaks.supp:print_suppressions=0"
         ":hard_rss_limit_mb=3000")

TREE = Path("build/mutation/tree")
OUT = Path("build/mutation/out")
REPORT = Path("build/mutation/report.tsv")


def quiet(command, **options):
    return subprocess.run(command, capture_output=True, text=True, **options)


def write_if_changed(path, text):
    """Leaves equal files alone, for the build's sake."""
    if not path.exists() or path.read_bytes() != text:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text)


def read_tree():
    names = quiet(["git", "ls-files", "-co", "--exclude-standard"], check=True).stdout.split("\n")
    return {name: Path(name).read_bytes() for name in names if name and Path(name).is_file()}


def room_of(path):
    """The room that a break is counted for; the platform's small ones count as one."""
    if is_painter(path):
        return Path(path).parent.name
    return path.split("/")[1]


def find_sites(files):
    sites = []
    for name in sorted(files):
        room = name.removeprefix("src/").rpartition("/")[0]
        if name.startswith("src/") and room in ROOMS:
            sites += choose_sites(name, files[name].decode(), SEED)
    return sites


def write_broken_tree(files, mutants):
    """`mutants` has the sites by their numbers, those left out that do not compile."""
    broken = {}
    for number, site in mutants.items():
        lines = broken.setdefault(site.path, files[site.path].decode().split("\n"))
        lines[site.line - 1] = break_line(lines[site.line - 1], site, number)
    for name, text in files.items():
        write_if_changed(TREE / name, "\n".join(broken[name]).encode() if name in broken else text)


def configure():
    result = quiet(["cmake", "-S", TREE, "-B", OUT, "-G", "Ninja", "-D", "CMAKE_CXX_COMPILER=g++",
                    "-D", "CMAKE_BUILD_TYPE=Debug", "-D", "CMAKE_CXX_FLAGS_DEBUG=-O1 -w",
                    "-D", f"CMAKE_CXX_FLAGS=-include {TREE.resolve()}/scripts/mutation/mutation.h",
                    "-D", "CMAKE_EXE_LINKER_FLAGS=-fsanitize=leak",
                    "-D", "CMAKE_EXPORT_COMPILE_COMMANDS=ON", "-D", "PARCHLET_BUILD_X11=OFF",
                    "-D", "PARCHLET_BUILD_APPS=OFF", "-D", "PARCHLET_BUILD_EXAMPLES=OFF"])
    if result.returncode:
        sys.exit(result.stdout + result.stderr)


def build(files, mutants):
    """Builds the broken tree and drops what does not compile from `mutants`."""
    while True:
        write_broken_tree(files, mutants)
        configure()
        result = quiet(["ninja", "-k0", "-j", str(os.cpu_count()), "-C", OUT, *ALL_PROGRAMS])
        if result.returncode == 0:
            return
        bad = set()
        for path, line in re.findall(r"(src/[\w/-]+\.\w+):(\d+):\d+: (?:error|note: in expansion)",
                                     result.stdout):
            bad |= {n for n, s in mutants.items() if s.path == path and s.line == int(line)}
        if not bad:
            sys.exit(result.stdout[-4000:])
        print(f"{len(bad)} breaks do not compile", flush=True)
        for number in bad:
            del mutants[number]


def drop_unbuilt(mutants):
    """Drops what the build does not compile: another system's side of the platform layer."""
    built = quiet(["ninja", "-C", OUT, "-t", "deps"], check=True).stdout
    return {n: site for n, site in mutants.items() if f"/{TREE.name}/{site.path}\n" in built}


def find_programs():
    return {name: next(path for path in OUT.rglob(name) if path.is_file())
            for name in ALL_PROGRAMS}


def run_tests(program, tests, timeout, **environment):
    """The first test that failed, "" when none did. A hang and a crash are failures."""
    with tempfile.TemporaryDirectory(dir=OUT.resolve()) as folder:
        os.chmod(folder, 0o755)  # a test becomes another user for a while
        with open(Path(folder) / "log", "w+", errors="replace") as log:
            try:
                code = subprocess.run(
                    [program.resolve(), "--gtest_fail_fast"], timeout=timeout, stdout=log,
                    stderr=log,
                    env={**os.environ, **environment, "GTEST_FILTER": ":".join(tests),
                         "TMPDIR": folder, "LSAN_OPTIONS": LEAKS},
                ).returncode
            except subprocess.TimeoutExpired:
                code = "hang"
            log.seek(0)
            output = log.read()
    if code == 0:
        return ""
    if failed := re.search(r"^\[  FAILED  \] ([^ ,]+)", output, re.MULTILINE):
        return failed[1]
    started = re.findall(r"^\[ RUN      \] (.*)$", output, re.MULTILINE)
    return f"{started[-1] if started else ''} ({LEAK if code == 23 else code})"


def list_tests(program):
    tests = []
    for line in quiet([program, "--gtest_list_tests"]).stdout.splitlines():
        name = line.split("#")[0].strip()
        if line.startswith("  "):
            tests.append(suite + name)
        elif name.endswith("."):
            suite = name
    return tests


def trace(name, program, test):
    """What the test comes across, and how long it takes unbroken."""
    file = OUT.resolve() / f"trace-{name}-{test.replace('/', '_')}"
    begin = time.monotonic()
    failed = run_tests(program, [test], None, MUTANT_TRACE=str(file))
    if failed:
        sys.exit(f"{failed} fails unbroken")
    reached = {int(number) for number in file.read_text().split()}
    file.unlink()
    return name, test, reached, time.monotonic() - begin


def check(number, site, programs, traces):
    """Who caught the break, or why nobody did."""
    names = PAINTER_PROGRAMS if is_painter(site.path) else PROGRAMS
    reached = [(name, test, seconds) for name, test, numbers, seconds in traces
               if number in numbers and name in names]
    for name in names:
        tests = {test: seconds for owner, test, seconds in reached if owner == name}
        if tests:
            failed = run_tests(programs[name], tests, 10 + 5 * sum(tests.values()), MUTANT=str(number))
            if failed:
                return f"{name} {failed}"
    return MISSED[0] if reached else MISSED[1]


def check_lock(site, files, commands):
    """What clang's thread-safety analysis says of the file without the lock; None: no program."""
    lines = files[site.path].decode().split("\n")
    lines[site.line - 1] = ""
    with tempfile.NamedTemporaryFile("w", suffix=".cpp", dir=OUT) as source:
        source.write("\n".join(lines))
        source.flush()
        flags = re.findall(r"-I\S+|-D\S+|-std=\S+|-isystem \S+|-include \S+", commands[site.path])
        result = quiet(["clang++", "-fsyntax-only", "-Werror=thread-safety",
                        *" ".join(flags).split(), source.name])
    if result.returncode == 0:
        return MISSED[0]
    return "clang -Wthread-safety" if "-Wthread-safety" in result.stderr else None


def report(results):
    """Writes a line for each break, and prints the sums and the survivors."""
    with open(REPORT, "w") as file:
        for site, catcher in results:
            file.write(f"{site.path}:{site.line}\t{site.kind}\t{catcher}\t{site.text}\n")
    survivors = [(site, why) for site, why in results if why in MISSED]
    for title, key in (("room", lambda s: room_of(s.path)), ("kind", lambda s: s.kind)):
        print(f"\nby {title}:")
        for value in sorted({key(site) for site, _ in results}):
            of_value = [r for r in results if key(r[0]) == value]
            missed = [r for r in survivors if key(r[0]) == value]
            print(f"  {value}: {len(of_value) - len(missed)} of {len(of_value)} caught")
    print("\nby whom:")
    for name in [*ALL_PROGRAMS, "clang"]:
        print(f"  {name}: {sum(why.split(' ')[0] == name for _, why in results)}")
    print(f"\n{len(survivors)} survived:")
    for site, why in survivors:
        print(f"  {site.path}:{site.line}: {site.kind}, {why}: {site.text}")
    caught = len(results) - len(survivors)
    print(f"\n{caught} of {len(results)} caught, {100 * caught / len(results):.1f} %")


def make_filter(words):
    """Whether a site is asked for."""
    survived = None
    if "--survivors" in words:
        words.remove("--survivors")
        lines = [line.split("\t") for line in REPORT.read_text().splitlines()]
        survived = {(place, kind) for place, kind, catcher, _ in lines if catcher in MISSED}

    def is_wanted(site):
        return ((survived is None or (f"{site.path}:{site.line}", site.kind) in survived) and
                (not words or any(word in site.path for word in words)))
    return is_wanted


def main():
    is_wanted = make_filter(sys.argv[1:])
    files = read_tree()
    sites = find_sites(files)
    locks = [site for site in sites if site.kind == "dropped lock"]
    mutants = dict(enumerate(site for site in sites if site.kind != "dropped lock"))
    print(f"{len(mutants)} breaks and {len(locks)} dropped locks; building", flush=True)
    build(files, mutants)
    mutants = drop_unbuilt(mutants)

    programs = find_programs()
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        print("tracing what each test comes across", flush=True)
        traces = list(pool.map(lambda job: trace(*job),
                               [(name, program, test) for name, program in programs.items()
                                for test in list_tests(program)]))
        commands = {str(Path(c["file"]).relative_to(TREE.resolve())): c["command"]
                    for c in json.loads((OUT / "compile_commands.json").read_text())}
        mutants = {n: site for n, site in mutants.items() if is_wanted(site)}
        locks = [site for site in locks if is_wanted(site)]
        results = []
        for site, catcher in zip(locks, pool.map(lambda s: check_lock(s, files, commands), locks)):
            if catcher is not None:
                results.append((site, catcher))
        for done, (number, catcher) in enumerate(
                zip(mutants, pool.map(lambda n: check(n, mutants[n], programs, traces), mutants)), 1):
            results.append((mutants[number], catcher))
            site = mutants[number]
            print(f"{done}/{len(mutants)} {site.path}:{site.line}: {catcher}", flush=True)
    report(sorted(results, key=lambda r: (r[0].path, r[0].line)))


if __name__ == "__main__":
    main()
