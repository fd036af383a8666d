#include "linux/statusitem/StatusPictures.h"

#include "linux/statusitem/CountBadge.h"

#include <array>
#include <utility>

namespace quillo {

namespace {

/// Nothing tells how bright the bar is: panels are dark beside light windows and the other way round. This
/// green keeps at least 3.7:1 from white and from the usual dark greys.
const QColor symbolColour(0x2f, 0x95, 0x67);

/// What bars ask for at 100 %, 150 % and 200 %.
constexpr std::array sizes{16, 22, 24, 32, 44, 48, 64};

} // namespace

const std::vector<QImage>& StatusPictures::of(const std::string& symbol, const QString& badge) {
    if (!pictures_.empty() && symbol == symbol_ && badge == badge_)
        return pictures_;
    symbol_ = symbol;
    badge_ = badge;
    pictures_.clear();
    for (const int size : sizes) {
        QImage picture = draw_(symbol, symbolColour, size);
        if (!picture.isNull())
            pictures_.push_back(withBadge(std::move(picture), badge));
    }
    return pictures_;
}

} // namespace quillo
