#pragma once

#include "look/drawing/Paint.h"
#include "look/drawing/Path.h"

#include <cairomm/context.h>
#include <gdkmm/rgba.h>

#include <span>

namespace orvu {

[[nodiscard]] Gdk::RGBA rgba(Paint paint);
/// Fills with `paint` from now on.
void setSource(const Cairo::RefPtr<Cairo::Context>& context, Paint paint);
/// Adds an outline to the context's path.
void addPath(const Cairo::RefPtr<Cairo::Context>& context, std::span<const PathSegment> path);
/// Fills a circle.
void fillDot(const Cairo::RefPtr<Cairo::Context>& context, PathPoint centre, double diameter);

}  // namespace orvu
