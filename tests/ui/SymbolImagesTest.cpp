#include "ui/icons/SymbolImages.h"

#include "base/Log.h"
#include "symbols/SymbolImage.h"

#include <gtest/gtest.h>

#include <QDir>
#include <string>
#include <vector>

namespace quillo {
namespace {

const std::vector<std::string> symbols{
    "bell",
    "bell.fill",
    "bolt.fill",
    "calendar",
    "checklist",
    "checkmark",
    "chevron.down",
    "chevron.left",
    "chevron.right",
    "chevron.up",
    "clock",
    "clock.fill",
    "crown",
    "crown.fill",
    "ellipsis",
    "envelope",
    "exclamationmark.circle.fill",
    "flame.fill",
    "gearshape",
    "hourglass",
    "moon.stars.fill",
    "plus",
    "scope",
    "sparkles",
    "star",
    "sunrise.fill",
    "trash",
    "xmark",
};

class SymbolImagesTest : public testing::Test {
protected:
    void SetUp() override {
        setLogSink([this](std::string_view line) { lines.emplace_back(line); });
    }
    void TearDown() override { setLogSink({}); }

    std::vector<std::string> lines;
};

/// The part of the picture that is drawn upon, 0 to 1.
double coverage(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            sum += image.pixelColor(x, y).alphaF();
    return sum / (image.width() * image.height());
}

TEST_F(SymbolImagesTest, EverySymbolIsThere) {
    QStringList files;
    for (const std::string& symbol : symbols)
        files << QString::fromStdString(symbol) + QStringLiteral(".svg");
    files.sort();
    QStringList present = QDir(QStringLiteral(":/qt/qml/Quillo/icons")).entryList({QStringLiteral("*.svg")});
    present.sort();
    EXPECT_EQ(present, files);
}

TEST_F(SymbolImagesTest, EverySymbolIsDrawnInItsColourAndWithinItsSquare) {
    for (const std::string& symbol : symbols) {
        SCOPED_TRACE(symbol);
        for (const int pixels : {10, 16, 22, 64}) {
            const QImage image = symbolImage(symbol, QColor(200, 100, 50), pixels);
            ASSERT_EQ(image.size(), QSize(pixels, pixels));
            EXPECT_GT(coverage(image), 0.06);
            EXPECT_LT(coverage(image), 0.65);
        }
        const QImage image = symbolImage(symbol, QColor(200, 100, 50), 64);
        bool solid = false;
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 64; ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (x == 0 || y == 0 || x == 63 || y == 63) {
                    EXPECT_EQ(pixel.alpha(), 0) << x << ", " << y;
                }
                solid = solid || pixel == QColor(200, 100, 50);
                if (pixel.alpha() == 255) {
                    EXPECT_EQ(pixel, QColor(200, 100, 50));
                }
            }
        EXPECT_TRUE(solid);
    }
    EXPECT_EQ(lines, std::vector<std::string>{});
}

TEST_F(SymbolImagesTest, AColourCanShineThrough) {
    const QImage image = symbolImage("plus", QColor(255, 0, 0, 128), 48);
    EXPECT_NEAR(image.pixelColor(24, 24).alpha(), 128, 1);
    EXPECT_EQ(image.pixelColor(24, 24).red(), 255);
}

TEST_F(SymbolImagesTest, ASymbolThatIsNotThereIsEmptyAndLogged) {
    const std::vector<std::string> names{"",
                                         "unknown",
                                         ".",
                                         "..",
                                         "../mascot/Olo",
                                         "/etc/x",
                                         "plus/",
                                         "plus%2e",
                                         "plus\n",
                                         std::string("plus\0x", 6),
                                         std::string(100'000, 'a')};
    for (const std::string& name : names) {
        lines.clear();
        EXPECT_TRUE(symbolImage(name, Qt::black, 16).isNull()) << name.substr(0, 40);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_LT(lines.front().size(), 100U);
        EXPECT_EQ(lines.front().find('\n'), std::string::npos);
    }
    for (const int pixels : {0, -1, 1'025, 2'000'000'000})
        EXPECT_TRUE(symbolImage("plus", Qt::black, pixels).isNull()) << pixels;
}

TEST_F(SymbolImagesTest, HandsOutSymbolsByAddress) {
    SymbolImages images;
    QSize size;
    EXPECT_EQ(images.requestImage(QStringLiteral("bell.fill/0a141eff"), &size, QSize(20, 20)),
              symbolImage("bell.fill", QColor(10, 20, 30), 20));
    EXPECT_EQ(size, QSize(20, 20));
    EXPECT_EQ(images.requestImage(QStringLiteral("plus/ff000080"), &size, QSize()),
              symbolImage("plus", QColor(255, 0, 0, 128), 16));
    EXPECT_EQ(images.requestImage(QStringLiteral("plus/ff000080"), nullptr, QSize(24, 0)).size(),
              QSize(24, 24));
    EXPECT_EQ(lines, std::vector<std::string>{});
}

TEST_F(SymbolImagesTest, AnAddressThatIsNoneIsEmptyAndLogged) {
    SymbolImages images;
    for (const char* address :
         {"", "/", "plus", "plus/", "plus/red", "plus/ff0000", "plus/ff0000ff0", "plus/gg0000ff", "/000000ff",
          "plus/-1234567", "../icons/plus/000000ff", "plus/plus/000000ff"}) {
        lines.clear();
        QSize size(1, 1);
        EXPECT_TRUE(images.requestImage(QString::fromUtf8(address), &size, QSize(16, 16)).isNull())
            << address;
        EXPECT_EQ(size, QSize(0, 0)) << address;
        EXPECT_EQ(lines.size(), 1U) << address;
    }
}

} // namespace
} // namespace quillo
