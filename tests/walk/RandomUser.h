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
        bool disturbed = true;   ///< now and then other programs use the library, or the disk refuses a change
        bool reopens = true;     ///< closes the library now and then, and opens it again
        QStringList texts = {};  ///< types these too
    };

    RandomUser(EditorDriver& driver, unsigned seed, Habits habits);

    void step();

    /// Hears of every deed as soon as it is done, and of the end of each step.
    std::function<void(const Deed&)> onDeed;
    std::function<void(const QStringList& messages, bool disturbed)> onStep = [](const QStringList&, bool) {};

    /// What was done last, for the report of a failure.
    QString story() const { return m_story.join(u"\n  "_s); }

private:
    enum class Room { Chapters, Bills, Features, Contents };
    struct Gesture {
        Room room;
        int weight;
        void (RandomUser::*act)();
    };
    static const std::vector<Gesture>& gestures();
    const Gesture& choose();

    int upTo(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(qMax(count, 1))); }
    bool chance(int percent) { return upTo(100) < percent; }
    template <typename List>
    auto oneOf(const List& things) {
        return *(std::begin(things) + upTo(static_cast<int>(std::size(things))));
    }
    template <typename T>
    T oneOf(std::initializer_list<T> things) {
        return *(things.begin() + upTo(static_cast<int>(things.size())));
    }
    QString anyText();
    std::unique_ptr<Disturbance> disturb();
    void answer(QWidget* window);
    Deed& begin(Deed::Kind kind);
    void done();
    void look(QWidget* place, int row, const std::function<void()>& act);
    void command(int host, int id, const QString& searched = {});
    void commandHere(int host, int id);
    void press(QWidget* view, std::initializer_list<QKeyCombination> keys);
    void escape();
    int shownRow(const KeyedGrid* grid, int level = 0);
    KeyedGrid* grid();
    int rationRow();
    QString anyCode();
    QWidget* beginTyping(KeyedGrid* view, int row, const QString& key, const QString& text);
    class QPlainTextEdit* beginTypingIntoBox(const QString& text);
    void type(KeyedGrid* view, int row, const QString& key, const QString& text);
    void chooseIn(KeyedGrid* view, int row, const QString& key);
    void takeRation(class frmDekBrowser& browser, const QString& library);

    // Gestures.cpp
    void clickChapter();
    void pressInTree();
    void chapterCommand();
    void reopen();
    void clickRow();
    void pressInGrid();
    void pressOnly();
    void editCell();
    void billCommand();
    void query();
    void listWhileLocked();
    void typeIntoBox();
    void goOnWhileTyping();
    void chooseType();
    void tickValue();
    void featureCommand();
    void valueCommand();
    void contentCommand();
    void typeCode();
    void chooseLibrary();
    void changeProfession();
    void useBrowser();

    std::mt19937 m_random;
    EditorDriver& m_driver;
    const Habits m_habits;
    /// Where the user is at work; most of what is done belongs there.
    Room m_room = Room::Chapters;
    ModalAnswers* m_answers = nullptr;
    bool m_disturbed = false;
    bool m_halfDone = false;
    Deed m_deed;
    qsizetype m_seen = 0;
    int m_names = 0;
    QStringList m_story;
};
