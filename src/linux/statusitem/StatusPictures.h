/// The status item's pictures, for bars of all heights.
#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// Draws a symbol in one colour, as a square whose edge is so many pixels long. Empty if there is no such
/// symbol.
using SymbolPicture = std::function<QImage(std::string_view symbol, QColor colour, int pixels)>;

/// Draws when asked, and keeps what it drew last.
class StatusPictures {
public:
    explicit StatusPictures(SymbolPicture draw) : draw_(std::move(draw)) {}

    /// One a size, the smallest first. `badge` may be empty, as badgeText gives it.
    const std::vector<QImage>& of(const std::string& symbol, const QString& badge);

private:
    const SymbolPicture draw_;
    std::string symbol_;
    QString badge_;
    std::vector<QImage> pictures_;
};

} // namespace quillo
