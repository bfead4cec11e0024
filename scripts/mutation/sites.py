"""The places of a source file that can be broken, and how a line reads with its break in.

Every break is a switch in the line, `MUTANT(number)`, so that one build holds all of them. A lock
cannot be switched off without changing its scope: it is taken out for the compiler's analysis
alone.
"""

import random
import re
from dataclasses import dataclass

_TERM = r"[A-Za-z_0-9][\w.]*(?:->[\w.]+)*(?:\([^()]*\))?(?:\[[^\[\]]*\])?"
_COMPARISON = re.compile(
    r"(?:\(|&& |\|\| |return |= |\? |: |!)"
    rf"(?P<whole>(?P<a>{_TERM}) (?P<op><=|>=|<|>|==|!=) (?P<b>{_TERM}))"
    r"(?=\)| &&| \|\||;| \?|,)")
_CONDITION = re.compile(r"^\s*(?:\} else )?if \((?P<whole>(?!const |auto |constexpr )[^;]*)\) \{$")
_ASSIGNMENT = re.compile(
    r"^\s{2,}(?P<whole>(?!const\b|auto\b|return\b|static\b|using\b|else\b|std::\w+<)"
    r"\*?[A-Za-z_][\w.]*(?:->[\w.]+|\.\w+|\[[^\[\]]*\]|\([^()]*\))* (?:[-+|*]?=) [^{}]*;)$")
_CALL = re.compile(
    r"^\s{2,}(?P<whole>(?!return\b|throw\b|delete\b|using\b|static_assert|namespace|case|goto)"
    r"[A-Za-z_]\w*(?:(?:->|\.|::)[A-Za-z_]\w*)*\([^{}]*\);)$")
_RESULT = re.compile(r"^\s{2,}return (?P<whole>0|1|-1|true|false);$")
_STEP = re.compile(rf"(?P<whole>(?P<a>(?!\d){_TERM}) (?P<op>[-+]) (?P<b>\d+))(?=[;),])")
_LANES = re.compile(r"hn::(?P<op>Add|Sub|Min|Max|Lt|Le|Gt|Ge|And|Or)\(")
_LOCK = re.compile(r"^\s+(?P<whole>(?:const )?MutexLock \w+\(\w+\);)$")

_FLIPPED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
_OTHER_LANES = {"Add": "Sub", "Sub": "Add", "Min": "Max", "Max": "Min", "Lt": "Le", "Le": "Lt",
                "Gt": "Ge", "Ge": "Gt", "And": "Or", "Or": "And"}
_OTHER_RESULT = {"0": "1", "1": "0", "-1": "1", "true": "false", "false": "true"}


@dataclass(frozen=True)
class Site:
    path: str  # from the tree's root
    line: int  # from 1
    kind: str
    start: int
    end: int
    broken: str  # what stands there instead; @ is the switch
    text: str


def _end_of_call(line, opening):
    """Past the parenthesis that closes the one at `opening`; None when the line ends before."""
    depth = 0
    for at in range(opening, len(line)):
        depth += {"(": 1, ")": -1}.get(line[at], 0)
        if depth == 0:
            return at + 1
    return None


def is_painter(path):
    """Whether the file belongs to the rooms that turn marks into pixels."""
    return "/canvas/" in path or "/raster/" in path


def _sites_of_line(path, number, line):
    if "constexpr" in line or line.lstrip().startswith(("//", "#", "static_assert", "template")):
        return

    def site(kind, match, broken):
        return Site(path, number, kind, match.start("whole"), match.end("whole"), broken,
                    line.strip())

    if match := _CONDITION.match(line):
        yield site("negated condition", match, f"@ != static_cast<bool>({match['whole']})")
    for match in _COMPARISON.finditer(line):
        flipped = f"{match['a']} {_FLIPPED[match['op']]} {match['b']}"
        yield site("flipped comparison", match, f"(@ ? ({flipped}) : ({match['whole']}))")
    for match in _LANES.finditer(line):
        if end := _end_of_call(line, match.end() - 1):
            call = line[match.start():end]
            other = "hn::" + _OTHER_LANES[match["op"]] + line[match.end() - 1:end]
            yield Site(path, number, "changed lanes", match.start(), end,
                       f"(@ ? {other} : {call})", line.strip())
    if path.endswith(".h") and not path.endswith("-inl.h"):
        return
    if match := _LOCK.match(line):
        yield site("dropped lock", match, "")
    elif match := _ASSIGNMENT.match(line) or _CALL.match(line):
        yield site("dropped statement", match, f"if (!@) {{ {match['whole']} }}")
    if match := _RESULT.match(line):
        value = match["whole"]
        yield site("swapped result", match, f"@ ? {_OTHER_RESULT[value]} : {value}")
    for match in _STEP.finditer(line):
        step = int(match["b"])
        other = step + 1 if step != 1 else 0
        yield site("off by one", match, f"{match['a']} {match['op']} (@ ? {other} : {step})")


def choose_sites(path, text, seed):
    """A fifth of the file's places or less, no two on a line; the same ones for the same text."""
    found = [site for number, line in enumerate(text.split("\n"), 1)
             for site in _sites_of_line(path, number, line)]
    random.Random(f"{seed} {path}").shuffle(found)
    few = "platform/" in path and not is_painter(path)
    most = min(4 if few else 9, len(found) // 5 + 1)
    chosen = {}
    for site in found:
        if len(chosen) < most:
            chosen.setdefault(site.line, site)
    return sorted(chosen.values(), key=lambda site: site.line)


def break_line(line, site, number):
    """The line with the break as a switch, which is off until it is asked for."""
    return line[:site.start] + site.broken.replace("@", f"MUTANT({number})") + line[site.end:]
