#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QList>

#include "app/base/Paths.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

namespace {

QImage load(const char* name) {
    const QString icons = joinPath(joinPath(builtProgramFolder(), u"Res"_s), u"Icons"_s);
    return QImage(joinPath(icons, QLatin1String(name)));
}

int visiblePixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y).alpha() > 128 ? 1 : 0;
    }
    return count;
}

/// What the lower right quarter says: mostly green adds, mostly red deletes.
QChar signOf(const QImage& image) {
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
    return green > enough ? u'+' : red > enough ? u'-' : u'.';
}

TEST(StripTest, holdsFifteenTransparentDistinctImagesThatTellAddingFromDeletingByColour) {
    const QString expected = u"++-.....+-.+-++"_s;
    for (const int size : {20, 40}) {
        const QImage strip = load(size == 20 ? "ToolBar.bmp" : "ToolBar@2x.bmp");
        ASSERT_EQ(strip.size(), QSize(int(expected.size()) * size, size));
        ASSERT_TRUE(strip.hasAlphaChannel());
        QList<QImage> images;
        QString signs;
        for (int position = 0; position < expected.size(); ++position) {
            SCOPED_TRACE(position);
            const QImage image = strip.copy(position * size, 0, size, size);
            EXPECT_GT(visiblePixels(image), size * size / 5);
            EXPECT_LT(visiblePixels(image), size * size * 4 / 5);
            for (const QPoint corner :
                 {QPoint(0, 0), QPoint(size - 1, 0), QPoint(0, size - 1), QPoint(size - 1, size - 1)})
                EXPECT_EQ(image.pixelColor(corner).alpha(), 0);
            EXPECT_FALSE(images.contains(image));
            images << image;
            signs += signOf(image);
        }
        EXPECT_EQ(signs, expected);
    }
    const QImage icon = load("Tessel.png");
    ASSERT_EQ(icon.size(), QSize(256, 256));
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(icon.pixelColor(128, 20).alpha(), 255);
}
}  // namespace
