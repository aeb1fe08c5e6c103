#include <gtest/gtest.h>

#include <random>

#include "editor/bills/BillData.h"
#include "tests/bills/BillLibrary.h"

using namespace Qt::StringLiterals;

namespace {

struct Bill {
    qint64 id;
    QString parameterCode;  ///< as it was when the bill was made or last moved; none of a bill that was added
};

QString code(std::size_t place) { return u"010101%1"_s.arg(int(place) + 1, 3, 10, QChar(u'0')); }

/// The codes of the bills from `from` on, once they stand `by` places further down.
std::vector<BillCode> shifted(const std::vector<Bill>& bills, std::size_t from, int by) {
    std::vector<BillCode> codes;
    for (std::size_t i = from; i < bills.size(); ++i)
        codes.push_back({bills[i].id, code(i + by)});
    return codes;
}

}  // namespace

// A bill's code is its place, and so is that of its work contents; parameters follow moves only.
TEST(BillCodes, FollowTheirPlacesThroughAnySequenceOfCommands) {
    const BillLibrary library;
    std::vector<Bill> bills;
    for (std::size_t i = 0; i < 6; ++i) {
        bills.push_back({qint64(i) + 1, code(i)});
        library.addBillWithDetails(bills[i].id, code(i));
    }
    library.addBillWithDetails(99, u"010102001"_s);
    std::mt19937 random(20240501);
    const auto below = [&](std::size_t n) { return random() % n; };
    for (int step = 0; step < 200; ++step) {
        SCOPED_TRACE(step);
        const auto command = below(4);
        if (command == 0 || bills.size() < 2) {
            const std::size_t at = below(bills.size() + 1);
            const auto id = addBill(library.connection(), code(at), shifted(bills, at, 1));
            ASSERT_TRUE(id);
            bills.insert(bills.begin() + qint64(at), {*id, {}});
        } else if (command == 1) {
            const std::size_t at = below(bills.size());
            ASSERT_TRUE(deleteBill(library.connection(), bills[at].id, shifted(bills, at + 1, -1)));
            bills.erase(bills.begin() + qint64(at));
        } else {
            const std::size_t at = below(bills.size() - 1);
            Bill &upper = bills[at], &lower = bills[at + 1];
            const BillCode a = {upper.id, code(at)}, b = {lower.id, code(at + 1)};
            const bool down = command == 2;
            ASSERT_TRUE(moveBill(library.connection(), down ? a : b, down ? b : a, code(bills.size())));
            std::swap(upper, lower);
            for (const std::size_t moved : {at, at + 1})
                if (!bills[moved].parameterCode.isEmpty())
                    bills[moved].parameterCode = code(moved);
        }
        QStringList expected;
        for (std::size_t i = 0; i < bills.size(); ++i)
            expected << u"%1|%2|"_s.arg(bills[i].id).arg(code(i)) +
                            (bills[i].parameterCode.isEmpty()
                                 ? u"NULL|NULL"_s
                                 : code(i) + u" old|"_s + bills[i].parameterCode + u" old"_s);
        expected << u"99|010102001|010102001 old|010102001 old"_s;
        // What is only renumbered keeps its time stamp.
        ASSERT_EQ(library.rowsInFile("SELECT ID,Code,(SELECT group_concat(DISTINCT Code||' '||LastUpdate) FROM tblCont "
                                     "WHERE BillID=b.ID),(SELECT group_concat(DISTINCT Code||' '||LastUpdate) FROM "
                                     "tblParm WHERE BillID=b.ID) FROM tblBill b ORDER BY Code"),
                  expected);
    }
    EXPECT_EQ(library.rowsInFile("SELECT count(*) FROM tblBill WHERE (Name IS NULL)=(LastUpdate='old')"),
              QStringList{u"0"_s});
}
