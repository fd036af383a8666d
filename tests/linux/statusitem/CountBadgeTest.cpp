#include "linux/statusitem/CountBadge.h"

#include "linux/statusitem/StatusPictures.h"

#include <gmock/gmock.h>

#include <QColor>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace quillo {
namespace {

using testing::Ge;
using testing::IsEmpty;
using testing::SizeIs;

std::string badge(const char* label) {
    return badgeText(QString::fromUtf8(label)).toStdString();
}

TEST(CountBadge, ShowsNumbersUpTo99AndMarksLargerOnes) {
    EXPECT_EQ(badge("1"), "1");
    EXPECT_EQ(badge("99"), "99");
    EXPECT_EQ(badge("100"), "99+");
    EXPECT_EQ(badge("18446744073709551615"), "99+");
}

TEST(CountBadge, ShowsNothingElse) {
    EXPECT_EQ(badge(""), "");
    EXPECT_EQ(badge("0"), "");
    EXPECT_EQ(badge("-3"), "");
    EXPECT_EQ(badge("some"), "");
    EXPECT_EQ(badge("99999999999999999999999"), "");
}

/// By WCAG 2.1, "relative luminance" and "contrast ratio".
double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

/// The symbol fills its square with the colour, so that all the rest is the badge.
QImage filled(std::string_view, const QColor& colour, int pixels) {
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(colour);
    return picture;
}

class DrawnBadge : public testing::Test {
protected:
    StatusPictures pictures_{filled};
    int count_ = 0;
    char name_[5] = "test";
    char* arguments_[1] = {name_};
    QGuiApplication application_{count_, arguments_};
};

TEST_F(DrawnBadge, LeavesThePictureAsItIsWithoutText) {
    for (const QImage& picture : pictures_.of("symbol", {}))
        EXPECT_EQ(picture, filled({}, picture.pixelColor(0, 0), picture.width()));
}

TEST_F(DrawnBadge, StandsInTheLowerRightCornerAndLeavesTheUpperLeft) {
    for (const QString& text : {QStringLiteral("1"), QStringLiteral("88"), QStringLiteral("99+")}) {
        for (const QImage& picture : pictures_.of("symbol", text)) {
            SCOPED_TRACE(text.toStdString() + " at " + std::to_string(picture.width()));
            EXPECT_EQ(picture.width(), picture.height());
            const int last = picture.width() - 1;
            const QColor symbol = picture.pixelColor(0, 0);
            EXPECT_EQ(symbol.alpha(), 255);
            EXPECT_EQ(picture.pixelColor(last, 0), symbol);
            EXPECT_EQ(picture.pixelColor(last, last).alpha(), 0) << "a round corner";
            const QColor beside = picture.pixelColor(last - picture.width() * 3 / 10, last);
            EXPECT_THAT(contrast(beside, Qt::white), Ge(4.5)) << "the badge, below the text";
            int white = 0;
            for (int y = 0; y <= last; ++y) {
                for (int x = 0; x <= last; ++x)
                    white +=
                        contrast(picture.pixelColor(x, y), beside) >= 3 && picture.pixelColor(x, y) != symbol;
            }
            EXPECT_THAT(white, Ge(picture.width() / 4));
        }
    }
}

TEST_F(DrawnBadge, AsksForEverySizeOnceWhileNothingChanges) {
    int drawn = 0;
    StatusPictures pictures([&](std::string_view symbol, const QColor& colour, int pixels) {
        ++drawn;
        return filled(symbol, colour, pixels);
    });
    const auto sizes = pictures.of("symbol", {}).size();
    EXPECT_THAT(pictures.of("symbol", {}), SizeIs(sizes));
    EXPECT_EQ(drawn, static_cast<int>(sizes));
    pictures.of("symbol", QStringLiteral("1"));
    EXPECT_EQ(drawn, static_cast<int>(2 * sizes));
}

TEST_F(DrawnBadge, DoesWithoutASymbolThatIsNotThere) {
    StatusPictures pictures([](std::string_view, const QColor&, int) { return QImage(); });
    EXPECT_THAT(pictures.of("nothing", QStringLiteral("1")), IsEmpty());
}

TEST_F(DrawnBadge, HasASymbolThatIsSeenOnLightAndOnDarkBars) {
    const QColor symbol = pictures_.of("symbol", {}).front().pixelColor(0, 0);
    EXPECT_THAT(contrast(symbol, Qt::white), Ge(3.0));
    EXPECT_THAT(contrast(symbol, QColor(0xeb, 0xeb, 0xeb)), Ge(3.0));
    EXPECT_THAT(contrast(symbol, QColor(0x2b, 0x2b, 0x2b)), Ge(3.0));
    EXPECT_THAT(contrast(symbol, Qt::black), Ge(3.0));
}

} // namespace
} // namespace quillo
