#pragma once

#include "tests/support/Rations.h"
#include "tests/walk/Comparison.h"
#include "tests/walk/LibraryModel.h"
#include "tests/walk/RandomUser.h"

/// Says after every step of a user what must hold, and fails the test when it does not: the file holds what an
/// independent model of the library says, the window shows what a fresh load of the file shows, commands are enabled
/// that have something to do, and only the expected messages came.
class Judge {
public:
    Judge(EditorDriver& driver, RandomUser& user);

private:
    void see(const Deed& deed);
    void endOfStep(const QStringList& messages, bool disturbed);
    void checkWindow();
    bool isEnabled(const Snapshot& shown, int host, int id) const;
    /// Whether what was asked to be written is: it is not when it breaks its statement, which is told, or when an error
    /// was recorded.
    bool isWritten(const Deed& deed, bool broken, const char* place);

    // Judge.cpp
    void command(const Deed& deed);
    void chapterCommand(const Deed& deed);
    void placeNewChapter(const Deed& deed, const QString& code, const QString& name, const QString& parent,
                         qsizetype at, int depth);
    void billCommand(const Deed& deed);
    void shiftBills(const Snapshot& shown, int first, bool forward);
    void keepOrder(const Snapshot& shown);
    void featureCommand(const Deed& deed);

    // JudgeOfEdits.cpp
    void contentCommand(const Deed& deed);
    void deleteRation(const Snapshot& shown);
    void edit(const Deed& deed);
    bool editContent(const Deed& deed, const QString& typed);
    void writeValues(const Deed& deed, Rows values);
    enum class Setting { Refused, NotWritten, Written };
    Setting setRation(const Deed& deed, const Rows& rows, int row, const QString& code, const QString& library);
    void rationFromBrowser(const Deed& deed);
    LibraryModel::Ids rowsOfSubContent(const QString& contID, const QString& subNum) const;

    EditorDriver& m_driver;
    const Rations m_rations;
    LibraryModel m_library;
    Prescribed m_prescribed;
    Comparison m_comparison;
    QString m_query;
    QStringList m_expected;
    /// Where the last deed must have led: the current row by the name of a grid or the tree.
    QMap<QString, int> m_rows;
    enum class Nodes { Any, Open, Closed, AsLoaded } m_nodes = Nodes::AsLoaded;
    bool m_blankRation = false;
};
