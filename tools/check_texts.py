#!/usr/bin/env python3
"""Checks that docs/troubleshooting.md explains every text that the sources can show, and no other.

A text that can be shown is a sentence, or the beginning of one, that is not written to the log. The other literals are
compared with the log lines and dialog labels that the document lists.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LITERAL = re.compile(r'"(?:[^"\\\n]|\\.)*"(?:\s*"(?:[^"\\\n]|\\.)*")*')
PIECE = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
COMMENT = re.compile(r"//[^\n]*|#include[^\n]*")
TROUBLE = re.compile(r"\bLog(Warning|Error)\(|\blogError\(|\bwarnOf\w*\(|\bfail\(|\battempt(Write)?\(")
LOGGED = re.compile(r"\bLog(Debug|Info|Warning|Error|Line)?\w*\(")


def literals_of(source):
    """The text of each literal in a source file, and the part of its statement before it."""
    code = COMMENT.sub("", source.read_text(encoding="utf-8"))
    for match in LITERAL.finditer(code):
        yield "".join(PIECE.findall(match.group())), re.split(r"[;{}]", code[: match.start()])[-1]


def literals():
    """The text of each literal in the sources, and whether its statement writes to the log."""
    for source in sorted((ROOT / "src").rglob("*.*")):
        for text, statement in literals_of(source):
            yield text, bool(LOGGED.search(statement))


def is_shown(text):
    words = text.split()
    begins = text[:1].isupper() and len(words) >= 2
    return begins and (text.endswith(".") or text.endswith(" ") and len(words) >= 6)


def heads_of_trouble():
    """The beginnings of the warnings and errors in the log, from statements that log one and from tables of them."""
    for source in sorted((ROOT / "src").rglob("*.cpp")):
        for text, statement in literals_of(source):
            if TROUBLE.search(statement) and text[:1].isupper() and len(text.split()) >= 4:
                yield text.strip()


def first_cells(document):
    rows = re.findall(r"^\| ([^|]+?) \|", document, re.MULTILINE)
    return [row for row in rows if row not in ("text", "line")]


def main():
    found = list(literals())
    shown = {text.strip() for text, logged in found if not logged and is_shown(text)}
    known = {text.strip() for text, _ in found}
    explained = first_cells((ROOT / "docs/troubleshooting.md").read_text(encoding="utf-8"))
    faults = [f"not explained: {text}" for text in sorted(shown - set(explained))]
    faults += [f"no cause given: {head}" for head in sorted(set(heads_of_trouble()))
               if not any(head.startswith(text.rstrip(".:")) for text in explained)]
    faults += [f"explained, but not in the sources: {text}" for text in explained
               if not any(literal.startswith(text) or text.startswith(literal) and len(literal) > 10 for literal in known)]
    faults += [f"explained twice: {text}" for text in sorted({t for t in explained if explained.count(t) > 1})]
    print("\n".join(faults) or f"{len(shown)} texts, all explained")
    return 1 if faults or len(shown) < 40 else 0


sys.exit(main())
