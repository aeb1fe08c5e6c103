#pragma once

#include <functional>
#include <random>

#include "tests/support/Disturbance.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/ModalAnswers.h"
#include "tests/walk/Deed.h"

/// Does at random what an estimator does in an editor window, one gesture a step, whatever the library holds. It only
/// acts: nothing is expected of the window here, and the same seed does the same whether or not somebody judges it.
class RandomUser {
public:
    struct Habits {
        bool disturbed = true;  ///< now and then other programs use the library, or the disk refuses a change
        bool reopens = true;    ///< closes the library now and then, and opens it again
    };

    RandomUser(EditorDriver& driver, unsigned seed, Habits habits)
        : m_random(seed), m_driver(driver), m_habits(habits) {}

    void step();

    /// Hears of every deed as soon as it is done, and of the end of each step.
    std::function<void(const Deed&)> onDeed;
    std::function<void(const QStringList& messages, bool disturbed)> onStep = [](const QStringList&, bool) {};

    /// What was done last, for the report of a failure.
    QString story() const { return m_story.join(u"\n  "_s); }

private:
    std::unique_ptr<Disturbance> disturb();
    void answer(QWidget* window);
    void begin(Deed::Kind kind, const QString& place = {}, int row = -1, const QString& key = {},
               const QString& text = {});
    void done();

    int upTo(qsizetype count) { return static_cast<int>(m_random() % static_cast<unsigned>(qMax(count, 1))); }
    bool chance(int percent) { return upTo(100) < percent; }
    template <typename List>
    auto oneOf(const List& things) {
        return *(std::begin(things) + upTo(std::ssize(things)));
    }
    template <typename T>
    T oneOf(std::initializer_list<T> things) {
        return *(things.begin() + upTo(std::ssize(things)));
    }

    // Gestures.cpp
    void act();
    KeyedGrid* grid();
    int shownRow(const KeyedGrid* grid, int level = 0);
    int rationRow();
    EditorDriver::Closing closing();
    void look(QWidget* place, int row, const std::function<void()>& act);
    void press(QWidget* view, std::initializer_list<QKeyCombination> keys);
    void command(int id, const QString& searched = {});
    void commandHere();
    void pressInTree();
    void pressInGrid();
    void run(int command, bool byMouse) const;
    void clickChapter();
    void chapterCommand();
    void reopen();
    void goBackOrForth();
    void clickRow();
    void pressOnly();
    void query();
    void listWhileLocked();
    void changeProfession();
    void useBrowser();
    void takeRation(class frmDekBrowser& browser);

    // TypingGestures.cpp
    QString anyText();
    QString anyCode();
    QString anyColumn(const KeyedGrid* view, qsizetype columns = -1);
    void escape();
    QWidget* beginTyping(KeyedGrid* view, int row, qsizetype columns = -1);
    QWidget* beginTypingIntoBox();
    void editCell();
    void typeIntoBox();
    void goOnWhileTyping();
    void chooseEntry();
    void tickValue();

    std::mt19937 m_random;
    EditorDriver& m_driver;
    const Habits m_habits;
    /// Where the user is at work; most of what is done belongs there.
    enum class Room { Chapters, Bills, Features, Contents };
    Room m_room = Room::Chapters;
    ModalAnswers* m_answers = nullptr;
    bool m_disturbed = false;
    bool m_halfDone = false;
    Deed m_deed;
    qsizetype m_seen = 0;
    int m_names = 0;
    QStringList m_story;
};
