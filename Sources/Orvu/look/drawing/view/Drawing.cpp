#include "look/drawing/view/Drawing.h"

#include <numbers>

namespace orvu {
namespace {

/// Adds one segment after another to a path, each of which needs the end of the one before.
class PathPen {
public:
    explicit PathPen(const Cairo::RefPtr<Cairo::Context>& context) : context_(context) {}

    void operator()(const MoveTo& move) {
        context_->move_to(move.end.x, move.end.y);
        place_ = move.end;
    }
    void operator()(const LineTo& line) {
        context_->line_to(line.end.x, line.end.y);
        place_ = line.end;
    }
    void operator()(const QuadraticTo& curve) { (*this)(asCubic(place_, curve)); }
    void operator()(const CubicTo& curve) {
        context_->curve_to(curve.first.x, curve.first.y, curve.second.x, curve.second.y,
                           curve.end.x, curve.end.y);
        place_ = curve.end;
    }
    void operator()(const ClosePath&) { context_->close_path(); }

private:
    const Cairo::RefPtr<Cairo::Context>& context_;
    PathPoint place_;
};

}  // namespace

Gdk::RGBA rgba(Paint paint) {
    const auto share = [](std::uint8_t component) { return static_cast<float>(component) / 255; };
    return Gdk::RGBA{share(paint.color.red), share(paint.color.green), share(paint.color.blue),
                     static_cast<float>(paint.opacity)};
}

void setSource(const Cairo::RefPtr<Cairo::Context>& context, Paint paint) {
    context->set_source_rgba(paint.color.red / 255.0, paint.color.green / 255.0,
                             paint.color.blue / 255.0, paint.opacity);
}

void addPath(const Cairo::RefPtr<Cairo::Context>& context, std::span<const PathSegment> path) {
    PathPen pen{context};
    for (const PathSegment& segment : path) std::visit(pen, segment);
}

void fillDot(const Cairo::RefPtr<Cairo::Context>& context, PathPoint centre, double diameter) {
    context->begin_new_path();
    context->arc(centre.x, centre.y, diameter / 2, 0, 2 * std::numbers::pi);
    context->fill();
}

}  // namespace orvu
