/// The symbols of this folder for QML, in any colour and at any size.
#pragma once

#include <QImage>
#include <QQuickImageProvider>

namespace quillo {

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
