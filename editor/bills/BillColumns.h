#pragma once

#include <QString>
#include <array>

/// A column of the bill list.
struct BillColumn {
    /// Key in the grid; columns are found by it, ignoring letter case.
    const char* key;
    /// Column of tblBill.
    const char* field;
    const char16_t* caption;
    int twips;
    bool centred;
    bool shown;
    /// Longest text, in characters, that can be typed into a cell: the width of the column in the file. 0 where cells
    /// are not edited: the code changes by commands alone, the two long texts in boxes of their own.
    int longestText;
};

namespace BillColumns {

inline constexpr BillColumn id{"id", "ID", u"id", 900, false, false, 0};
inline constexpr BillColumn prefix{"CodePreFix", "CodePreFix", u"前缀", 960, true, true, 8};
inline constexpr BillColumn code{"Code", "Code", u"编号", 1590, false, true, 0};
inline constexpr BillColumn name{"Name", "Name", u"清单名称", 4995, false, true, 50};
inline constexpr BillColumn unit{"Unit", "Unit", u"单位", 1155, true, true, 12};
inline constexpr BillColumn cont{"Cont", "Cont", u"工作内容", 2475, false, false, 0};
inline constexpr BillColumn rule{"RULE", "Rule", u"计算规则", 2985, false, false, 0};

inline constexpr std::array all{id, prefix, code, name, unit, cont, rule};

}  // namespace BillColumns
