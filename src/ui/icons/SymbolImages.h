/// The symbols of the interface, drawn in any colour and at any size.
#pragma once

#include <QColor>
#include <QImage>
#include <QQuickImageProvider>
#include <string_view>

namespace quillo {

/// The symbol in one colour, square. `name` is that of a file in this folder without its ending, such as
/// "bell.fill"; `pixels` is the edge in device pixels, 1 to 1024. A symbol that is not there gives an empty
/// image and a line in the log. Thread-safe.
QImage symbolImage(std::string_view name, const QColor& colour, int pixels);

/// Hands symbols to QML: image://symbol/<name>/<rrggbbaa>, in the size (device pixels) that is asked for. As
/// the colour is part of the address, Qt's own cache keeps each look of a symbol once. `Icon` makes these
/// addresses.
class SymbolImages final : public QQuickImageProvider {
public:
    /// What engines know this provider by.
    static constexpr const char* name = "symbol";

    SymbolImages();

    /// May be called from any thread.
    QImage requestImage(const QString& address, QSize* size, const QSize& requestedSize) override;
};

} // namespace quillo
