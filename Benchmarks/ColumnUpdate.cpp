// Measures what it costs to draw the column of tabs anew when one tab opens or closes among few
// and among many: real widgets, pages that do nothing. Benchmarks/column-update runs it.
#include "look/view/Style.h"
#include "shell/column/view/BrowserTabColumn.h"
#include "fakes/FakeBrowserWindow.h"
#include "shell/column/view/GroupColorRules.h"
#include "support/FakeDesktop.h"
#include "support/UpdateWorld.h"

#include <glibmm/main.h>
#include <gtkmm/application.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

namespace orvu {
namespace {

double threadMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The processor's time that the frames of one window take, and their number.
class Frames {
public:
    explicit Frames(Gtk::Window& window) {
        GdkFrameClock* const clock = gtk_widget_get_frame_clock(GTK_WIDGET(window.gobj()));
        g_signal_connect(clock, "before-paint", G_CALLBACK(+[](GdkFrameClock*, gpointer self) {
                             static_cast<Frames*>(self)->begin_ = threadMilliseconds();
                         }),
                         this);
        g_signal_connect(clock, "after-paint", G_CALLBACK(+[](GdkFrameClock*, gpointer self) {
                             auto& frames = *static_cast<Frames*>(self);
                             frames.spent += threadMilliseconds() - frames.begin_;
                             ++frames.count;
                         }),
                         this);
    }
    double spent = 0;
    int count = 0;

private:
    double begin_ = 0;
};

/// Lets the window draw for a while.
void run(std::chrono::milliseconds interval) {
    const auto end = std::chrono::steady_clock::now() + interval;
    const auto context = Glib::MainContext::get_default();
    while (std::chrono::steady_clock::now() < end) {
        if (!context->iteration(false)) g_usleep(500);
    }
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

struct Costs {
    double open = 0;
    double close = 0;
    int idleFrames = 0;
};

class Bench {
public:
    explicit Bench(std::size_t tabs) {
        const auto url = Url::parse("https://www.garden.example/");
        while (store_->tabs().size() < tabs) store_->newTab(url, BrowserStore::Select::no);
        column_ = std::make_unique<BrowserTabColumn>(view_);
        window_.add_css_class("orvu");
        window_.set_default_size(1280, 820);
        window_.set_child(box_);
        box_.append(*column_);
        window_.present();
        run(std::chrono::milliseconds{1500});
    }
    ~Bench() {
        box_.remove(*column_);
        column_.reset();
    }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    Costs measure() {
        Frames frames{window_};
        run(std::chrono::milliseconds{300});
        Costs costs{.idleFrames = frames.count};
        std::vector<double> open;
        std::vector<double> close;
        for (int time = 0; time < 40; ++time) {
            close.push_back(cost(frames, [&] { store_->close(*store_->tabs()[3]); }));
            const auto url = Url::parse("https://www.garden.example/");
            open.push_back(cost(frames, [&] { store_->newTab(url, BrowserStore::Select::no); }));
        }
        costs.open = median(open);
        costs.close = median(close);
        g_signal_handlers_disconnect_by_data(gtk_widget_get_frame_clock(GTK_WIDGET(window_.gobj())),
                                             &frames);
        return costs;
    }

private:
    static double cost(Frames& frames, const auto& operation) {
        operation();  // not counted: the store's work is measured elsewhere
        frames.spent = 0;
        run(std::chrono::milliseconds{60});
        return frames.spent;
    }

    FakeDesktop desktop_;
    AppServices services_{desktop_.platform()};
    std::shared_ptr<BrowserStore> store_ =
        std::make_shared<BrowserStore>(services_, false, Profile::personal());
    Assistant assistant_{desktop_.model, desktop_.defaults};
    FakeScreen screen_;
    FakeBrowserWindow browserWindow_{screen_, {}, [] {}};
    UpdateWorld updates_;
    BrowserView view_{store_,
                      {services_, assistant_, updates_.updater},
                      browserWindow_,
                      [](const Profile&) {},
                      BrowserView::Narrow::no};
    Gtk::Window window_;
    Gtk::Box box_;
    std::unique_ptr<BrowserTabColumn> column_;
};

void measure() {
    installStyle({groupColorRules()});
    constexpr std::array<std::size_t, 3> sizes{10, 40, 500};  // 40 are more than the window shows
    std::array<Costs, 3> costs;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        costs[i] = Bench{sizes[i]}.measure();
        std::printf(
            "%3zu tabs   open %6.2f ms   close %6.2f ms   frames while nothing changes %d\n",
            sizes[i], costs[i].open, costs[i].close, costs[i].idleFrames);
    }
    for (const std::size_t i : {0U, 1U}) {
        std::printf("500 to %2zu  open %6.2f      close %6.2f\n", sizes[i],
                    costs[2].open / costs[i].open, costs[2].close / costs[i].close);
    }
}

}  // namespace
}  // namespace orvu

int main() {
    const auto application =
        Gtk::Application::create("app.orvu.ColumnUpdate", Gio::Application::Flags::NON_UNIQUE);
    application->signal_activate().connect([] { orvu::measure(); });
    return application->run();
}
