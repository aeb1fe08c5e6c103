#pragma once

#include <QColor>

class QApplication;

/// The look of the program: every colour and size that is not the toolkit's own stands here.
namespace Theme {

inline constexpr QColor text{0x1f, 0x29, 0x33};
inline constexpr QColor mutedText{0x5f, 0x6e, 0x7e};
inline constexpr QColor disabledText{0xa3, 0xad, 0xb8};
inline constexpr QColor window{0xf4, 0xf6, 0xf8};
inline constexpr QColor paper{0xff, 0xff, 0xff};
inline constexpr QColor accent{0x2b, 0x6c, 0xb8};
inline constexpr QColor selection{0xd9, 0xe8, 0xf8};
inline constexpr QColor selectionWithoutFocus{0xe6, 0xea, 0xef};
inline constexpr QColor marked{0xec, 0xf4, 0xfd};
inline constexpr QColor markedWithoutFocus{0xf2, 0xf4, 0xf7};
inline constexpr QColor gridLine{0xe0, 0xe4, 0xe9};
inline constexpr QColor header{0xf0, 0xf3, 0xf6};
inline constexpr QColor headerLine{0xcf, 0xd6, 0xdd};
inline constexpr QColor topNode{0xf7, 0xfa, 0xfd};

/// Edge of icons in menus and toolbars, in device-independent pixels.
inline constexpr int iconSize = 20;

}  // namespace Theme

/// Gives the application its style, palette and a font that renders Chinese.
void applyApplicationStyle(QApplication& application);
