"""The services that search engines have for suggestions, played on loopback."""

import json

from .wait import until

# Engine: host, path, and the query item that bears the text.
SERVICES = {
    "google": ("suggestqueries.google.com", "/complete/search", "q"),
    "duckduckgo": ("duckduckgo.com", "/ac/", "q"),
    "bing": ("api.bing.com", "/osjson.aspx", "query"),
    "ecosia": ("ac.ecosia.org", "/autocomplete", "q"),
}


def results_page(proxy, title="Results"):
    """The site of the first search engine, with a page of what it found."""
    site = proxy.site("www.google.com")
    site.page("/search", title)
    return site


class Suggestions:
    """The service of one engine. What it answers is said for each text; for another text it has
    no suggestion."""

    def __init__(self, proxy, engine="google"):
        host, path, self._item = SERVICES[engine]
        self.site = proxy.site(host)
        self.path = path
        self._answers = {}
        self.site.answers[path] = self._answer

    # What it answers.

    def suggest(self, text, *suggestions):
        """A list for a text."""
        self._answers[text] = lambda handler: self._reply(handler, text, suggestions)

    def suggest_as_bytes(self, text, body):
        """A body as it stands, be it in another encoding or nothing that could be read."""
        self._answers[text] = lambda handler: handler.reply(200, "text/javascript", body)

    def suggest_late(self, text, *suggestions):
        """A list that comes when the returned event is set; at the test's end it is."""
        gate = self.site.gate()

        def answer(handler):
            gate.wait()
            self._reply(handler, text, suggestions)
        self._answers[text] = answer
        return gate

    def suggest_after(self, seconds, text, *suggestions):
        """A list that takes so long to come."""
        gate = self.site.gate()

        def answer(handler):
            gate.wait(seconds)
            self._reply(handler, text, suggestions)
        self._answers[text] = answer

    @staticmethod
    def _reply(handler, text, suggestions):
        handler.reply(200, "text/javascript; charset=UTF-8", json.dumps([text, suggestions]))

    def _answer(self, handler):
        text = dict(handler.request_read.query).get(self._item, "")
        known = self._answers.get(text)
        if known:
            known(handler)
        else:
            self._reply(handler, text, [])

    # What it was asked.

    def requests(self):
        """The requests for suggestions, oldest first."""
        return self.site.requests_for(self.path)

    def asked(self):
        """The texts that were sent, oldest first."""
        return [dict(request.query).get(self._item) for request in self.requests()]

    def wait_for(self, text):
        until(lambda: text in self.asked(), f"{text!r} to be sent for suggestions", self.asked)
