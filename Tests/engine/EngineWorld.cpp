#include "engine/EngineWorld.h"

#include "platform/linux/files/FileText.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace orvu {
namespace {

/// The folders of all tests, which go with this process. The engine's network process watches the
/// caches of sessions that are gone as well, and comes to grief over one that is deleted.
class Folders {
public:
    Folders() = default;
    Folders(const Folders&) = delete;
    Folders& operator=(const Folders&) = delete;
    ~Folders() {
        std::error_code ignored;
        for (const auto& folder : made_) std::filesystem::remove_all(folder, ignored);
    }

    [[nodiscard]] std::filesystem::path make() {
        const auto parent = std::filesystem::temp_directory_path();
        std::string pattern = (parent / "orvu-engine-XXXXXX").string();
        return made_.emplace_back(mkdtemp(pattern.data()));
    }

private:
    std::vector<std::filesystem::path> made_;
};

std::filesystem::path temporaryFolder() {
    static Folders folders;
    return folders.make();
}

/// What the kernel tells of a process: its name and its parent.
struct ProcessFacts {
    std::string name;
    int parent = 0;
};

ProcessFacts factsOf(const std::filesystem::path& process) {
    const std::string text = fileText(process / "stat").value_or("");
    const auto open = text.find('(');
    const auto close = text.rfind(')');
    if (open == std::string::npos || close == std::string::npos) return {};
    // Behind the name: a blank, the state, a blank, the parent.
    return {text.substr(open + 1, close - open - 1), std::atoi(text.c_str() + close + 4)};
}

bool descendsFrom(int process, int ancestor) {
    for (int depth = 0; process > 1 && depth < 8; ++depth) {
        if (process == ancestor) return true;
        process = factsOf("/proc/" + std::to_string(process)).parent;
    }
    return false;
}

}  // namespace

EngineTest::EngineTest() : folder(temporaryFolder()) {}

EngineTest::~EngineTest() = default;

AppServices& EngineTest::services() {
    if (!services_) services_.emplace(platform());
    return *services_;
}

Platform EngineTest::platform() {
    return {.defaults = defaults,
            .loop = loop,
            .activity = fakes.activity,
            .engine = engine,
            .ruleLists = ruleLists,
            .iconRequests = iconRequests,
            .suggestionRequests = fakes.suggestionRequests,
            .pageReads = fakes.pageReads,
            .background = fakes.background,
            .images = images,
            .model = fakes.model,
            .files = files,
            .downloadFolder = downloadFolder,
            .workspace = fakes.workspace,
            .pasteboard = fakes.pasteboard,
            .sound = fakes.sound,
            .paths = paths,
            .locale = fakes.locale,
            .calendar = fakes.calendar};
}

bool EngineTest::waitFor(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds{20};
    // A timer wakes the loop now and then: some conditions change without an event of ours.
    const guint ticker = g_timeout_add(20, [](gpointer) -> gboolean { return TRUE; }, nullptr);
    while (!condition() && std::chrono::steady_clock::now() < deadline) {
        g_main_context_iteration(nullptr, TRUE);
    }
    g_source_remove(ticker);
    return condition();
}

void EngineTest::settle() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds{400};
    EXPECT_TRUE(waitFor([&] { return std::chrono::steady_clock::now() >= end; }));
}

void EngineTest::loadAndWait(WebView& view, RecordingDelegate& delegate,
                             const std::string& path) const {
    const auto before = delegate.finishedTitles.size();
    view.load(url(path));
    ASSERT_TRUE(waitFor([&] { return delegate.finishedTitles.size() > before; })) << path;
}

ScriptResult EngineTest::evaluate(WebView& view, const std::string& script) {
    const auto ask = [](WebView& page, std::string text) -> Task<ScriptResult> {
        co_return co_await page.evaluateJavaScript(std::move(text));
    };
    auto task = ask(view, script);
    task.start();
    if (!waitFor([&] { return task.isDone(); })) return {};
    return task.result();
}

std::vector<int> EngineTest::processesNamed(std::string_view name) {
    std::vector<int> result;
    for (const auto& entry : std::filesystem::directory_iterator{"/proc"}) {
        const int process = std::atoi(entry.path().filename().c_str());
        if (process <= 0) continue;
        if (factsOf(entry.path()).name == name && descendsFrom(process, getpid())) {
            result.push_back(process);
        }
    }
    return result;
}

std::vector<int> EngineTest::processesSince(const std::vector<int>& before, std::string_view name) {
    auto now = processesNamed(name);
    std::erase_if(
        now, [&before](int process) { return std::ranges::find(before, process) != before.end(); });
    return now;
}

}  // namespace orvu
