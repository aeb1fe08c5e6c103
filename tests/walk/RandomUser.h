#pragma once

#include "tests/support/Disturbance.h"
#include "tests/support/EditorDriver.h"

/// One thing that a user did, for whoever judges what came of it.
struct Deed {
    enum class Kind {
        Look,      ///< nothing that changes the library: a click, a key
        Command,   ///< a command of the editor
        Edit,      ///< a cell or a box was typed into, and left
        Choice,    ///< an entry of a cell's drop-down list was chosen
        Tick,      ///< a check box was clicked
        Ration,    ///< a ration was taken from the browser
        Reopened,  ///< the library was closed and opened again
        Undone,    ///< the last step was to be taken back
        Redone,    ///< the step taken back last was to be done once more
    };
    Kind kind = Kind::Look;
    int command = 0;     ///< its host * 1000 + its id
    QString place = {};  ///< objectName of the grid, tree or box
    int row = -1;        ///< the row that was clicked or edited; of the tree too
    QString key = {};    ///< of the column
    QString text = {};   ///< that was typed, chosen or searched for
    QString dekID = {};  ///< library of the ration
    bool given = true;   ///< ended as an edit, not given up

    /// What the user answered to a question and to a dialog that asks for a name.
    bool yes = false;
    enum class Answer { Entered, Cancelled, BoxClosed } answer = Answer::Cancelled;
    QString name = {};
    QString preset = {};  ///< the name that the dialog offered

    Snapshot before = {};     ///< what the window showed
    bool failed = false;      ///< an error was recorded meanwhile
    bool possible = true;     ///< the cell could be edited, the button pressed
    bool closed = false;      ///< the window was closed while the cell was being edited
    bool stayedOpen = false;  ///< the cell was still being edited, the box still typed into, after that was to be over

    QString story() const;
};

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
    QString story() const { return m_story.last(qMin(m_story.size(), 12)).join(u"\n  "_s); }

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
    void query();
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
    bool m_disturbed = false, m_halfDone = false;
    Deed m_deed;
    qsizetype m_seen = 0;
    int m_names = 0;
    QStringList m_story;
};
