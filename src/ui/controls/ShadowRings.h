/// What a shadow is painted of.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QQuickPaintedItem>

namespace quillo {

/// Rings around something with round corners that lies in the middle of this item, each fainter than the one
/// within; nothing of them is beneath it. Painted, as rectangles of one pixel's border do not meet where the
/// screen is scaled by a fraction. Lives on the main thread.
class ShadowRings : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Of what is in the middle.
    Q_PROPERTY(qreal cornerRadius MEMBER cornerRadius_ NOTIFY changed)
    /// How far the rings reach beyond it: to the edges of this item.
    Q_PROPERTY(int reach MEMBER reach_ NOTIFY changed)
    /// The opacity of the innermost, from 0 to 1.
    Q_PROPERTY(qreal strength MEMBER strength_ NOTIFY changed)

public:
    explicit ShadowRings(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    qreal cornerRadius_ = 0;
    int reach_ = 0;
    qreal strength_ = 0;
};

} // namespace quillo
