#pragma once

#include "core/BrowserStore.h"
#include "foundation/text/Locale.h"
#include "foundation/text/Translation.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The time line of today's visits, of which one leads back to its page.
class BrowserRewind {
public:
    static constexpr Phrase heading = phrase("REWIND TODAY");
    static constexpr std::size_t rowsLimit = 5;

    /// The row of dots, in points: each stands in a frame of its own.
    static constexpr double dotFrame = 10;
    static constexpr double dotSpacing = 4;
    static constexpr double dotDiameter = 6;
    static constexpr double hoveredDotDiameter = 10;

    /// How wide so many dots are.
    [[nodiscard]] static double dotsWidth(std::size_t count);
    /// Where a dot's frame begins.
    [[nodiscard]] static double dotStart(std::size_t index);
    /// The dot in whose frame `x` lies; nothing between them and beyond the last of `count`.
    [[nodiscard]] static std::optional<std::size_t> dotAt(double x, std::size_t count);

    /// `store` must outlive this. `dismiss` is called when a visit was chosen; it may end this.
    BrowserRewind(BrowserStore& store, std::function<void()> dismiss,
                  Locale locale = Locale::current(), Calendar calendar = Calendar::current());
    BrowserRewind(const BrowserRewind&) = delete;
    BrowserRewind& operator=(const BrowserRewind&) = delete;

    /// Takes what the store knows now. A visit that is gone is not hovered any more.
    void refresh();
    /// All of today's visits, the oldest first: one dot for each.
    [[nodiscard]] const std::vector<Visit>& visits() const { return visits_; }
    /// The latest of them, the newest first.
    [[nodiscard]] std::vector<Visit> rows() const;

    /// The visit under the pointer or the keyboard.
    [[nodiscard]] const std::optional<Visit>& hovered() const { return hovered_; }
    void enter(const Visit& visit);
    /// Ends the hovering of `visit`, unless another one has taken its place.
    void leave(const Visit& visit);

    /// When a visit was, as people here write the time of day.
    [[nodiscard]] std::string time(const Visit& visit) const;
    /// When the hovered visit was, else the last one; empty without visits.
    [[nodiscard]] std::string shownTime() const;

    /// Goes back to `visit`.
    void choose(const Visit& visit);

    /// Calls `slot` after another visit is hovered, or none.
    sigc::connection connectHovered(const sigc::slot<void()>& slot) {
        return hoverChanged_.connect(slot);
    }

private:
    void setHovered(std::optional<Visit> visit);

    BrowserStore& store_;
    const std::function<void()> dismiss_;
    const Locale locale_;
    const Calendar calendar_;
    std::vector<Visit> visits_;
    std::optional<Visit> hovered_;
    sigc::signal<void()> hoverChanged_;
};

}  // namespace orvu
