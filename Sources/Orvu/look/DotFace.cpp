#include "look/DotFace.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orvu {
namespace {

/// What is the same for all dots of a frame.
struct Frame {
    Mood mood;
    int gaze;
    int rowShift = 0;
    int topEyeRow = 4;
    int lowEyeRow = 5;
    double waveSpeed = 0.32;
    double base = 0.55;
    double halfHeight;
    bool blinks;
    int blinkWidth = 0;
    int beat;  ///< 0 to 3, of a talking mouth
    double time;
    double reveal;
};

enum class Kind { off, lit, ring, accent };

bool hasArcs(Mood mood) { return mood == Mood::happy || mood == Mood::music; }

int gazeOf(Mood mood, int lookX) {
    if (mood == Mood::listening || mood == Mood::curious) return 1;
    return mood == Mood::thinking ? -1 : lookX;
}

/// The remainder that is never negative.
int cycle(double t, int length) {
    const double tick = std::fmod(std::trunc(t), length);
    return static_cast<int>(tick < 0 ? tick + length : tick);
}

Frame frameOf(Mood mood, double t, int lookX, double reveal) {
    Frame frame{.mood = mood,
                .gaze = gazeOf(mood, lookX),
                .halfHeight = 5.4 + 0.3 * std::sin(0.12 * t),
                .blinks = mood == Mood::sleepy || cycle(t, 38) < 2,
                .beat = cycle(t, 4),
                .time = t,
                .reveal = reveal};
    if (mood == Mood::music) {
        frame.rowShift = static_cast<int>(std::lround(std::sin(0.55 * t) * 0.75));
    }
    if (mood == Mood::thinking || mood == Mood::curious) {
        frame.topEyeRow = 3;
        frame.lowEyeRow = 4;
    }
    if (mood == Mood::sleepy) {
        frame.waveSpeed = 0.12;
        frame.base = 0.35;
        frame.blinkWidth = 1;
    }
    return frame;
}

/// How many columns a dot lies beside the nearer eye.
int besideEye(const Frame& frame, int column) {
    return std::min(std::abs(column - (4 + frame.gaze)), std::abs(column - (8 + frame.gaze)));
}

bool isEye(const Frame& frame, int y, int column) {
    const int beside = besideEye(frame, column);
    if (hasArcs(frame.mood)) return (y == 4 && beside == 0) || (y == 5 && beside == 1);
    if (frame.blinks) return y == frame.lowEyeRow && beside <= frame.blinkWidth;
    return (y == frame.topEyeRow || y == frame.lowEyeRow) && beside == 0;
}

bool isMouth(const Frame& frame, int y, int column) {
    const int beside = std::abs(column - 6);
    if (frame.mood == Mood::surprised) return beside == 0 && (y == 7 || y == 8);
    if (frame.mood != Mood::talking) return false;
    if (frame.beat < 2) return (y == 7 && beside < 2) || (y == 8 && beside == 0);
    return y == 7 && beside == 0;
}

bool isCheek(const Frame& frame, int y, int column) {
    return hasArcs(frame.mood) && y == 6 && (column == 2 || column == 10);
}

Kind kindOf(const Frame& frame, int y, int column) {
    const double dx = column - 6;
    const double dy = y - 5.5;
    const double distance = std::hypot(dx, dy);
    const double down = dy / frame.halfHeight;
    const double across = dx / 6.3;
    if (down * down + across * across > 1 || distance > frame.reveal) return Kind::off;
    if (isEye(frame, y, column) || isMouth(frame, y, column)) return Kind::off;
    if (isCheek(frame, y, column)) return Kind::accent;
    return frame.reveal < 20 && frame.reveal - 1.2 < distance ? Kind::ring : Kind::lit;
}

DotCell cellOf(const Frame& frame, int y, int column) {
    switch (kindOf(frame, y, column)) {
        case Kind::off:
            return {false, 0.07};
        case Kind::ring:
        case Kind::accent:
            return {true, 1};
        case Kind::lit:
            break;
    }
    const double wave = std::sin(0.4 * y + frame.waveSpeed * frame.time - 0.6 * column);
    return {false, frame.base + (0.5 * wave + 0.5) * 0.45};
}

}  // namespace

std::string_view rawValue(Mood mood) {
    static constexpr std::array<std::string_view, allMoods.size()> names{
        "idle",     "happy",     "music",   "sleepy", "listening",
        "thinking", "surprised", "talking", "curious"};
    return names[static_cast<std::size_t>(mood)];
}

DotFaceModel::Cells DotFaceModel::cells(Mood mood, double t, int lookX, double reveal) {
    const Frame frame = frameOf(mood, t, lookX, reveal);
    Cells cells;
    std::size_t next = 0;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            cells[next++] = cellOf(frame, row - frame.rowShift, column);
        }
    }
    return cells;
}

Mood effectiveMood(Mood standing, const std::optional<MoodReaction>& reaction, Date now) {
    return reaction && now < reaction->until ? reaction->mood : standing;
}

double ticks(Date now) { return std::fmod(now.secondsSinceReference(), 100000) * 9; }

double revealRadius(std::optional<Date> revealFrom, Date now) {
    if (!revealFrom) return DotFaceModel::fullyRevealed;
    const double radius = now.secondsSince(*revealFrom) * 6.8;
    return radius >= 0 && radius < 14 ? radius : DotFaceModel::fullyRevealed;
}

}  // namespace orvu
