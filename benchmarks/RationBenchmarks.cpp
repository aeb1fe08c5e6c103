#include <QCoreApplication>

#include "app/controls/KeyedTree.h"
#include "benchmarks/Comparison.h"
#include "benchmarks/PlainDatabase.h"
#include "benchmarks/Subjects.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/contents/RationLookup.h"
#include "ration_browser/frmDekBrowser.h"

using namespace Qt::StringLiterals;

namespace {

const QString lastRation = u"a500-40"_s;

void lookRationUp(benchmark::State& state) {
    const QString library = QString::fromLatin1(largeRationLibrary);
    bool found = true;
    const auto ours = [&] {
        return milliseconds([&] {
            QString name, unit;
            found = GetDeData(lastRation, GetDekFilePath(library), name, unit) && found;
        });
    };
    const QString path = GetDekFilePath(library);
    const auto plain = [&] {
        return milliseconds([&] {
            PlainDatabase file(path);
            PlainStatement query = file.prepare("SELECT * FROM DEB WHERE DEH=? COLLATE NOCASE");
            query.bindAll(lastRation);
            query.readAll();
        });
    };
    ours();
    compare(state, ours, plain, Limit::ms(5));
    if (!found)
        state.SkipWithError("not found");
}

constexpr char chaptersOfLibrary[] = "SELECT * FROM DeSYB WHERE isdel=0 ORDER BY CH,ZH,JH,XH,MH";

/// With the large library chosen, until it is painted; the key of the system database is known already.
void openBrowser(benchmark::State& state) {
    const QString large = QLatin1String(largeRationLibrary);
    const QString path = GetDekFilePath(large);
    compare(
        state,
        [&] {
            std::unique_ptr<frmDekBrowser> browser;
            return milliseconds([&] {
                browser = std::make_unique<frmDekBrowser>(nullptr);
                browser->setDekID(large);
                browser->show();
                QCoreApplication::processEvents();
            });
        },
        [&] {
            return milliseconds([&] {
                PlainDatabase file(path);
                file.prepare(chaptersOfLibrary).readAll();
            });
        },
        Limit::ms(noticeable));
}

/// From the small library, which is shown, to the large one, until its tree is painted.
void chooseLibrary(benchmark::State& state) {
    frmDekBrowser browser(nullptr);
    browser.show();
    const QString large = QLatin1String(largeRationLibrary);
    const auto choose = [&] {
        browser.setDekID(QLatin1String(smallRationLibrary));
        QCoreApplication::processEvents();
        return milliseconds([&] {
            browser.setDekID(large);
            QCoreApplication::processEvents();
        });
    };
    const QString path = GetDekFilePath(large);
    const auto plain = [&] {
        return milliseconds([&] {
            PlainDatabase file(path);
            file.prepare(chaptersOfLibrary).readAll();
        });
    };
    compare(state, choose, plain, Limit::ms(noticeable));
    constexpr int chaptersAndRoot = 501;
    if (browser.tvRationContent()->nodeCount() != chaptersAndRoot)
        state.SkipWithError("the tree is not whole");
}

}  // namespace

void registerRations() {
    forOneSize("Look a typed ration up, not the first", lookRationUp);
    forOneSize("Open the ration browser", openBrowser);
    forOneSize("Choose a library of 20,000 rations", chooseLibrary);
}
