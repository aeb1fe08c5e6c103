#include "app/controls/UiHelpers.h"

#include <gtest/gtest.h>

#include <QLineEdit>

TEST(UiHelpers, SelectAllTextTakesAnyBoxOrNone) {
    QLineEdit box(QStringLiteral("桩基"));
    SelectAllText(&box);
    EXPECT_EQ(box.selectedText(), QStringLiteral("桩基"));
    box.clear();
    SelectAllText(&box);
    SelectAllText(nullptr);
    EXPECT_FALSE(box.hasSelectedText());
}

TEST(UiHelpers, ValiTextLetsListedCharactersPass) {
    const QString digits = QStringLiteral("0123456789");
    EXPECT_EQ(ValiText('7', digits, false), '7');
    EXPECT_EQ(ValiText('a', digits, false), 0);
    EXPECT_EQ(ValiText(8, digits, false), 0);
    EXPECT_EQ(ValiText(8, digits, true), 8);
    EXPECT_EQ(ValiText('b', QStringLiteral("AB"), false), 'b');
    EXPECT_EQ(ValiText('B', QStringLiteral("ab"), false), 'B');
    EXPECT_EQ(ValiText(u'土', QStringLiteral("土石"), false), static_cast<int>(u'土'));
    EXPECT_EQ(ValiText(0, digits, true), 0);
}
