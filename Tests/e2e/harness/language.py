"""A made-up language: each English text of the program with other letters, between marks. The program
shows it, and the tests read it back, so that any of them can be run in it. A text that was never
translated gives itself away: it stands there without marks.

ORVU_LANGUAGE=made-up runs a test so."""

import atexit
import functools
import math
import os
import pathlib
import re
import shutil
import string
import subprocess
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[3]
CODE = "qps"
OPEN, CLOSE = "\u27e6", "\u27e7"
# By how much its texts are longer, as those of many languages are, and what fills that.
GROWTH, MORE = 0.3, "~"
PLAIN = string.ascii_letters
STRANGE = ("\u0227\u0180\u0188\u1e0b\u1e17\u0192\u0260\u0127\u012b\u0135\u0137\u0140\u1e3f\u019e\u01ff"
           "\u01a5\u024b\u0159\u015f\u0167\u016d\u1e7d\u1e87\u1e8b\u1e8f\u1e91"
           "\u0226\u0181\u0187\u1e0a\u1e16\u0191\u0193\u0126\u012a\u0134\u0136\u013f\u1e3e\u0220\u01fe"
           "\u01a4\u024a\u0158\u015e\u0166\u016c\u1e7c\u1e86\u1e8a\u1e8e\u1e90")
PROGRAMS = ("orvu", "orvu-image-decoder", "orvu-model", "orvu-release-1.0", "orvu-release-1.2",
            "orvu-starter-for-tests")
_TO, _FROM = str.maketrans(PLAIN, STRANGE), str.maketrans(STRANGE, PLAIN)
_PLACE = re.compile(r"(\{[1-9]\})")
# Words that are names, the same in every language.
NAMES = {"Google", "DuckDuckGo", "Bing", "Wikipedia", "YouTube", "GitHub", "Reddit", "Amazon"}
# Texts that pages of the tests have as well, or the toolkit's own panels.
OTHERS_HAVE = {"Page", "Location"}


def is_on():
    return os.environ.get("ORVU_LANGUAGE") == "made-up"


def strange(text):
    """An English text as the language has it."""
    if text in NAMES:
        return text
    told = "".join(part if _PLACE.fullmatch(part) else part.translate(_TO)
                   for part in _PLACE.split(text))
    end = len(told.rstrip("\n"))
    more = MORE * math.ceil(end * GROWTH)
    return f"{OPEN}{told[:end]} {more}{CLOSE}{told[end:]}"


def plain(text):
    """What the program says, in English again."""
    return re.sub(f"{OPEN}| {MORE}+{CLOSE}", "", text).translate(_FROM)


def shown(text):
    """How the program shows a whole text of its own."""
    return strange(text) if is_on() and text in texts() else text


def _entries(template):
    """The texts of a template, each with its form for several, if it has one."""
    for block in template.split("\n\n")[1:]:
        found = {key: "" for key in ("msgid", "msgid_plural")}
        key = None
        for line in block.splitlines():
            head = re.match(r'(msgid|msgid_plural|msgstr\S*) (".*")', line)
            if head:
                key, line = head.groups()
            if key in found and line.startswith('"'):
                found[key] += _unquoted(line)
        yield found["msgid"], found["msgid_plural"]


def _unquoted(line):
    return line[1:-1].replace("\\n", "\n").replace('\\"', '"').replace("\\\\", "\\")


def _quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"'


@functools.cache
def _template():
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder, "orvu.pot")
        subprocess.run([SOURCE / "tools/texts", file], check=True)
        return file.read_text(encoding="utf-8")


@functools.cache
def _words():
    """What the texts say, and what the program says for it on this desktop."""
    source = (SOURCE / "Sources/Orvu/look/text/PlatformText.cpp").read_text(encoding="utf-8")
    table = re.search(r"words\{(.*?)\}\};", source, re.DOTALL).group(1)
    literals = r'(?:"[^"]*"\s*)+'
    return [tuple("".join(re.findall('"([^"]*)"', each)) for each in pair)
            for pair in re.findall(rf"\{{({literals}),\s*({literals})\}}", table)]


def _as_here(text):
    """An English text as translators are to read it."""
    for told, here in _words():
        text = text.replace(told, here)
    return text


@functools.cache
def texts():
    """All English texts of the program."""
    return {_as_here(each) for pair in _entries(_template()) for each in pair if each}


def catalogue(told=strange):
    """The language's catalogue. It has three forms for numbers: for one, for two and for more."""
    lines = ['msgid ""', 'msgstr ""', _quoted("Content-Type: text/plain; charset=UTF-8\n"),
             _quoted("Plural-Forms: nplurals=3; plural=(n==1 ? 0 : n==2 ? 1 : 2);\n"), ""]
    for one, many in _entries(_template()):
        lines.append(f"msgid {_quoted(one)}")
        if many:
            forms = [_quoted(told(_as_here(each))) for each in (one, many, many)]
            lines += [f"msgid_plural {_quoted(many)}",
                      *(f"msgstr[{number}] {form}" for number, form in enumerate(forms))]
        else:
            lines.append(f"msgstr {_quoted(told(_as_here(one)))}")
        lines.append("")
    return "\n".join(lines)


def install(program, folder, told=strange):
    """A copy of the program in a folder, which knows the language; gives its place."""
    copy = folder / "bin/orvu"
    copy.parent.mkdir(parents=True)
    for each in PROGRAMS:
        if program.with_name(each).exists():
            shutil.copy(program.with_name(each), copy.parent)
    messages = folder / "share/locale" / CODE / "LC_MESSAGES"
    messages.mkdir(parents=True)
    subprocess.run(["msgfmt", "-o", messages / "orvu.mo", "-"], check=True,
                   input=catalogue(told).encode())
    return copy


@functools.cache
def shared_program(program):
    """A copy for all tests of this process."""
    folder = tempfile.TemporaryDirectory()
    copy = install(pathlib.Path(program), pathlib.Path(folder.name))
    atexit.register(folder.cleanup)
    return str(copy)


def environment():
    """What makes the program speak it."""
    return {"LC_ALL": "C.UTF-8", "LANGUAGE": CODE}


@functools.cache
def _untold():
    """What finds texts of the program that stand there in English."""
    patterns = []
    for text in texts():
        if text in NAMES | OTHERS_HAVE or not re.search("[A-Za-z]{2}", text):
            continue
        parts = [".*" if _PLACE.fullmatch(part) else re.escape(part)
                 for part in _PLACE.split(text)]
        # A pattern of places with hardly a word between them fits everything.
        if len(_PLACE.sub("", text)) > 3:
            patterns.append("".join(parts))
    return re.compile("|".join(f"(?:{each})" for each in patterns), re.DOTALL)


def read(text):
    """What the program shows or says, in English; what isn't translated of it is a failure."""
    if not is_on() or not text:
        return text
    if OPEN not in text and _untold().fullmatch(text):
        raise AssertionError(f"This text of the program isn't translated: {text!r}")
    return plain(text)
