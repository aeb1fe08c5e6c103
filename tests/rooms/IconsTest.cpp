#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QList>

#include "app/base/Paths.h"
#include "app/controls/CommandBars.h"
#include "tests/support/Libraries.h"

using namespace Qt::StringLiterals;

// The lower right quarter says what a command does: mostly green adds, mostly red deletes.
TEST(Icons, AreTransparentAndDistinctInBothDensitiesAndTellAddingFromDeletingByColour) {
    const QString folder = joinPath(builtProgramFolder(), u"Res/Icons"_s);
    QList<QImage> images;
    for (const int density : {1, 2}) {
        const int size = 20 * density, half = size / 2, enough = half * half / 4;
        QString signs;
        for (const QIcon& icon : iconsFromStrip(joinPath(folder, u"ToolBar.bmp"_s))) {
            const QImage image = icon.pixmap(QSize(20, 20), density).toImage();
            ASSERT_EQ(image.size(), QSize(size, size));
            int visible = 0, green = 0, red = 0;
            for (int at = 0; at < size * size; ++at) {
                const QColor color = image.pixelColor(at % size, at / size);
                const bool inSign = at % size >= half && at / size >= half && color.alpha() > 249;
                visible += color.alpha() > 128 ? 1 : 0;
                green += inSign && color.green() > color.red() + 60 ? 1 : 0;
                red += inSign && color.red() > color.green() + 60 ? 1 : 0;
            }
            EXPECT_TRUE(visible > size * size / 5 && visible < size * size * 4 / 5) << images.size();
            EXPECT_EQ(image.pixelColor(0, 0).alpha() + image.pixelColor(size - 1, size - 1).alpha(), 0);
            EXPECT_FALSE(images.contains(image) || images.contains(image.scaled(20, 20))) << images.size();
            images << image;
            signs += green > enough ? u'+' : red > enough ? u'-' : u'.';
        }
        EXPECT_EQ(signs, u"++-.....+-.+-++"_s);
    }
    EXPECT_TRUE(iconsFromStrip(u"nowhere.bmp"_s).empty());
    const QImage program(joinPath(folder, u"Tessel.png"_s));
    ASSERT_EQ(program.size(), QSize(256, 256));
    EXPECT_TRUE(program.pixelColor(0, 0).alpha() == 0 && program.pixelColor(128, 20).alpha() == 255);
}
