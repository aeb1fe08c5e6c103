#pragma once

#include "tests/support/Snapshot.h"

/// One thing that a user did, for whoever judges what came of it.
struct Deed {
    enum class Kind {
        Look,      ///< nothing that changes the library: a click, a key
        Command,   ///< a command of the editor
        Edit,      ///< a cell or a box was typed into, and left
        Choice,    ///< an entry of a cell's drop-down list was chosen
        Tick,      ///< a check box was clicked
        Ration,    ///< a ration was taken from the browser
        Refused,   ///< the bills were to be listed while the file was locked
        Reopened,  ///< the library was closed and opened again
        Undone,    ///< the last step was to be taken back
        Redone,    ///< the step taken back last was to be done once more
    };
    Kind kind = Kind::Look;
    int command = 0;    ///< its host * 1000 + its id
    QString place;      ///< objectName of the grid, tree or box
    int row = -1;       ///< the row that was clicked or edited; of the tree too
    QString key;        ///< of the column
    QString text;       ///< that was typed, chosen or searched for
    QString dekID;      ///< library of the ration
    bool given = true;  ///< ended as an edit, not given up

    /// What the user answered to a question and to a dialog that asks for a name.
    bool yes = false;
    enum class Answer { Entered, Cancelled, BoxClosed } answer = Answer::Cancelled;
    QString name;
    QString preset;  ///< the name that the dialog offered

    Snapshot before;          ///< what the window showed
    bool failed = false;      ///< an error was recorded meanwhile
    bool possible = true;     ///< the cell could be edited, the button pressed
    bool closed = false;      ///< the window was closed while the cell was being edited
    bool stayedOpen = false;  ///< the cell was still being edited, the box still typed into, after that was to be over

    /// Whether its failure may leave a part of it done.
    bool mayBeHalfDone() const {
        return kind == Kind::Command &&
               (command == 1103 || command == 2400 || command == 2401 || (command == 2403 && key == u"2"));
    }
    QString story() const;
};
