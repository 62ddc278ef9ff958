#pragma once

#include "search/answers/SearchAnswer.h"
#include "support/TabWorld.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A fixture with a tab that shows a page of results.
class AnswerTest : public TabTest {
protected:
    using Kind = SearchAnswer::Phase::Kind;
    using Phase = SearchAnswer::Phase;

    /// The script's answer of so many results: "Title 1" at "https://1.example/" with "Snippet 1".
    [[nodiscard]] static std::string listing(int count) {
        std::string json = "[";
        for (int number = 1; number <= count; ++number) {
            const std::string text = std::to_string(number);
            if (number > 1) json += ',';
            json += R"(["Title )" + text + R"(","https://)" + text + R"(.example/","Snippet )" +
                    text + R"(",""])";
        }
        return json + "]";
    }
    /// The scripts for results that the page was asked to run, by their places among all.
    [[nodiscard]] std::vector<std::size_t> readings() const {
        std::vector<std::size_t> places;
        for (std::size_t place = 0; place < page(*tab).scripts.size(); ++place) {
            if (page(*tab).scripts[place] == ResultsPage::script) places.push_back(place);
        }
        return places;
    }
    /// How often the page was asked for its results.
    [[nodiscard]] std::size_t asked() const { return readings().size(); }
    /// The page tells these, as it was last asked to.
    void tell(const std::string& json) {
        ASSERT_GT(asked(), 0U);
        page(*tab).answers[readings().back()].resolve({ScriptResult::Kind::json, json});
    }
    void tell(int count) { tell(listing(count)); }
    /// The page has loaded, and its results are drawn.
    void pass(std::chrono::milliseconds time) { world.loop.advance(time); }
    [[nodiscard]] FakeLanguageModel::Request& request() { return world.model.requests.back(); }
    /// Ends all open reading of pages, with nothing.
    void failPages() {
        for (std::size_t each = 0; each < world.pageReads.asked.size(); ++each) {
            world.pageReads.answer(each, std::nullopt);
        }
    }
    /// Goes on until the model was asked.
    void think(int count = 2) {
        answer.run(tab, "knives");
        pass(std::chrono::milliseconds{300});
        tell(count);
        failPages();
    }

    static constexpr auto results = "https://www.google.com/search?q=knives";

    Kesto kesto{world.model};
    SearchAnswer answer{kesto, world.loop, world.pageReads, world.background};
    std::shared_ptr<BrowserTab> tab = [this] {
        auto shown = openTab(results);
        page(*shown).finish("knives");
        return shown;
    }();
};

}  // namespace orvu
