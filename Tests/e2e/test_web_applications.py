"""Two real editors in a page, a code editor and one for formatted text: they get their own keys, and
the window keeps its own."""

import mimetypes
import pathlib
from urllib.parse import quote

from harness.case import BrowserTest
from harness.wait import until, until_equal

LIBRARIES = pathlib.Path("/usr/share/javascript")
FIND = "Find in page"
SHOWN = "addEventListener('pageshow', () => fetch('/report/shown-' + document.title));"
# One after the other: reports that are on their way together come in any order.
TELL = """let told = Promise.resolve();
const tell = text => { told = told.then(() => fetch('/report/' + encodeURIComponent(text))); };"""

CODE = """<!doctype html><meta charset=utf-8><title>code</title>
<link rel=stylesheet href=/codemirror/lib/codemirror.css>
<link rel=stylesheet href=/codemirror/addon/dialog/dialog.css>
<style>body { margin: 0 } .CodeMirror { position: fixed; inset: 0; height: auto }</style>
<script src=/codemirror/lib/codemirror.js></script>
<script src=/codemirror/addon/dialog/dialog.js></script>
<script src=/codemirror/addon/search/searchcursor.js></script>
<script src=/codemirror/addon/search/search.js></script>
<body><script>
SHOWN
TELL
const editor = CodeMirror(document.body, {
    value: 'a fish\\nb fish\\n', extraKeys: {'Ctrl-S': () => tell('saved')}});
editor.on('change', () => tell('text ' + editor.getValue().replaceAll('\\n', '|')));
editor.on('cursorActivity', () => tell('selected ' + editor.getSelection()));
document.addEventListener('focusin', () => tell('in ' + document.activeElement.className));
editor.on('focus', () => tell('focused'));
tell('ready');
</script>"""

TEXT = """<!doctype html><meta charset=utf-8><title>text</title>
<body style='margin:0'><textarea id=words>&lt;p&gt;words&lt;/p&gt;</textarea>
<script>window.CKEDITOR_BASEPATH = '/ckeditor/';</script>
<script src=/ckeditor/ckeditor.js></script><script>
SHOWN
TELL
const editor = CKEDITOR.replace('words', {
    customConfig: '', contentsCss: '', removePlugins: 'elementspath,scayt,wsc', height: 700});
editor.on('change', () => tell('text ' + editor.getData().trim()));
editor.on('dialogShow', event => tell('dialog ' + event.data._.name));
editor.on('focus', () => tell('focused'));
editor.on('instanceReady', () => tell('ready'));
</script>"""


def quoted(text):
    """A report as the page's script encodes it."""
    return quote(text, safe="!'()*-._~")


