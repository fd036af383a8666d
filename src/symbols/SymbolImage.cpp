#include "symbols/SymbolImage.h"

#include "base/Log.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <string>

namespace quillo {
namespace {

constexpr int largest = 1024; // device pixels
constexpr std::size_t longestName = 64;

/// A name that cannot lead out of the folder of symbols.
bool isName(std::string_view name) {
    const auto belongs = [](char c) { return (c >= 'a' && c <= 'z') || c == '.'; };
    return !name.empty() && name.size() <= longestName && std::all_of(name.begin(), name.end(), belongs);
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

} // namespace quillo
