#include "import/BrowserDatabase.h"
#include "import/Importer.h"
#include "platform/linux/foreign/LinuxForeignFiles.h"
#include "platform/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace orvu {
namespace {

constexpr int bookmarkCount = 2000;
constexpr int visitCount = 5000;

/// The profile of a browser with a full history.
class FullBrowser {
public:
    FullBrowser() {
        std::filesystem::create_directories(profile());
        std::string rows;
        for (int i = 0; i < bookmarkCount; ++i) {
            rows.append(i == 0 ? "" : ",")
                .append(R"({"type":"url","name":"A page of mine","url":)");
            rows.append("\"https://marked.example/a/path/").append(std::to_string(i)).append("\"}");
        }
        std::ofstream{profile() / "Bookmarks"} << R"({"roots":{"other":{"children":[)" << rows
                                               << "]}}}";
        ChromiumHistory history{profile() / "History"};
        history.run("BEGIN");
        const double now = Date::now().secondsSinceReference();
        for (int i = 0; i < visitCount; ++i) {
            history.add("https://seen.example/a/path/" + std::to_string(i), "A page that was seen",
                        Date{now - 60.0 * i});
        }
        history.run("COMMIT");
    }

    [[nodiscard]] std::filesystem::path profile() const { return folder_.path() / "profile"; }
    [[nodiscard]] std::filesystem::path caches() const { return folder_.path() / "caches"; }

private:
    TemporaryFolder folder_;
};

void importRead(benchmark::State& state) {
    const FullBrowser browser;
    const BrowserImporter importer{std::make_shared<LinuxForeignFiles>(browser.caches()), {}};
    const ImportSource source{
        .id = "chrome", .name = "Chrome", .host = "", .folder = browser.profile()};
    ImportResult result;
    for (auto _ : state) result = importer.read(source, {});
    const bool isWhole =
        result.bookmarks.size() == bookmarkCount && result.visits.size() == visitCount;
    if (!isWhole) state.SkipWithError("not all of it was read");
}

/// The database alone, read in its place, with nothing made of its rows.
void importBareQuery(benchmark::State& state) {
    const FullBrowser browser;
    int rows = 0;
    for (auto _ : state) {
        rows = 0;
        sqlite3* database = nullptr;
        sqlite3_open((browser.profile() / "History").c_str(), &database);
        sqlite3_exec(
            database,
            "SELECT url, title, last_visit_time FROM urls WHERE last_visit_time > 0 AND hidden = 0 "
            "ORDER BY last_visit_time DESC LIMIT 5000",
            [](void* count, int, char**, char**) {
                ++*static_cast<int*>(count);
                return 0;
            },
            &rows, nullptr);
        sqlite3_close(database);
    }
    if (rows != visitCount) state.SkipWithError("not all of it was read");
}

BENCHMARK(importRead)->Name("ImportRead")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(importBareQuery)
    ->Name("ImportRead/bareQuery")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace orvu
