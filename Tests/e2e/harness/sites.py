"""Sites that look like real ones, for pictures of the window."""

STYLE = """
body { font: 17px/1.55 Inter, sans-serif; margin: 0; color: #1d2026; background: BACKGROUND }
main { max-width: 640px; margin: 0 auto; padding: 72px 40px } h1 { line-height: 1.15; margin: 0 }
p { margin: 18px 0 } small { color: #6a7080 } code { background: #0001; padding: 2px 6px }
"""

BEES = """<h1>On bees and their maps</h1><p><small>Saturday, 4 minutes</small>
<p>Bees dance to tell one another where the flowers are. The angle of the dance against gravity
is the angle of flight against the sun.<p>A forager who has found a meadow comes home, climbs on
the comb in the dark, and runs a short line while she shakes. Her sisters follow with their
feelers. The longer she shakes, the further the way."""

# Host, icon's colour and sign, page's title, background, text.
SITES = [
    ("bees.localhost", "#e8a200", "M8 20 20 8l12 12-12 12z", "On bees and their maps",
     "linear-gradient(#fff4d8, #f9dcd8 55%, #cfe6fb) fixed", BEES),
    ("docs.localhost", "#3a6df0", "M10 8h20v24H10z", "Drawing widgets — Toolkit manual", "#fff",
     "<h1>Drawing widgets</h1><p>A widget describes what it looks like in a <code>snapshot</code>."
     "<p>Nothing is painted at that moment: the nodes are kept, and drawn when the frame comes."
     "<p>Ask for a new snapshot only when what it shows has changed."),
    ("weather.localhost", "#1fa6b5", "M8 26a8 8 0 0 1 8-8 9 9 0 0 1 16 4 5 5 0 0 1 0 8H14z",
     "Weather in Lund", "linear-gradient(#d9f0ff, #fff) fixed",
     "<h1>Lund, 9°</h1><p>Light rain until the evening, wind from the west.<p>Tomorrow dry."),
    ("forum.localhost", "#7d52e0", "M8 10h24v16H18l-8 6z", "How do you keep your knives sharp?",
     "#faf8ff", "<h1>How do you keep your knives sharp?</h1><p><small>24 answers</small>"
     "<p>A stone of grain 1000, ten minutes on Sunday, and nothing else."
     "<p>A strop after each use, and the stone twice a year."),
    ("bread.localhost", "#c8643c", "M20 8a14 10 0 0 1 14 10v14H6V18A14 10 0 0 1 20 8z",
     "Rye bread without kneading", "#fff8f2",
     "<h1>Rye bread without kneading</h1><p>500 g of rye flour, 450 g of water, 10 g of salt and "
     "a spoon of sourdough.<p>Stir in the evening, bake in the morning: one hour at 220°."),
    ("trains.localhost", "#2e9e6b", "M12 8h16v18H12zM14 30h4M22 30h4", "Departures, platform 4",
     "#f3fbf6", "<h1>Departures</h1><p>16:04 Malmö, on time<p>16:12 Göteborg, 5 minutes late"),
]


def icon(color, sign):
    return (f"<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 40 40'><rect width='40' "
            f"height='40' rx='9' fill='{color}'/><path d='{sign}' fill='#fff'/></svg>")


def serve(server):
    """Puts the sites on a server. Gives their addresses by host, without the dot and what
    follows it."""
    urls = {}
    for host, color, sign, title, background, text in SITES:
        name = host.split(".")[0]
        link = f"<link rel=icon sizes=any href='/icons/{name}.svg'>"
        style = STYLE.replace("BACKGROUND", background)
        page = (f"<!doctype html><meta charset=utf-8><title>{title}</title>{link}"
                f"<style>{style}</style><main>{text}</main>")
        drawing = icon(color, sign)
        server.answers[f"/{name}"] = _answer("text/html", page)
        server.answers[f"/icons/{name}.svg"] = _answer("image/svg+xml", drawing)
        urls[name] = server.url(f"/{name}", host)
    return urls


def _answer(kind, body):
    return lambda handler: handler.reply(200, kind, body)
