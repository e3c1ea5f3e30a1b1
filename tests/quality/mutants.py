# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
"""Makes mutants of a C++ source: the same text with one small mistake in it."""

import hashlib
import re
from dataclasses import dataclass

# A string, a character, a comment, an assertion or a preprocessor line. Only the operator for texts
# changes any of these.
QUIET = re.compile(
    r'//[^\n]*|/\*.*?\*/|^[ \t]*#[^\n]*|\b(?:static_)?assert\([^;]*;|"(?:\\.|[^"\\\n])*"'
    r"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'", re.DOTALL | re.MULTILINE)
STATEMENT = re.compile(r"^(?P<indent> +)(?P<text>[^\s#/}].*;)(?: *//.*)?$")
CALL = re.compile(r"^[\w:.>\-]+(?:\[[^\]]*\])?(?:(?:\.|->|::)\w+)*\(.*\);$")
KEYWORD = re.compile(r"^(?:return|const|static|using|constexpr|delete|emit|else|Q_OBJECT|auto)\b")
GUARD = re.compile(r"(?<!else )\bif \((?P<condition>(?:[^()]|\((?:[^()]|\([^()]*\))*\))*)\)(?= \{)")

SWAPS = {
    "comparison": {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ",
                   " == ": " != ", " != ": " == "},
    "logic": {" && ": " || ", " || ": " && ", "true": "false", "false": "true"},
    "arithmetic": {" + ": " - ", " - ": " + ", " * ": " + ", " / ": " * ", " % ": " * "},
}


# Statements whose order does not matter: they take effect after the handler has returned, or set
# one property of a widget that is not visible yet.
INDEPENDENT = re.compile(r"^(?:update\(\)|show\(\)|setCursor\(|\w+->(?:set(?!Enabled)|show)\w*\()")
ASSIGNMENT = re.compile(r"^[\w.]+ = ")


def depend(first, second):
    """Whether it may matter which of two statements comes first."""
    if INDEPENDENT.match(first) or INDEPENDENT.match(second) or first.startswith("~"):
        return False
    if not ASSIGNMENT.match(first) and not ASSIGNMENT.match(second):
        return True
    return bool(set(re.findall(r"\w+", first)) & set(re.findall(r"\w+", second)))


@dataclass(frozen=True)
class Mutant:
    file: str
    operator: str
    start: int
    end: int
    line: int
    before: str
    after: str
    text: str

    def apply(self, content):
        return content[:self.start] + self.text + content[self.end:]

    def name(self):
        return f"{self.file}:{self.line} {self.operator}: {self.before} -> {self.after}"

    def rank(self):
        """A number that depends on the mistake, but not on its place in the file."""
        key = "|".join((self.file, self.operator, self.before, self.after))
        return hashlib.sha256(key.encode()).hexdigest()


class Source:
    def __init__(self, file, content):
        self.file = file
        self.content = content
        self.code = QUIET.sub(lambda match: re.sub(r"[^\n]", "\0", match[0]), content)

    def mutant(self, operator, start, end, after):
        """Describes the mutant by its whole line, before and after."""
        first = self.content.rfind("\n", 0, start) + 1
        last = self.content.find("\n", end)
        line = self.content[first:last]
        changed = line[:start - first] + after + line[end - first:]
        tidy = lambda text: re.sub(r"\s+", " ", text).strip()
        return Mutant(self.file, operator, start, end, self.content.count("\n", 0, start) + 1,
                      tidy(line), tidy(changed), after)

    def constants(self):
        for match in re.finditer(r"(?<![\w.])(0x[0-9A-Fa-f]+|\d+)(?=[uUlLs]*\b)", self.code):
            text = match[0]
            value = int(text, 0) + 1
            after = f"0x{value:X}" if text.startswith("0x") else str(value)
            yield "constant", match.start(), match.end(), after

    def texts(self):
        for match in re.finditer(r'"((?:\\.|[^"\\\n])+)"', self.content):
            before = self.content[self.content.rfind("\n", 0, match.start()) + 1:match.start()]
            if not re.search(r'#include|//|extern |assert', before):
                yield "text", match.start(1), match.start(1) + 1, "~"

    def swaps(self):
        for operator, table in SWAPS.items():
            for before, after in table.items():
                word = before.isalpha()
                pattern = rf"\b{before}\b" if word else re.escape(before)
                for match in re.finditer(pattern, self.code):
                    if self.code[match.end():match.end() + 1] == "\0":
                        continue  # the star of a pointer before the name of an unused parameter
                    yield operator, match.start(), match.end(), after

    def guards(self):
        for match in GUARD.finditer(self.code):
            yield "guard", match.start("condition"), match.end("condition"), "false"

    def statements(self):
        """The start, the end and the text of each statement that fills a line."""
        start = 0
        for line in self.code.splitlines(keepends=True):
            match = STATEMENT.match(line.rstrip("\n"))
            if match and line.count("(") == line.count(")") and line.count("{") == line.count("}"):
                first = start + match.start("text")
                last = start + match.end("text")
                yield first, last, len(match["indent"])
            start += len(line)

    def continues(self, start):
        """Whether the statement began on an earlier line."""
        before = self.code[:self.code.rfind("\n", 0, start)].rstrip(" \n\0")
        return before[-1:] not in ("{", "}", ";", ":")

    def calls(self):
        for start, end, _ in self.statements():
            text = self.code[start:end]
            if CALL.match(text) and not KEYWORD.match(text) and not self.continues(start):
                yield "call", start, end, ";"

    def order(self):
        if self.file.endswith(".h"):
            return  # declarations may stand in any order
        previous = None
        for start, end, indent in self.statements():
            text = self.content[start:end]
            if KEYWORD.match(text) or self.continues(start):
                previous = None
                continue
            adjacent = previous and previous[2] == indent
            if adjacent and not self.code[previous[1]:start].strip() and depend(previous[3], text):
                between = self.content[previous[1]:start]
                yield ("order", previous[0], end,
                       text + between + self.content[previous[0]:previous[1]])
            previous = (start, end, indent, text)

    def mutants(self):
        for kind in (self.constants, self.texts, self.swaps, self.guards, self.calls, self.order):
            for operator, start, end, after in kind():
                yield self.mutant(operator, start, end, after)
