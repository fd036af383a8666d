/// What a soft shadow is.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QQuickItem>

namespace quillo {

/// The shadow of something with round corners that lies in the middle of this item; nothing of it is beneath
/// that. Worked out for the screen's own pixels, so that it is even where the screen is scaled by a fraction;
/// only its corners are kept as a picture. Lives on the main thread.
class ShadowPicture : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Of what is in the middle.
    Q_PROPERTY(qreal cornerRadius MEMBER cornerRadius_ NOTIFY changed)
    /// How far the shadow reaches beyond it: to the edges of this item.
    Q_PROPERTY(int reach MEMBER reach_ NOTIFY changed)
    /// How dark it is where it begins, from 0 to 1.
    Q_PROPERTY(qreal strength MEMBER strength_ NOTIFY changed)

public:
    explicit ShadowPicture(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void changed();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    qreal cornerRadius_ = 0;
    int reach_ = 0;
    qreal strength_ = 0;
};

} // namespace quillo
