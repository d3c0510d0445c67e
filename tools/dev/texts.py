#!/usr/bin/env python3
"""Gathers every text that people read, for those who translate Pendra.

    tools/dev/texts.py OUT.ts            the English texts, to be translated (Qt Linguist reads it)
    tools/dev/texts.py OUT.ts --pseudo   each "translated" into itself between ⟦ and ⟧, for the tests

A translation is that file under the name pendra_LANGUAGE.ts; `lrelease` makes of it the pendra_LANGUAGE.qm that
the program finds in share/pendra/translations.
"""
import pathlib
import re
import sys
from xml.sax.saxutils import escape, unescape

SOURCES = pathlib.Path(__file__).resolve().parents[2] / "src"
LITERAL = r'"(?:[^"\\\n]|\\.)*"'
TOKEN = re.compile(rf"//[^\n]*|/\*.*?\*/|{LITERAL}|'(?:[^'\\]|\\.)'|[(){{}}\[\],]|[^\s]", re.S)
# Which arguments of a call hold the text: the first of `tr`, the second of what names a context before it.
CALL = re.compile(r"\b(tr|counted|translate|QT_TRANSLATE_NOOP|QT_TR_NOOP)\(")
PLACES = {"tr": {0: ""}, "QT_TR_NOOP": {0: ""}, "translate": {1: ""}, "QT_TRANSLATE_NOOP": {1: ""},
          "counted": {1: "", 2: ""}}
# A row of the table of commands, and a menu of it.
ROW = re.compile(rf"[{{(](?:Command::\w+, ({LITERAL})|({LITERAL}), k[A-Z]\w+[,}}])")


def unquoted(literal):
    """What a literal means; the sources know no other escapes."""
    return re.sub(r"\\(.)", lambda m: {"n": "\n", "t": "\t"}.get(m[1], m[1]), literal[1:-1])


def arguments(code, start):
    """The texts in each argument of the call whose arguments start there: literals side by side are one."""
    depth, found, joined = 0, [[]], False
    for token in TOKEN.finditer(code, start):
        text = token[0]
        if text.startswith(("//", "/*")):
            continue
        if text[0] in "([{":
            depth += 1
        elif text[0] in ")]}":
            depth -= 1
            if depth < 0:
                return found
        elif text == "," and depth == 0:
            found.append([])
        if text[0] != '"':
            joined = False
        elif depth == 0:
            if joined:
                found[-1][-1] += unquoted(text)
            else:
                found[-1].append(unquoted(text))
            joined = True
    return found


def texts_of(code, is_table):
    for call in CALL.finditer(code):
        texts = arguments(code, call.end())
        for place in PLACES[call[1]]:
            yield from texts[place] if place < len(texts) else []
    for row in ROW.finditer(code) if is_table else []:
        yield unquoted(row[1] or row[2])


def texts_of_form(form):
    return map(unescape, re.findall(r"<string>([^<]+)</string>", form))


def message(text, pseudo):
    # Two forms of a text with a number in it, as most languages have.
    forms = f"⟦{escape(text)}⟧" if pseudo else ""
    kind = "" if pseudo else ' type="unfinished"'
    if "%Ln" in text:
        forms, numerus = 2 * f"<numerusform>{forms}</numerusform>", ' numerus="yes"'
    else:
        numerus = ""
    return f"<message{numerus}><source>{escape(text)}</source><translation{kind}>{forms}</translation></message>\n"


def main():
    target, pseudo = sys.argv[1], "--pseudo" in sys.argv
    texts = set()
    for file in SOURCES.rglob("*"):
        if file.suffix == ".ui":
            texts.update(texts_of_form(file.read_text(encoding="utf-8")))
        elif file.suffix in (".cpp", ".h"):
            texts.update(texts_of(file.read_text(encoding="utf-8"), file.stem == "CommandTable"))
    texts = {text for text in texts if re.search(r"[A-Za-z]", text)}
    language = ' language="de"' if pseudo else ""
    pathlib.Path(target).write_text(
        f'<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n<TS version="2.1"{language}>\n'
        "<context>\n<name>pendra</name>\n" + "".join(message(text, pseudo) for text in sorted(texts)) +
        "</context>\n</TS>\n", encoding="utf-8")


main()