class EditorTest(BrowserTest):
    """A page with an editor between two others of its tab."""

    def serve(self, library):
        """Puts the files of a library on the server."""
        for file in (LIBRARIES / library).rglob("*"):
            if file.is_file():
                kind = mimetypes.guess_type(file.name)[0] or "application/octet-stream"
                self.server.answers[f"/{file.relative_to(LIBRARIES)}"] = (
                    lambda handler, file=file, kind=kind:
                    handler.reply(200, kind, file.read_bytes()))

    def start_editor(self, name, html):
        before = self.server.page("/before")
        html = html.replace("SHOWN", SHOWN).replace("TELL", TELL)
        self.server.answers[f"/{name}"] = lambda handler: handler.reply(200, "text/html", html)
        self.url = self.server.url(f"/{name}")
        self.start_with_only(before)
        self.type_address(self.url)
        self.wait_for_visit(self.url)
        self.server.wait_for_report("ready")
        self.wait_until_loaded()
        self.hands.click()
        self.server.wait_for_report("focused")

    def wait_for(self, report):
        self.server.wait_for_report(quoted(report))

    def wait_for_last_text(self, text):
        until_equal(lambda: self.server.reports("text%20")[-1:], [quoted(text)],
                    "the last text that the page told")

    def check_browser_untouched(self):
        self.assertEqual(self.windows.nodes("text", FIND), [])
        self.assertEqual(self.hands.windows("Print"), [])
        self.assertEqual(len(self.app.page_processes()), 1)
        self.notch.wait_for_address(self.url)

    def check_window_keys(self):
        """Those of tabs and the notch are the window's over the editor too."""
        title = self.url.rsplit("/", 1)[-1]
        for key in ("ctrl+l", "ctrl+k"):
            self.hands.click()
            self.hands.go_on(key)
            self.notch.wait_until_open()
            self.hands.go_on("Escape")
            self.notch.wait_until_closed()
        self.hands.click()
        self.hands.go_on("ctrl+d")
        until_equal(self.saved.bookmarks, [self.url], "the bookmarks")
        self.hands.go_on("ctrl+t")
        self.wait_for_tabs(title, "New tab")
        self.hands.go_on("Escape", "ctrl+w")
        self.wait_for_tabs(title)

    def check_left_keys(self):
        """Those that this editor has no use for do the window's work."""
        self.hands.click()
        self.hands.go_on("ctrl+p")
        until(lambda: self.hands.windows("Print"), "the dialog for printing")
        self.hands.press("Escape", title="Print")
        until_equal(lambda: self.hands.windows("Print"), [], "the dialogs for printing")
        self.hands.click()
        self.hands.go_on("F3")
        self.windows.find("text", FIND)
        self.hands.go_on("Escape")
        self.windows.wait_until_gone("text", FIND)
        self.hands.click()
        self.hands.go_on("alt+Left")
        self.notch.wait_for_address(self.server.url("/before"))


class CodeEditorTest(EditorTest):
    def start(self):
        self.serve("codemirror")
        self.start_editor("code", CODE)
        self.hands.go_on("ctrl+Home")

    def test_its_own_keys_are_the_editors(self):
        self.start()

        self.hands.type_on("x")
        self.wait_for_last_text("xa fish|b fish|")
        self.hands.go_on("ctrl+z")
        self.wait_for_last_text("a fish|b fish|")
        self.hands.go_on("ctrl+y")
        self.wait_for_last_text("xa fish|b fish|")
        self.hands.go_on("ctrl+bracketright")
        self.wait_for_last_text("  xa fish|b fish|")
        self.hands.go_on("ctrl+bracketleft")
        self.wait_for_last_text("xa fish|b fish|")
        self.hands.go_on("ctrl+s")
        self.wait_for("saved")
        self.hands.go_on("ctrl+f")
        self.wait_for("in CodeMirror-search-field")
        self.hands.type_on("fish")
        self.hands.go_on("Return")
        self.wait_for("selected fish")
        self.hands.go_on("ctrl+g", "Escape", "ctrl+a", "Delete")
        self.wait_for_last_text("")

        self.check_browser_untouched()

    def test_what_it_leaves_and_what_is_never_its_own_is_the_windows(self):
        self.start()

        self.check_window_keys()
        self.check_left_keys()


class TextEditorTest(EditorTest):
    """Its text is a document of its own in a frame."""

    def start(self):
        self.serve("ckeditor")
        self.start_editor("text", TEXT)

    def test_its_own_keys_are_the_editors(self):
        self.start()

        self.hands.go_on("ctrl+a", "ctrl+b")
        self.wait_for_last_text("<p><strong>words</strong></p>")
        self.hands.go_on("ctrl+i")
        self.wait_for_last_text("<p><em><strong>words</strong></em></p>")
        self.hands.go_on("ctrl+z", "ctrl+z")
        self.wait_for_last_text("<p>words</p>")
        self.hands.go_on("End", "shift+Return")
        self.hands.type_on("more")
        until(lambda: "more" in "".join(self.server.reports("text%20")[-1:]), "the new line",
              lambda: self.server.reports("text%20"))

        self.check_browser_untouched()

    def test_what_it_leaves_and_what_is_never_its_own_is_the_windows(self):
        self.start()

        self.check_window_keys()
        self.hands.click()
        self.hands.go_on("ctrl+f")
        self.windows.find("text", FIND)
        self.hands.go_on("Escape")
        self.windows.wait_until_gone("text", FIND)
        self.check_left_keys()
