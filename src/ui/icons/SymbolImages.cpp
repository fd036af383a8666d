#include "ui/icons/SymbolImages.h"

#include "base/Log.h"
#include "symbols/SymbolImage.h"

#include <algorithm>
#include <optional>
#include <string>

namespace quillo {
namespace {

constexpr int ordinary = 16; // the size that symbols are drawn for

/// "rrggbbaa" in hexadecimal digits.
std::optional<QColor> colourFrom(const QString& digits) {
    bool isNumber = false;
    const uint value = digits.toUInt(&isNumber, 16);
    if (!isNumber || digits.size() != 8)
        return std::nullopt;
    const auto part = [&](int place) { return static_cast<int>(value >> (8 * place) & 0xffU); };
    return QColor(part(3), part(2), part(1), part(0));
}

} // namespace

SymbolImages::SymbolImages() : QQuickImageProvider(QQmlImageProviderBase::Image) {}

QImage SymbolImages::requestImage(const QString& address, QSize* size, const QSize& requestedSize) {
    const qsizetype slash = address.lastIndexOf(u'/');
    const std::optional<QColor> colour = colourFrom(address.mid(slash + 1));
    const int pixels = std::max(requestedSize.width(), requestedSize.height());
    QImage image;
    if (slash > 0 && colour)
        image = symbolImage(address.left(slash).toStdString(), *colour, pixels > 0 ? pixels : ordinary);
    else
        log("a symbol was asked for by a name or in a colour that none has");
    if (size)
        *size = image.size();
    return image;
}

} // namespace quillo
