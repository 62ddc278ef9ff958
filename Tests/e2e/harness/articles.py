"""Pages with something to read, for the reader."""

SENTENCE = ("The keeper of the lighthouse wrote down the wind at every change of the watch, and "
            "beside it what he had seen of the sea. ")

TITLE = "The lamp on the island"
STORY = f"""<!doctype html><html lang=en><meta charset=utf-8><title>Harbour Post</title>
<h1>{TITLE}</h1><article><p>{SENTENCE * 3}</p><h2>What the log tells</h2>
<p>{SENTENCE * 2}</p><ul><li>Oil for forty nights, and a second wick in the tin box under the
stairs, where it stays dry in every kind of weather that comes over the island in a year</li>
<li>Bread</li></ul><blockquote>Nobody lives here who does not like his own company, and nobody
stays who likes nothing else. So we learned to be silent together, he said.</blockquote>
<h3>The second winter</h3><p>{SENTENCE * 4}</p><p>{SENTENCE * 2}</p><p>{SENTENCE * 3}</p></article>
"""

HEBREW = ("שומר המגדלור כתב את הרוח בכל חילוף משמרת, ולצידה את מה שראה מן הים. "
          "בלילות הארוכים של החורף היה קורא בקול, כדי לשמוע אדם מדבר. ")
HEBREW_STORY = f"""<!doctype html><html lang=he dir=rtl><meta charset=utf-8><title>עיתון</title>
<h1>המנורה שעל האי</h1><article><p>{HEBREW * 3}</p><h2>מה מספר היומן</h2><ul><li>שמן לארבעים
לילה, ופתילה שנייה בקופסת הפח שמתחת למדרגות, במקום שבו היא נשארת יבשה בכל מזג אוויר</li>
<li>לחם</li></ul><blockquote>{HEBREW}</blockquote><p>{HEBREW * 3}</p><p>Orvu in English, too.</p>
</article>"""


def long_story(blocks=600, units=4000):
    """As much as a reader ever shows."""
    text = (SENTENCE * 40)[:units]
    body = "".join(f"<p>{number} {text}</p>" for number in range(blocks))
    return f"<!doctype html><title>Long</title><h1>A long one</h1><article>{body}</article>"


def serve(server, path, html):
    """Puts a page on a server; gives its address."""
    server.answers[path] = lambda handler: handler.reply(200, "text/html; charset=utf-8", html)
    return server.url(path)
