#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QList>

#include "app/base/Paths.h"
#include "tests/support/SampleProgram.h"

using namespace Qt::StringLiterals;

namespace {

QImage load(const char* name) {
    return QImage(joinPath(joinPath(builtProgramFolder(), u"Res/Icons"_s), QLatin1String(name)));
}

/// How many pixels of the image are what `is` says.
int count(const QImage& image, bool (*is)(const QColor&)) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found += is(image.pixelColor(x, y)) ? 1 : 0;
    return found;
}

/// What the lower right quarter says: mostly green adds, mostly red deletes.
QChar signOf(const QImage& image) {
    const int half = image.width() / 2, enough = half * half / 4;
    const QImage quarter = image.copy(half, half, half, half);
    const auto green = [](const QColor& c) { return c.alpha() > 249 && c.green() > c.red() + 60; };
    const auto red = [](const QColor& c) { return c.alpha() > 249 && c.red() > c.green() + 60; };
    return count(quarter, green) > enough ? u'+' : count(quarter, red) > enough ? u'-' : u'.';
}

}  // namespace

TEST(Strip, HoldsFifteenTransparentDistinctImagesThatTellAddingFromDeletingByColour) {
    const QString expected = u"++-.....+-.+-++"_s;
    for (const int size : {20, 40}) {
        const QImage strip = load(size == 20 ? "ToolBar.bmp" : "ToolBar@2x.bmp");
        ASSERT_EQ(strip.size(), QSize(int(expected.size()) * size, size));
        ASSERT_TRUE(strip.hasAlphaChannel());
        QList<QImage> images;
        QString signs;
        for (int position = 0; position < expected.size(); ++position) {
            const QImage image = strip.copy(position * size, 0, size, size);
            const int visible = count(image, [](const QColor& c) { return c.alpha() > 128; });
            EXPECT_TRUE(visible > size * size / 5 && visible < size * size * 4 / 5) << position;
            EXPECT_EQ(image.pixelColor(0, 0).alpha() + image.pixelColor(size - 1, size - 1).alpha(), 0) << position;
            EXPECT_FALSE(images.contains(image)) << position;
            images << image;
            signs += signOf(image);
        }
        EXPECT_EQ(signs, expected);
    }
    const QImage icon = load("Tessel.png");
    ASSERT_EQ(icon.size(), QSize(256, 256));
    EXPECT_TRUE(icon.pixelColor(0, 0).alpha() == 0 && icon.pixelColor(128, 20).alpha() == 255);
}
