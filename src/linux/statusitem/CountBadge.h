/// A number on a small picture, for bars that show no text beside it.
#pragma once

#include <QImage>
#include <QString>

namespace quillo {

/// What fits on a badge: a number from 1 to 99 as it stands, "99+" above, nothing for anything else.
QString badgeText(const QString& label);

/// The square picture with the text on a badge in its lower right corner; the picture as it was if there is
/// no text.
QImage withBadge(QImage picture, const QString& text);

} // namespace quillo
