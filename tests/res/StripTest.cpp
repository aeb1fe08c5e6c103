#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QList>

#include "app/base/Paths.h"
#include "tests/support/SampleProgram.h"

namespace {
constexpr int kPositions = 15;

QImage load(const char* name) {
    const QString icons = joinPath(joinPath(builtProgramFolder(), QStringLiteral("Res")), QStringLiteral("Icons"));
    return QImage(joinPath(icons, QLatin1String(name)));
}

QList<QImage> positionsOf(const QImage& strip) {
    QList<QImage> images;
    for (int left = 0; left < strip.width(); left += strip.height())
        images << strip.copy(left, 0, strip.height(), strip.height());
    return images;
}

int visiblePixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y).alpha() > 128 ? 1 : 0;
    }
    return count;
}

enum class Sign { None, Plus, Minus };

/// What the lower right quarter says: mostly green adds, mostly red deletes.
Sign signOf(const QImage& image) {
    int green = 0;
    int red = 0;
    for (int y = image.height() / 2; y < image.height(); ++y) {
        for (int x = image.width() / 2; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() < 250)
                continue;
            green += pixel.green() > pixel.red() + 60 && pixel.green() > pixel.blue() + 40 ? 1 : 0;
            red += pixel.red() > pixel.green() + 60 && pixel.red() > pixel.blue() + 60 ? 1 : 0;
        }
    }
    const int enough = image.width() * image.height() / 16;
    return green > enough ? Sign::Plus : red > enough ? Sign::Minus : Sign::None;
}

/// The parameter is the edge of one image in pixels.
class StripTest : public ::testing::TestWithParam<int> {
protected:
    static QImage strip() { return load(GetParam() == 20 ? "ToolBar.bmp" : "ToolBar@2x.bmp"); }
};

TEST_P(StripTest, holdsFifteenTransparentDistinctImages) {
    const int size = GetParam();
    const QImage strip = StripTest::strip();
    ASSERT_EQ(strip.size(), QSize(kPositions * size, size));
    ASSERT_TRUE(strip.hasAlphaChannel());

    const QList<QImage> images = positionsOf(strip);
    ASSERT_EQ(images.size(), kPositions);
    for (int position = 0; position < kPositions; ++position) {
        SCOPED_TRACE(position);
        const QImage& image = images[position];
        EXPECT_GT(visiblePixels(image), size * size / 5);
        EXPECT_LT(visiblePixels(image), size * size * 4 / 5);
        for (const QPoint corner : {QPoint(0, 0), QPoint(size - 1, 0), QPoint(0, size - 1), QPoint(size - 1, size - 1)})
            EXPECT_EQ(image.pixelColor(corner).alpha(), 0);
        for (int other = 0; other < position; ++other)
            EXPECT_NE(image, images[other]) << "same as " << other;
    }
}

TEST_P(StripTest, tellsAddingFromDeletingByColour) {
    const QList<QImage> images = positionsOf(strip());
    ASSERT_EQ(images.size(), kPositions);
    for (int position = 0; position < kPositions; ++position) {
        Sign expected = Sign::None;
        if (QList{0, 1, 8, 11, 13, 14}.contains(position))
            expected = Sign::Plus;
        if (QList{2, 9, 12}.contains(position))
            expected = Sign::Minus;
        EXPECT_EQ(signOf(images[position]), expected) << position;
    }
}

INSTANTIATE_TEST_SUITE_P(, StripTest, ::testing::Values(20, 40), ::testing::PrintToStringParamName());

TEST(ApplicationIconTest, isLargeAndRoundedOnTransparency) {
    const QImage icon = load("Tessel.png");
    ASSERT_EQ(icon.size(), QSize(256, 256));
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(icon.pixelColor(128, 20).alpha(), 255);
}
}  // namespace
