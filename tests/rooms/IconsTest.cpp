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
        const int size = 20 * density, half = size / 2;
        QString signs;
        for (const QIcon& icon : iconsFromStrip(joinPath(folder, u"ToolBar.bmp"_s))) {
            const QImage image = icon.pixmap(QSize(20, 20), density).toImage();
            ASSERT_EQ(image.size(), QSize(size, size));
            EXPECT_EQ(image.pixelColor(0, 0).alpha() + image.pixelColor(size - 1, size - 1).alpha(), 0);
            EXPECT_FALSE(images.contains(image) || images.contains(image.scaled(20, 20))) << images.size();
            images << image;
            int greener = 0;
            for (int at = 0; at < half * half; ++at) {
                const QColor color = image.pixelColor(half + at % half, half + at / half);
                const int difference = color.alpha() > 249 ? color.green() - color.red() : 0;
                greener += difference > 60 ? 1 : difference < -60 ? -1 : 0;
            }
            const int enough = half * half / 4;
            signs += greener > enough ? u'+' : greener < -enough ? u'-' : u'.';
        }
        EXPECT_EQ(signs, u"++-.....+-.+-++"_s);
    }
    EXPECT_TRUE(iconsFromStrip(u"nowhere.bmp"_s).empty());
    EXPECT_EQ(QImage(joinPath(folder, u"Tessel.png"_s)).size(), QSize(256, 256));
}
