#include <gtest/gtest.h>

#include <map>
#include <random>

#include "editor/bills/BillData.h"
#include "tests/bills/BillLibrary.h"

namespace {

/// What the codes of two chapters' bills must be: a bill's code is its place, and so is that of its work contents;
/// parameters have the code that their bill had when it was last moved (or made).
class CodeModel {
public:
    struct Bill {
        qint64 id;
        QString parameterCode;
        bool withDetails;
    };

    explicit CodeModel(const BillLibrary& library) : m_library(library) {}

    std::vector<Bill>& bills(int chapter) { return m_bills[chapter]; }

    QString code(int chapter, std::size_t place) const {
        return QStringLiteral("01010%1%2").arg(chapter).arg(int(place) + 1, 3, 10, QLatin1Char('0'));
    }

    void create(int chapter) {
        std::vector<Bill>& list = bills(chapter);
        const qint64 id = chapter * 100 + qint64(list.size());
        m_library.addBillWithDetails(id, code(chapter, list.size()));
        list.push_back({id, code(chapter, list.size()), true});
    }

    /// The new codes of all bills from `from` on, once they stand `by` places further down.
    std::vector<BillCode> shifted(int chapter, std::size_t from, int by) {
        std::vector<BillCode> codes;
        for (std::size_t i = from; i < bills(chapter).size(); ++i)
            codes.push_back({bills(chapter)[i].id, code(chapter, i + by)});
        return codes;
    }

    void check() {
        QStringList bills, contents, parameters;
        for (auto& [chapter, list] : m_bills) {
            for (std::size_t i = 0; i < list.size(); ++i) {
                const QString row = QStringLiteral("%1|%2").arg(list[i].id);
                bills << row.arg(code(chapter, i));
                if (list[i].withDetails) {
                    contents << row.arg(code(chapter, i)) + QStringLiteral("|2|old");
                    parameters << row.arg(list[i].parameterCode) + QStringLiteral("|2|old");
                }
            }
        }
        const auto compare = [&](QStringList expected, const SqlText& query) {
            expected.sort();
            QStringList found = m_library.rowsInFile(query);
            found.sort();
            ASSERT_EQ(found, expected);
        };
        compare(bills, "SELECT ID,Code FROM tblBill");
        compare(contents, "SELECT BillID,Code,count(*),LastUpdate FROM tblCont GROUP BY BillID,Code,LastUpdate");
        compare(parameters, "SELECT BillID,Code,count(*),LastUpdate FROM tblParm GROUP BY BillID,Code,LastUpdate");
    }

private:
    const BillLibrary& m_library;
    std::map<int, std::vector<Bill>> m_bills;
};

}  // namespace

TEST(BillCodes, FollowTheirPlacesThroughAnySequenceOfCommands) {
    const BillLibrary library;
    CodeModel model(library);
    for (int i = 0; i < 9; ++i)
        model.create(1 + i % 2);
    std::mt19937 random(20240501);
    const auto below = [&](std::size_t n) { return random() % n; };
    for (int step = 0; step < 200 && !testing::Test::HasFatalFailure(); ++step) {
        SCOPED_TRACE(step);
        const int chapter = 1 + int(below(2));
        auto& list = model.bills(chapter);
        const std::size_t size = list.size();
        const auto command = below(4);
        if (command == 0 || size < 2) {
            const std::size_t at = size == 0 ? 0 : below(size) + 1;
            const auto id = addBill(library.connection(), model.code(chapter, at), model.shifted(chapter, at, 1));
            ASSERT_TRUE(id);
            list.insert(list.begin() + qint64(at), {*id, {}, false});
        } else if (command == 1) {
            const std::size_t at = below(size);
            ASSERT_TRUE(deleteBill(library.connection(), list[at].id, model.shifted(chapter, at + 1, -1)));
            list.erase(list.begin() + qint64(at));
        } else {
            const std::size_t upper = below(size - 1);
            const QString first = model.code(chapter, upper);
            const QString second = model.code(chapter, upper + 1);
            const BillCode a = {list[upper].id, first};
            const BillCode b = {list[upper + 1].id, second};
            const bool down = command == 2;
            ASSERT_TRUE(moveBill(library.connection(), down ? a : b, down ? b : a, model.code(chapter, size)));
            std::swap(list[upper], list[upper + 1]);
            list[upper].parameterCode = first;
            list[upper + 1].parameterCode = second;
        }
        model.check();
    }
    // The new bills are stamped, the shifted ones are not.
    EXPECT_EQ(library.rowsInFile("SELECT count(*) FROM tblBill WHERE (Name IS NULL)=(LastUpdate='old')"),
              QStringList{QStringLiteral("0")});
}
