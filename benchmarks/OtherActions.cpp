#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "app/controls/CommandBars.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "benchmarks/Actions.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "benchmarks/start/Starts.h"
#include "editor/contents/RationLookup.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

const QString large = QLatin1String(largeRationLibrary);

/// `ours`, beside statements on the large ration library, opened anew. The key of the system database is known.
std::function<Sides(int)> besideLargeLibrary(const std::function<double()>& ours, const QString& plain) {
    return [=](int) {
        openSystemDatabase();
        return Sides{ours, [plain] { return milliseconds([&] { PlainDatabase(GetDekFilePath(large)).run(plain); }); }};
    };
}

Sides starting(const QStringList& arguments) {
    return {[arguments] { return startEditor(arguments).milliseconds; },
            [] { return startEmptyWindow().milliseconds; }};
}

/// The plain side is reading the file's bytes: whatever opens it cannot do less.
Sides openingSystemDatabase(int) {
    openSystemDatabase();
    return {[] { return milliseconds([] { openSystemDatabase(); }); },
            [] {
                return milliseconds([] {
                    QFile file(appPath + u"tessel.dat"_s);
                    if (file.open(QIODevice::ReadOnly))
                        file.readAll();
                });
            }};
}

double lookUp() {
    QString name, unit;
    bool found = false;
    const double taken = milliseconds([&] { found = GetDeData(u"a500-40"_s, GetDekFilePath(large), name, unit); });
    if (!found)
        throw Error(1, u"the ration is not found"_s);
    return taken;
}

/// Shows the large library in `browser`, until its tree is painted.
void showLarge(frmDekBrowser& browser) {
    browser.setDekID(large);
    browser.show();
    QCoreApplication::processEvents();
}

double openBrowser() {
    std::unique_ptr<frmDekBrowser> browser;
    return milliseconds([&] {
        browser = std::make_unique<frmDekBrowser>(nullptr);
        showLarge(*browser);
    });
}

double chooseLibrary() {
    frmDekBrowser browser(nullptr);
    browser.setDekID(QLatin1String(smallRationLibrary));
    browser.show();
    QCoreApplication::processEvents();
    const double taken = milliseconds([&] { showLarge(browser); });
    if (browser.tvRationContent()->nodeCount() != chaptersOfLargeLibrary + 1)
        throw Error(1, u"the tree is not whole"_s);
    return taken;
}

/// Types a letter into the find box of `browser`, until what it finds is painted.
double typeToFind(frmDekBrowser& browser, QChar letter) {
    return milliseconds([&] {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, letter);
        QCoreApplication::sendEvent(browser.findChild<QLineEdit*>(u"txtFind"_s), &press);
        QCoreApplication::processEvents();
    });
}

/// Finds a name by its initials: the opening of the box with the first letter, or the slowest letter after that.
double findByInitials(bool opening) {
    frmDekBrowser browser(nullptr);
    showLarge(browser);
    const double opened = milliseconds([&] { browser.CommandBars1()->execute(256); }) + typeToFind(browser, u'x');
    double slowest = 0;
    for (const QChar letter : u"jhntjczzaz"_s)
        slowest = std::max(slowest, typeToFind(browser, letter));
    if (!browser.grdDEB()->hasRows())
        throw Error(1, u"nothing is found"_s);
    return opening ? opened : slowest;
}

}  // namespace

std::vector<MeasuredAction> otherActions() {
    const QString names = u"SELECT DEH,MC FROM DEB WHERE MC LIKE '%现浇混凝土基础%'"_s;
    const QString chapters = u"SELECT * FROM DeSYB WHERE isdel=0 ORDER BY CH,ZH,JH,XH,MH"_s;
    return {
        {"Start to first window", LibrarySize::None, 15, {3, 0, 1000}, [](int) { return starting({}); }, true},
        {"Start with a library",
         LibrarySize::Every,
         15,
         {2.5, 0, 1000},
         [](int bills) { return starting({generatedLibrary(bills)}); },
         true},
        {"Open the system database again", LibrarySize::None, 15, {0, 5}, openingSystemDatabase},
        {"Look a typed ration up, not the first",
         LibrarySize::None,
         15,
         {0, 5},
         besideLargeLibrary(lookUp, u"SELECT * FROM DEB WHERE DEH='a500-40' COLLATE NOCASE"_s)},
        {"Open the ration browser", LibrarySize::None, 15, {0, 100}, besideLargeLibrary(openBrowser, chapters), true},
        {"Choose a library of 20,000 rations",
         LibrarySize::None,
         15,
         {0, 100},
         besideLargeLibrary(chooseLibrary, chapters)},
        {"Open the find box over 20,000 rations, first letter",
         LibrarySize::None,
         15,
         {0, 100},
         besideLargeLibrary([] { return findByInitials(true); }, names)},
        {"Type a letter to find among 20,000 rations, the slowest of 10",
         LibrarySize::None,
         15,
         {0, 50, 50},
         besideLargeLibrary([] { return findByInitials(false); }, names)},
    };
}
