"""The menu of a page, and what the keys do that concern the page as a whole."""

from harness.case import PRIVATE, BrowserTest
from harness.wait import until, until_equal

WIDE = "position:fixed;inset:0;font-size:60px"
DOT = ("<svg xmlns='http://www.w3.org/2000/svg' width='20' height='20'>"
       "<rect width='20' height='20'/></svg>")


class PageMenuTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.downloads = self.home.folder / "Downloads"
        self.server.answers["/dot.svg"] = lambda asked: asked.reply(200, "image/svg+xml", DOT)

    def start_at(self, body, path="/page"):
        """Starts with one page of that body in front."""
        self.start_with_only(self.server.page(path, body=body))

    def menu(self):
        """Opens the page's menu in the page's middle; gives its lines."""
        self.hands.click(button=3)
        self.windows.find("menu item", "Inspect")
        return self.lines()

    def lines(self):
        return [each.name for each in self.windows.nodes("menu item") if each.name]

    def choose(self, line):
        self.windows.press("menu item", line)
        self.windows.wait_until_gone("menu item", "Inspect")

    def test_the_menu_of_a_page_leads_back_and_anew(self):
        first, second = self.server.pages("/first", "/second")
        self.start_with_only(first)
        self.type_address(second)
        self.wait_for_visit(second)

        self.assertEqual(self.menu(), ["Back", "Forward", "Reload", "Inspect"])
        self.choose("Back")

        self.wait_for_tabs("first")
        self.menu()
        self.choose("Forward")
        self.wait_for_tabs("second")
        before = len(self.server.requests_for("/second"))
        self.menu()
        self.choose("Reload")
        until(lambda: len(self.server.requests_for("/second")) > before, "the page anew")

    def test_a_link_opens_privately(self):
        target = self.server.page("/target")
        self.start_at(f"<a href='{target}' style='{WIDE}'>link</a>")

        self.assertEqual(self.menu(), ["Open in New Tab", "Open in New Private Window",
                                       "Copy Link", "Save Link", "Inspect"])
        self.choose("Open in New Private Window")

        until_equal(self.app.windows, [1, 2], "the windows")
        self.wait_for_tabs("target", window=PRIVATE)
        self.assertEqual(self.windows.tabs("Orvu"), ["page"])
        headers = self.server.requests_for("/target")[0].headers
        self.assertIsNone(headers.get("Referer"))
        self.assertNotIn(target, self.saved.visited())

    def test_a_link_is_copied(self):
        target = self.server.page("/target")
        self.start_at(f"<a href='{target}' style='{WIDE}'>link</a>")

        self.menu()
        self.choose("Copy Link")

        self.app.action("editAddress")
        self.hands.press("ctrl+v")
        until_equal(self.notch.text, target, "what was copied")

    def test_a_link_is_saved(self):
        target = self.server.page("/saved.html", body="saved")
        self.start_at(f"<a href='{target}' style='{WIDE}'>link</a>")

        self.menu()
        self.choose("Save Link")

        until(lambda: (self.downloads / "saved.html").exists(), "the saved file")
        self.assertIn("saved", (self.downloads / "saved.html").read_text())

    def test_a_link_that_no_page_may_open_is_only_copied(self):
        self.start_at(f"<a href='javascript:1' style='{WIDE}'>link</a>")

        self.assertEqual(self.menu(), ["Copy Link", "Inspect"])

    def test_an_image_opens_in_a_tab_that_is_no_page_of_its_own_to_others(self):
        self.start_at(f"<img src='/dot.svg' style='{WIDE};width:100%;height:100%'>")

        self.assertEqual(self.menu(), ["Open Image in New Tab", "Copy Image", "Save Image",
                                       "Inspect"])
        self.choose("Open Image in New Tab")

        until(lambda: len(self.windows.tabs()) == 2, "the image's tab")
        until(lambda: len(self.server.requests_for("/dot.svg")) >= 1, "the image")

    def test_a_selection_is_searched_for(self):
        self.start_at(f"<p style='{WIDE}'>Garden snail</p>"
                      "<script>getSelection().selectAllChildren(document.querySelector('p'))"
                      "</script>")

        self.assertEqual(self.menu(), ["Copy", "Search for “Garden snail”", "Inspect"])
        self.choose("Search for “Garden snail”")

        until(lambda: any("q=Garden%20snail" in each for each in self.saved.session()),
              "the search among the tabs", self.saved.session)

    def test_a_field_edits(self):
        self.start_at(f"<textarea style='{WIDE}'>some text</textarea>"
                      "<script>document.querySelector('textarea').select()</script>")
        self.hands.click()

        lines = self.menu()
        for line in ("Undo", "Redo", "Cut", "Copy", "Paste", "Delete", "Select All", "Inspect"):
            self.assertIn(line, lines)
        self.choose("Select All")
        self.hands.type_on("typed")
        self.menu()
        self.choose("Undo")
        self.menu()
        self.choose("Redo")
        self.app.check_runs()

    def test_the_menu_of_a_page_that_has_gone_does_nothing(self):
        target = self.server.page("/target")
        self.start_at(f"<a href='{target}' style='{WIDE}'>link</a>")
        self.open(self.server.page("/other"))
        self.app.action("selectTab1")
        self.wait_for_selected("page")

        self.hands.click(button=3)
        self.windows.find("menu item", "Inspect")
        self.app.action("closeTab")

        self.wait_for_tabs("other")
        self.app.check_runs()

    def test_a_page_is_saved_with_its_parts(self):
        self.start_at("<p>whole page</p><img src='/dot.svg'>")

        self.hands.press("ctrl+s")

        file = self.downloads / "page.mhtml"
        until(file.exists, "the saved page")
        until(lambda: "dot.svg" in file.read_text(errors="replace"), "the picture in it")
        self.assertIn("whole page", file.read_text(errors="replace"))

    def test_a_page_may_keep_the_key_of_saving(self):
        self.start_at("<script>addEventListener('keydown', event => {"
                      "if (event.ctrlKey && event.key === 's') {"
                      "event.preventDefault(); fetch('/report/kept'); } })</script>")

        self.hands.click()
        self.hands.press("ctrl+s")

        self.server.wait_for_report("kept")
        self.assertEqual(list(self.downloads.glob("*")), [])

    def test_the_source_of_a_page_stands_in_a_tab_as_text(self):
        self.start_at("<p>Öl <b>bold</b></p><script>document.title = 'run'</script>")
        asked = len(self.server.requests_for("/page"))

        self.hands.press("ctrl+u")

        self.wait_for_tabs("run", "Source of 127.0.0.1/page")
        until(lambda: any(each.startswith("view-source:http") for each in self.saved.session()),
              "the source among the tabs", self.saved.session)
        self.assertEqual(len(self.server.requests_for("/page")), asked)
        self.assertEqual([each for each in self.saved.visited() if "view-source" in each], [])
        self.picture("page-source")

    def test_a_page_cannot_reach_a_source(self):
        page = self.server.page("/page", body="<p>secret</p>")
        self.start_with_only(page)
        self.hands.press("ctrl+u")
        until(lambda: len(self.windows.tabs()) == 2, "the source's tab")

        reach = f"view-source:{page}"
        self.open(self.server.page("/evil", body=(
            f"<iframe src='{reach}' onload='fetch(\"/report/loaded-\" + "
            "(this.contentDocument ? this.contentDocument.body.textContent.length : \"closed\"))'>"
            f"</iframe><script>fetch('{reach}').then(() => fetch('/report/read'),"
            "() => fetch('/report/refused'));"
            f"open('{reach}')</script>")))

        self.server.wait_for_report("refused")
        self.assertEqual(self.server.reports("read"), [])
        self.assertEqual([each for each in self.server.reports("loaded")
                          if "secret" in each], [])
        self.assertEqual(len(self.windows.tabs()), 3)

    def test_a_source_that_nobody_holds_any_more_is_the_page_again(self):
        page = self.server.page("/page")
        self.start_with_only(page)
        self.hands.press("ctrl+u")
        until(lambda: any(each.startswith("view-source:") for each in self.saved.session()),
              "the source among the tabs", self.saved.session)
        self.app.quit()

        self.app.start()

        self.wait_for_tabs("page", "page")

    def test_the_address_of_a_link_shows_at_the_foot(self):
        target = self.server.page("/target")
        self.start_at(f"<a href='{target}' style='{WIDE}'>link</a>")

        self.hands.hover((700, 400))

        self.windows.find("label", target)
        self.picture("link-address")
        self.hands.hover((100, 300))
        self.windows.wait_until_gone("label", target)

    def test_the_address_of_a_link_goes_with_its_page(self):
        target = self.server.page("/target")
        self.start_at(f"<a href='{target}' style='{WIDE}'>link</a>")
        self.open(self.server.page("/other"))
        self.app.action("selectTab1")
        self.hands.hover((700, 400))
        self.windows.find("label", target)

        self.app.action("selectTab2")
        self.windows.wait_until_gone("label", target)
        self.hands.hover((100, 500))
        self.app.action("selectTab1")

        self.wait_for_selected("page")
        self.windows.wait_until_gone("label", target)

    def test_a_tab_that_opens_behind_comes_into_sight(self):
        pages = self.server.pages(*[f"/page{number}" for number in range(30)])
        target = self.server.page("/target")
        self.start_and_open(self.server.page(
            "/links", body=f"<a href='{target}' style='{WIDE}'>link</a>"), *pages)
        self.app.action("selectTab2")
        self.wait_for_selected("links")

        self.hands.click(button=2)

        until(lambda: self.windows.tabs()[-1] == "target", "the tab behind")
        foot = self.windows.find("push button", "Narrow tabs").middle[1]
        until(lambda: self.windows.find("push button", "target").middle[1] < foot - 20,
              "its row in sight")
        self.assertEqual(self.windows.selected_tabs(), ["links"])
        self.picture("opened-behind")

    def test_a_tab_that_opens_behind_measures_the_pane(self):
        tell = ("<script>onload = () => fetch(`/report/${document.visibilityState}-"
                "${innerWidth}x${innerHeight}`)</script>")
        target = self.server.page("/target", body=tell)
        self.start_at(f"<a href='{target}' style='{WIDE}'>link</a>{tell}")
        until(lambda: self.server.reports("visible-"), "the size of the page in front")

        self.hands.click(button=2)

        until(lambda: self.server.reports("hidden-"), "the size of the page behind",
              self.server.reports)
        self.assertEqual(self.server.reports("hidden-"), self.server.reports("visible-")[-1:])

    def inspect(self):
        processes = len(self.app.page_processes())
        self.hands.press("F12")
        until(lambda: len(self.app.page_processes()) > processes, "the inspector's process")

    def test_the_program_quits_while_a_page_is_inspected(self):
        self.start_at("<p>page</p>")
        self.inspect()

        self.app.quit()

    def test_a_tab_closes_while_its_page_is_inspected(self):
        self.start_at("<p>page</p>")
        self.open(self.server.page("/other"))
        self.app.action("selectTab1")
        self.wait_for_selected("page")
        self.inspect()

        self.app.action("closeTab")

        self.wait_for_tabs("other")
        self.app.check_runs()
