#include "benchmarks/Sides.h"

#include "app/base/Error.h"
#include "benchmarks/Libraries.h"
#include "benchmarks/PlainDatabase.h"

using namespace Qt::StringLiterals;

namespace {

Sides viewingIn(const QString& library, const Gesture& before, const Gesture& act, const QString& plain) {
    return {[window = std::make_shared<EditorWindow>(library), before, act] {
                before(*window);
                window->settle();
                return window->timed([&] { act(*window); });
            },
            [database = std::make_shared<PlainDatabase>(library), plain] {
                return milliseconds([&] { database->run(plain); });
            },
            [database = std::make_shared<PlainDatabase>(indexedLibrary(library)), plain] {
                return milliseconds([&] { database->run(plain); });
            }};
}

}  // namespace

std::function<Sides(int bills)> viewing(const Gesture& before, const Gesture& act, const QString& plain) {
    return [=](int bills) { return viewingIn(generatedLibrary(bills), before, act, plain); };
}

std::function<Sides(int bills)> viewingBareBills(const Gesture& before, const Gesture& act, const QString& plain) {
    return [=](int bills) { return viewingIn(bareLibrary(bills), before, act, plain); };
}

std::function<Sides(int bills)> changing(const MeasuredChange& change) {
    return [change](int bills) {
        const auto prepared = std::make_shared<LibraryCopy>(generatedLibrary(bills));
        PlainDatabase(prepared->path()).run(change.prepare);
        const auto ourCopy = std::make_shared<LibraryCopy>(prepared->path());
        const auto plainCopy = std::make_shared<LibraryCopy>(prepared->path());
        const Side ours = [change, prepared, ourCopy] {
            ourCopy->restore();
            EditorWindow window(ourCopy->path());
            window.listFullChapter();
            if (change.before)
                change.before(window);
            window.settle();
            return window.timed([&] { change.act(window); });
        };
        const auto plainOn = [change](const std::shared_ptr<LibraryCopy>& copy) -> Side {
            return [change, copy] {
                copy->restore();
                PlainDatabase library(copy->path());
                // Both sides have the schema in memory before they start.
                library.run("SELECT count(*) FROM tblSYB");
                return milliseconds([&] { library.run(change.plain + u';' + change.shown); });
            };
        };
        const Side plain = plainOn(plainCopy);
        // The copy of a copy is restored from that one, which the side keeps.
        const auto withIndexes = std::make_shared<LibraryCopy>(prepared->path());
        PlainDatabase(withIndexes->path()).run(fittingIndexes);
        const Side indexed = [withIndexes, side = plainOn(std::make_shared<LibraryCopy>(withIndexes->path()))] {
            return side();
        };
        ours();
        plain();
        const QString found = difference(ourCopy->path(), plainCopy->path());
        if (!found.isEmpty())
            throw Error(1, u"the two sides leave another %1"_s.arg(found));
        return Sides{ours, plain, indexed};
    };
}
