#pragma once

namespace orvu {

/// How two pages side by side share a width. All lengths in points.
class BrowserSplitPages {
public:
    static constexpr int dividerWidth = 14;
    static constexpr int minPaneWidth = 260;
    static constexpr double minFraction = 0.2;
    static constexpr double maxFraction = 0.8;
    /// How far the pointer must go with the divider before it follows.
    static constexpr int dragThreshold = 10;
    /// What one press of an arrow key moves the divider by.
    static constexpr double keyStep = 0.05;

    struct Widths {
        int first = 0;
        int second = 0;
        friend bool operator==(Widths, Widths) = default;
    };

    /// The first pane's share of what the divider leaves. Kept as long as the pair, unsaved.
    [[nodiscard]] double fraction() const { return fraction_; }
    /// The panes' widths in a room of `width`. Both keep `minPaneWidth` where there is room for
    /// both; the first one gives way before the second. Never negative.
    [[nodiscard]] Widths widths(int width) const;

    /// The divider was dragged to `x` in a room of `width`.
    void dragTo(double x, int width);
    /// The divider was moved by `steps` key presses, to the left if negative.
    void step(int steps);
    /// The pair ended.
    void reset() { fraction_ = 0.5; }

private:
    double fraction_ = 0.5;
};

}  // namespace orvu
