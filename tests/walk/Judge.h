#pragma once

#include "tests/support/Rations.h"
#include "tests/walk/LibraryModel.h"
#include "tests/walk/Prescribed.h"
#include "tests/walk/RandomUser.h"

/// Says after every step of a user what must hold, and fails the test when it does not: the file holds what an
/// independent model of the library says, the window shows what a fresh load of the file shows, commands are enabled
/// that have something to do, and only the expected messages came.
class Judge {
public:
    Judge(EditorDriver& driver, RandomUser& user);

    /// Takes all steps back, to the byte, and does them all again.
    void goBackAndForth();

private:
    /// Hears from the library that is open now of what is loaded anew, done and taken back.
    void follow();
    void see(const Deed& deed);
    void look(const Deed& deed);
    void endOfStep(const QStringList& messages, bool disturbed);
    /// Whether what was asked to be written is: it is not when it breaks its statement, which is told, or when an error
    /// was recorded.
    bool isWritten(const Deed& deed, bool broken, const char* place = "ModDBOperator.ExecuteDDL");
    void command(const Deed& deed);

    // JudgeOfWindow.cpp
    void checkWindow();
    QMap<int, bool> enabled(const Snapshot& shown) const;
    void load(const Snapshot& shown);
    void compareBills(const Snapshot& shown, const Snapshot& fresh);
    void compareDetails(const Snapshot& shown, Snapshot expected);

    // JudgeOfChapters.cpp
    /// The row of the next or, with -1 as `step`, the previous chapter below the same parent, or -1.
    static qsizetype sibling(const Rows& tree, qsizetype row, int step);
    void checkNodes(const Snapshot& shown);
    void chapterCommand(const Deed& deed);
    QString nameOfChapter(const Deed& deed, const QString& title, const QString& old);
    void addChapter(const Deed& deed);

    // JudgeOfCommands.cpp
    void billCommand(const Deed& deed);
    void recode(const QString& bill, const QString& code);
    void shiftBills(const Snapshot& shown, int first, bool forward);
    void keepOrder(const Snapshot& shown, const QString& code = {});
    void featureCommand(const Deed& deed);
    void contentCommand(const Deed& deed);
    void deleteRation(const Snapshot& shown);
    /// Ids of the rows of the second-level content that a row of the grid belongs to.
    QStringList rowsOfSubContent(const QStringList& line);

    // JudgeOfEdits.cpp
    void edit(const Deed& deed);
    void write(const Deed& deed, const QString& column, const QString& id, const QString& text);
    bool editContent(const Deed& deed, const QString& typed);
    void writeValues(const Deed& deed, const Rows& values);
    enum class Setting { Refused, NotWritten, Written };
    Setting setRation(const Deed& deed, const Rows& rows, int row, const QString& code, const QString& library);
    void rationFromBrowser(const Deed& deed);

    EditorDriver& m_driver;
    const Rations m_rations;
    LibraryModel m_library;
    QList<QStringList> m_states;  ///< what the file held after each step
    qsizetype m_state = 0;        ///< the present one
    Prescribed m_prescribed;
    /// A fresh load of the same file, of which most of the time only the panes are loaded anew.
    std::unique_ptr<frmEditor> m_fresh;
    int m_checks = 0;
    Snapshot m_last;  ///< what the window showed at the end of the last step
    QString m_query;
    QString m_said;  ///< by the history, last
    QStringList m_expected;

    enum class Nodes { Any, Open, Closed, AsLoaded };
    /// Where the last deed of the step must have led.
    struct {
        QMap<QString, int> rows = {};  ///< the current row by the name of a grid or the tree
        Nodes nodes = Nodes::Any;
        bool blankRation = false;
    } m_led;
};
