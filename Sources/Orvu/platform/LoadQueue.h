#pragma once

#include "platform/Activity.h"
#include "platform/MainLoop.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <optional>

namespace orvu {

/// Lets pages that nobody looks at yet load one after the other.
///
/// The start of a page's process stands the main thread still for some 70 ms, and a page that loads
/// takes the processor from the others. So a load that waits begins when the pages that somebody
/// wants now have been painted, when the person has left the keys alone for a moment and nothing
/// moves, and only a few load at a time.
class LoadQueue {
public:
    /// So many of those that waited load at a time.
    static constexpr std::size_t together = 2;
    /// For so long they wait at most until a page that is wanted now was painted.
    static constexpr std::chrono::seconds frontTime{2};
    /// For so long nobody has pressed a key or a button before one begins.
    static constexpr std::chrono::milliseconds quietTime{500};
    /// One that takes longer no longer keeps others from beginning.
    static constexpr std::chrono::seconds longestTurn{10};

private:
    enum class Stage { front, waiting, running };
    struct Entry {
        Stage stage;
        std::size_t turn = 0;
        std::function<void()> start = {};
        Date since = {};  ///< of the stage
    };
    using Entries = std::list<Entry>;

public:
    /// A load that the queue knows. It must end before the queue, and ends with the load: when the
    /// page was painted or the load is over.
    class Place {
    public:
        Place(LoadQueue& queue, Entries::iterator entry) : queue_(queue), entry_(entry) {}
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place() { queue_.leave(entry_); }

        /// Whether others wait for this.
        [[nodiscard]] bool holdsUp() const {
            return entry_->stage == Stage::front && queue_.hasWaiting();
        }

    private:
        LoadQueue& queue_;
        const Entries::iterator entry_;
    };

    /// Both must outlive the queue.
    LoadQueue(MainLoop& loop, Activity& activity);
    LoadQueue(const LoadQueue&) = delete;
    LoadQueue& operator=(const LoadQueue&) = delete;

    /// A load that waits: the lowest `turn` goes first, of equal ones the first that came. `start`
    /// is called when it may begin, once, from the loop.
    [[nodiscard]] std::unique_ptr<Place> wait(std::size_t turn, std::function<void()> start);
    /// A load that begins at once, before all that wait.
    [[nodiscard]] std::unique_ptr<Place> goFirst();

    [[nodiscard]] bool hasWaiting() const;

private:
    [[nodiscard]] std::unique_ptr<Place> add(Entry entry);
    void leave(Entries::iterator entry);
    void update();
    void startNext();
    /// When the next one may begin; nothing while that is not known.
    [[nodiscard]] std::optional<Date> nextStart() const;

    MainLoop& loop_;
    Activity& activity_;
    Entries entries_;  ///< in the order in which they came
    Scheduled next_;
    ScopedConnection activityWatch_;
};

}  // namespace orvu
