#!/usr/bin/env python3
"""Hands a file to Doxygen the way it wants it: comments of headers as documentation, and in the
guide no links to files that are no part of the manual.

Usage: doxygen-filter.py FILE
"""
import re
import sys


def cpp(lines):
    """Comments before a declaration and behind one; banners become headings of groups."""
    is_open = False  # a group of members
    is_first = True  # the head comment, about the file
    for line in lines:
        banner = re.match(r"^(\s*)// --- ([^-]+?)(:[^-]*)? ---$", line)
        if banner:
            yield "/// @}" if is_open else ""
            yield f"/// @name {banner[2]}"
            yield "/// @{"
            is_open = True
            continue
        if is_open and re.match(r"^( private:|};)", line):
            yield "/// @}"
            is_open = False
        if is_first and line.startswith("//"):
            yield "/// @file"
        is_first = False
        if re.match(r"\s*//", line):
            yield line.replace("//", "///", 1)
        else:
            yield re.sub(r"([;,{)]\s+)//", r"\1///<", line)


def c(text):
    """The same for comments of C, whose groups end where the next one begins or the header does."""
    parts = re.split(r"/\* --- (.*?) ---(.*?)\*/", text, flags=re.DOTALL)
    groups = "/** @} */\n".join(f"/** @name {name}\n{more}*/\n/** @{{ */{members}"
                               for name, more, members in zip(*[iter(parts[1:])] * 3))
    members, end = groups.rsplit("#ifdef __cplusplus", 1)
    text = f"{parts[0]}{members}/** @}} */\n#ifdef __cplusplus{end}"
    text = re.sub(r"([;,\d][ \t]+)/\*(?!\*)", r"\1/**<", text)
    text = re.sub(r"(^|\n)([ \t]*)/\*(?!\*)", r"\1\2/**", text)
    return text.replace("/** ", "/** @file\n * ", 1)


def markdown(text):
    text = re.sub(r"<!--.*?-->\n?", "", text)
    return re.sub(r"(?<!!)\[([^]]+)\]\((?!https?:)(?![a-z0-9-]+\.md)[^)]+\)", r"`\1`", text)


path = sys.argv[1]
with open(path, encoding="utf-8") as file:
    content = file.read()
if path.endswith(".md"):
    sys.stdout.write(markdown(content))
elif path.endswith("_c.h"):
    sys.stdout.write(c(content))
else:
    sys.stdout.write("\n".join(cpp(content.split("\n"))))
