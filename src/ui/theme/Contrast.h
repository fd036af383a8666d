/// How well one colour can be told from another.
#pragma once

#include <QColor>
#include <span>

namespace quillo {

/// What is seen where `top`, with its alpha, lies on an opaque `below`.
QColor over(const QColor& top, const QColor& below);

/// From 1 (no difference) to 21 (black on white), for two opaque colours. WCAG 2.1, "contrast ratio":
/// https://www.w3.org/TR/WCAG21/#dfn-contrast-ratio
double contrastRatio(const QColor& one, const QColor& other);

/// `wanted` where it reaches `ratio` on each of the opaque `backgrounds`; else the nearest colour of its hue
/// that does, darker on light backgrounds and lighter on dark ones; black or white where no such colour is
/// left.
QColor readable(const QColor& wanted, std::span<const QColor> backgrounds, double ratio);

} // namespace quillo
