"""The texts of the program: each passes through the function that translates it."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["ORVU_SOURCE"])
ROOT = SOURCE / "Sources/Orvu"
LITERAL = r'"(?:[^"\\\n]|\\.)*"'
SEQUENCE = rf"(?:{LITERAL}\s*)+"
TOLD = re.compile(rf"\b(?:phrase|tr|trn|Phrase)[({{]\s*{SEQUENCE}(?:,\s*{SEQUENCE})?")
# Sentences, titles and words such as people read: two words, or one with a capital.
READABLE = re.compile(r"[a-z] +[a-z]|[a-z]{2} $|^ [a-z]{2}|^[A-Z][a-z]+[.…?!]?$|^[A-Z ]{4,}$", re.ASCII)

# Names, the same in every language, and a sample of letters.
NAMES = {"Orvu", "Orvu ", "Kesto", "Google", "DuckDuckGo", "Bing", "Ecosia", "Aa"}
# What no person reads, by the beginning of the file's path, and what it is.
NOBODY_READS = {
    "assistant/Kesto.cpp": "instructions for the model",
    "core/AppServices.cpp": "a folder",
    "core/BrowserTab.cpp": "a script",
    "foundation/text/Locale.cpp": "variables of the environment",
    "import/ImportSource.cpp": "files of other browsers",
    "import/KnownBrowsers.cpp": "names of other browsers and their folders",
    "import/PersonFolders.cpp": "variables of the environment",
    "import/ProfileSearch.cpp": "folders of other browsers",
    "import/formats/": "keys of files",
    "import/readers/": "queries to databases",
    "look/Symbols.cpp": "a message of the compiler",
    "look/text/PlatformText.cpp": "what the English texts say here",
    "look/view/AccentStyle.cpp": "a style sheet",
    "look/view/Fonts.cpp": "a complaint for the log",
    "look/view/Style.cpp": "a style sheet",
    "pagetools/view/ReaderThemeRules.cpp": "a style sheet",
    "platform/InitiatedLoad.cpp": "a page",
    "platform/linux/Desktop": "files",
    "platform/linux/confinement/": "what a program says of its walls",
    "platform/linux/defaults/": "queries to databases",
    "platform/linux/desktop/LinuxWorkspace.cpp": "a method on the bus",
    "platform/linux/desktop/PortalAppearance.cpp": "a method on the bus",
    "platform/linux/files/": "folders",
    "platform/linux/foreign/": "queries to databases",
    "platform/linux/http/": "headers, and causes for the log",
    "platform/linux/images/": "a program that speaks to this one alone",
    "platform/linux/model/": "headers",
    "platform/linux/update/ReleaseCheckProgram.cpp": "a tool of those who make releases",
    "platform/linux/update/StarterProgram.cpp": "a program that this one starts",
    "platform/linux/update/SoupUpdateTransport.cpp": "headers",
    "platform/linux/web/": "scripts and headers",
    "platform/model/ModelFailure.cpp": "what servers say",
    "profiles/SettingsKeys.h": "notes",
    "search/SearchSuggester.cpp": "a header",
    "search/answers/SearchAnswer.cpp": "instructions for the model, and a header",
    "shell/WindowPlacement.cpp": "a mark in what is saved",
    "shell/column/view/GroupColorRules.cpp": "a style sheet",
    "shell/menus/Commands.cpp": "the list of keys in the README",
    "shell/profiles/view/ProfileColorRules.cpp": "a style sheet",
    "shell/settings/view/SettingsRows.cpp": "marks that tell rows apart",
    "shell/view/BrowserWindowView.cpp": "a key",
    "shell/view/ToolWindow.cpp": "a key",
    "update/ApplicationFacts.cpp": "a file's lines",
    "update/SignedText.cpp": "a file's lines",
}


def without_comments(source):
    return re.sub(rf"({LITERAL})|//[^\n]*|#include[^\n]*", lambda found: found.group(1) or "", source)


def readable(source):
    """The literals of a source that look like words for people and aren't translated."""
    rest = TOLD.sub("", without_comments(source))
    return [each for each in (found[1:-1] for found in re.findall(LITERAL, rest))
            if READABLE.search(each) and each not in NAMES and not each.startswith("<")]


def entries():
    """The texts for translators, each with its form for several, if it has one."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder, "orvu.pot")
        answer = subprocess.run([SOURCE / "tools/texts", file], capture_output=True, text=True,
                                check=True)
        if answer.stderr:
            raise AssertionError(answer.stderr)
        blocks = file.read_text(encoding="utf-8").split("\n\n")[1:]
    for block in blocks:
        texts = {"msgid": "", "msgid_plural": ""}
        key = None
        for line in block.splitlines():
            head = re.match(r'(msgid|msgid_plural|msgstr\S*) (".*")', line)
            if head:
                key, line = head.groups()
            if key in texts and line.startswith('"'):
                texts[key] += line[1:-1]
        yield texts["msgid"], texts["msgid_plural"]


class TextsTest(unittest.TestCase):
    def test_every_text_for_people_is_translated(self):
        found = {}
        for file in sorted([*ROOT.rglob("*.cpp"), *ROOT.rglob("*.h")]):
            name = file.relative_to(ROOT).as_posix()
            literals = readable(file.read_text(encoding="utf-8"))
            if literals and not any(name.startswith(each) for each in NOBODY_READS):
                found[name] = literals
        self.assertEqual(found, {})

    def test_a_text_that_is_not_translated_is_found(self):
        self.assertEqual(readable('label.set_text("Close all tabs");'), ["Close all tabs"])
        self.assertEqual(readable('return "Close " + title;'), ["Close "])
        self.assertEqual(readable('return phrase("Close all tabs"); // "Not this"'), [])
        self.assertEqual(readable('tr("Close {1} of "\n   "these", x, "Tabs")'), ["Tabs"])

    def test_what_nobody_reads_is_still_there(self):
        files = [file.relative_to(ROOT).as_posix() for file in ROOT.rglob("*.*")]
        for beginning in NOBODY_READS:
            self.assertTrue(any(name.startswith(beginning) for name in files), beginning)

    def test_no_text_is_a_piece_of_a_sentence(self):
        for texts in entries():
            for text in texts:
                # A sentence that another follows ends with its blank.
                self.assertFalse(text.startswith(" "), text)
                self.assertTrue(not text.endswith(" ") or text.endswith(". "), text)

    def test_places_are_numbered_from_one_on(self):
        for texts in entries():
            for text in filter(None, texts):
                places = {int(each) for each in re.findall(r"\{([0-9]+)\}", text)}
                if texts[1]:
                    places.add(1)  # a text for one thing may do without its number
                self.assertEqual(places, set(range(1, len(places) + 1)), text)

    def test_there_are_texts_for_numbers(self):
        self.assertIn(("Shelf, {1} tab", "Shelf, {1} tabs"), list(entries()))


if __name__ == "__main__":
    unittest.main()
