#!/usr/bin/env python3
"""Reduces what abidw tells of a library to what its hosts can depend on: private member functions
go, although their symbols are exported with their class, and so do the places of sources.

Usage: reduce-abi.py < abidw's output > the reduced one
"""
import sys
import xml.etree.ElementTree as ET

root = ET.parse(sys.stdin).getroot()
parent_of = {child: parent for parent in root.iter() for child in parent}

kept = set()
for member in list(root.iter("member-function")):
    symbol = member.find("function-decl").get("elf-symbol-id")
    is_virtual = member.get("vtable-offset") is not None
    if is_virtual or symbol is not None and member.get("access") != "private":
        kept.add(symbol)
    else:
        parent_of[member].remove(member)
kept |= {element.get("elf-symbol-id") for element in root.iter()}
# A constructor has two symbols, one the alias of the other: they stay or go together.
symbols = [symbol for symbol in root.iter("elf-symbol") if symbol.get("type") == "func-type"]
names_of = [{f"{symbol.get('name')}@@{symbol.get('version')}", *symbol.get("alias", "").split(",")}
            - {""} for symbol in symbols]
for names in names_of * 2:
    if names & kept:
        kept |= names
for symbol, names in zip(symbols, names_of):
    if not names & kept:
        parent_of[symbol].remove(symbol)
for unit in root.iter("abi-instr"):
    unit.set("path", unit.get("path").rsplit("/", 1)[-1])

ET.ElementTree(root).write(sys.stdout, encoding="unicode")
print()
