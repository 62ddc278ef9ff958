"""Pages of search results, and what the program puts around them, by their names in the accessibility
tree."""

import html

from .wait import until, until_equal

GOOGLE, BING = "www.google.com", "www.bing.com"
SEARCH = f"https://{GOOGLE}/search?q=how+to+sharpen+knives"
STRIP, CARD = "Same search on", "Answer"
SHOW, HIDE = "Show Kesto's answer", "Hide answer"
TEXT_ROLES = "label", "status bar", "alert", "notification"

STYLE = ("<style>body{font:15px/1.5 sans-serif;color:#222;background:#fff;margin:20px 28px}"
         ".g{margin:0 0 26px;max-width:600px}h3{margin:0;font-size:18px;color:#1a3f9c}"
         "a{text-decoration:none}cite{font-style:normal;font-size:13px;color:#555}</style>")


class Result:
    """One result of a page, and the page that it leads to."""

    def __init__(self, host, title, snippet, text="", path="/", address=None):
        self.title, self.snippet, self.text = title, snippet, text
        self.host, self.path = host, path
        self.address = address or f"https://{host}{path}"

    def serve(self, proxy):
        site = proxy.site(self.host)
        site.page(self.path, self.title, body=f"<p>{self.text}</p>",
                  headers=[("Set-Cookie", "seen=1")])
        return site

    def markup(self):
        return (f'<div class="g"><a href="{html.escape(self.address)}"><h3>'
                f'{html.escape(self.title)}</h3></a><cite>https://{self.host}</cite>'
                f'<p>{html.escape(self.snippet)}</p></div>')


def knives():
    return [
        Result("stones.example", "Sharpening with a whetstone", "Soak the stone first.",
               "Hold the blade at fifteen degrees."),
        Result("steel.example", "What a honing steel does", "It straightens the edge.",
               "A steel takes no metal off."),
        Result("kitchen.example", "How often to sharpen kitchen knives", "Twice a year will do.",
               "Test the edge on a sheet of paper."),
        Result("angles.example", "The right angle for every knife", "Fifteen to twenty degrees.",
               "Only three pages are read, so nobody reads this."),
        Result("shop.example", "Knives and stones", "All that cuts.", "Unread."),
        Result("forum.example", "My knife is blunt again", "Fourteen answers.", "Unread."),
    ]


def serve_results(proxy, results, host=GOOGLE, title="results"):
    """Puts a page of results, and the pages they lead to, behind the proxy; gives the engine's
    site."""
    site = proxy.site(host)
    body = "".join(result.markup() for result in results)
    site.page("/search", title, body=f'{STYLE}<div id="search">{body}</div>')
    for result in results:
        if result.address == f"https://{result.host}{result.path}":
            result.serve(proxy)
    return site


class Results:
    """What a person sees around a page of results, and what the hands do to it."""

    def __init__(self, windows, title="Orvu"):
        self._windows = windows
        self._title = title

    def strips(self):
        return self._windows.nodes("panel", STRIP, self._title)

    def cards(self):
        return self._windows.nodes("panel", CARD, self._title)

    @staticmethod
    def _names(places, role):
        return [node.name for place in places for node in place.walk() if node.role == role]

    def links(self):
        """The buttons of the strip, from left to right."""
        return self._names(self.strips(), "push button")

    def find_link(self, name):
        return self._find(self.strips, name)

    def buttons(self):
        """The buttons of the card, from top to bottom."""
        return self._names(self.cards(), "push button")

    def find(self, name):
        return self._find(self.cards, name)

    def press(self, name):
        self.find(name).press()

    def texts(self):
        """The texts of the card, from top to bottom."""
        return [node.name for card in self.cards() for node in card.walk()
                if node.role in TEXT_ROLES]

    def wait_for_words(self, text):
        until(lambda: text in self.texts(), f"the words {text!r} in the answer", self.texts)

    def wait_for_card(self):
        until(self.cards, "the answer's card")

    def wait_for_no_card(self):
        until(lambda: not self.cards(), "the answer's card to go", self.texts)

    def wait_for_strip(self):
        until(self.strips, "the strip above the results")

    def wait_for_no_strip(self):
        until(lambda: not self.strips(), "the strip above the results to go", self.links)

    def wait_for_links(self, *names):
        until_equal(self.links, list(names), "the links of the strip")

    @staticmethod
    def _find(places, name):
        def found():
            return [node for place in places() for node in place.walk()
                    if node.role == "push button" and node.name == name]
        return until(found, f"the button {name!r}")[0]
