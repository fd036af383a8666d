#include "ui/icons/SymbolImages.h"

#include "base/Log.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <optional>
#include <string>

namespace quillo {
namespace {

constexpr int largest = 1024; // device pixels
constexpr int ordinary = 16;  // the size that symbols are drawn for
constexpr std::size_t longestName = 64;

/// A name that cannot lead out of the folder of symbols.
bool isName(std::string_view name) {
    const auto belongs = [](char c) { return (c >= 'a' && c <= 'z') || c == '.'; };
    return !name.empty() && name.size() <= longestName && std::all_of(name.begin(), name.end(), belongs);
}

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

QImage symbolImage(std::string_view name, const QColor& colour, int pixels) {
    if (!isName(name) || pixels < 1 || pixels > largest) {
        log("a symbol was asked for by a name or in a size that none has");
        return {};
    }
    const QString file = QStringLiteral(":/qt/qml/Quillo/icons/%1.svg")
                             .arg(QLatin1StringView(name.data(), static_cast<qsizetype>(name.size())));
    QSvgRenderer drawing;
    if (!QFile::exists(file) || !drawing.load(file)) {
        log("there is no symbol called " + std::string(name));
        return {};
    }
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colour);
    return image;
}

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
