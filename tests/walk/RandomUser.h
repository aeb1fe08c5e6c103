#pragma once

#include <random>

#include "tests/walk/CodeModel.h"
#include "tests/walk/Comparison.h"
#include "tests/support/Disturbance.h"
#include "tests/support/EditorDriver.h"
#include "tests/walk/Prescribed.h"
#include "tests/support/Rations.h"

class ModalAnswers;

/// Does at random what an estimator does in an editor window, one action a step. The messages are what they have to be,
/// or the test fails; if every step is checked, the codes in the file and everything the window shows, too.
class RandomUser {
public:
    enum class Check { Nothing, EveryStep };

    /// Whether steps are checked makes no difference to what is done.
    RandomUser(EditorDriver& driver, unsigned seed, Check check = Check::EveryStep);

    void step();

    /// What was done last, for the report of a failure.
    QString story() const;

private:
    enum class Room { Chapters, Bills, Features, Contents };
    struct Choice {
        Room room;
        int weight;
        void (RandomUser::*act)();
    };
    static const std::vector<Choice>& choices();
    const Choice& choose();

    // RandomUser.cpp
    int upTo(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    bool chance(int percent) { return upTo(100) < percent; }
    template <typename T>
    T oneOf(std::initializer_list<T> things) {
        return *(things.begin() + upTo(static_cast<int>(things.size())));
    }
    QString anyText();
    void say(const QString& what);
    std::unique_ptr<Disturbance> disturb();
    void expectMessages();
    /// Whether an error has been recorded since the step began.
    bool failed() const;
    void expectError(const char* place) { m_expected << u'@' + QLatin1String(place); }
    /// The command may have done a part of its work: its failures are not undone. The library is opened anew.
    void expectHalfDone();
    void reopen();
    void relist();
    bool inFile(const SqlText& query) const;
    /// The chapters at which a fresh tree stops.
    inline static const SqlText overflowedChapters = "SELECT ID FROM tblSYB WHERE length(Code)%2=1 OR length(Code)>6";
    /// Runs a command, enabled ones also with the mouse.
    void run(int host, int id);
    void walk(QWidget* view, std::initializer_list<QKeyCombination> keys);

    // ChapterActions.cpp
    void clickChapter();
    void walkTree();
    void addChapter();
    void addSubChapter();
    void renameChapter();
    void deleteChapter();
    void moveChapter();
    void openOrCloseNodes();
    QString answerNameDialog(const QString& caption, const QString& preset);
    void placeNewChapter(const QString& code, const QString& name, const QString& parent, int at, int depth);
    qsizetype selectedTreeRow() const;

    // BillActions.cpp
    void clickBill();
    void walkBills();
    void editBill();
    void addBill();
    void deleteBill();
    void moveBill();
    void query();
    void listWhileLocked();
    void clickAwayFromAnEdit();

    void shiftBills(int first, bool forward);
    bool leavesChapter(const QString& code) const;

    // BoxActions.cpp
    void typeIntoBox();

    // FeatureActions.cpp
    void clickFeature();
    void editFeature();
    void chooseType();
    void addFeature();
    void deleteFeature();
    void tickValue();
    void editValue();
    void addValue();
    void deleteValue();
    void expectValuesWritten();

    // ContentActions.cpp
    void walkContents();
    void addContent();
    void addSubContent();
    void addRation();
    void deleteContentRow();
    void renameContent();
    void typeCode();
    void chooseLibrary();
    void changeProfession();
    int contentLevel() const;
    QList<int> visibleContentRows(int level) const;
    bool goToRation();
    QStringList contentLine() const;
    bool cannotBeWritten(const QStringList& line, const QString& code, const QString& library) const;
    void leaveRefusedEdit();
    void rationWritten(const QString& contDeID);

    // BrowserActions.cpp
    void useBrowser();
    void chooseInBrowser(class frmDekBrowser* browser);

    std::mt19937 m_random;
    Rations m_rations;
    EditorDriver& m_driver;
    Check m_check;
    Prescribed m_prescribed;
    Comparison m_comparison;
    CodeModel m_codes;
    QString m_query;

    /// Where the user is at work; most of what is done belongs there.
    Room m_room = Room::Chapters;
    ModalAnswers* m_answers = nullptr;
    QStringList m_expected;
    std::optional<Disturbance::Kind> m_disturbed;
    enum class After { Nothing, Relist, Reopen } m_after = After::Nothing;
    int m_names = 0;
    QStringList m_story;
};
