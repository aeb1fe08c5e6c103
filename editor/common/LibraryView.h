#pragma once

#include <QString>

#include "editor/common/Codes.h"
#include "editor/common/Listing.h"

/// A cell of a grid that can be found again when its rows have been read anew: by what tells its row, else by number.
struct CellPlace {
    QString row;
    int number = -1;
    QString column;
};

/// A row for a ration that is in the window alone until it gets a code; without content there is none.
struct BlankRation {
    QString contID;
    QString subNum;
    QString dekName;
};

/// Where the user is in a library: what its window shows, and what is current in each of its panes.
struct ViewPlace {
    QString chapter;
    Listing listing;
    /// The bill whose details are shown; id 0 for none.
    Bill bill;
    CellPlace billCell;
    /// Number of the tab with the bill's details, and of the profession whose contents are shown.
    int tab = 0;
    int profession = 0;
    CellPlace content;
    BlankRation blankRation;
    CellPlace feature;
    CellPlace value;
    /// The control that has the focus, by name; empty when it is none of the window's.
    QString focus;
};

/// The window of a library, as those need it who do not know its panes.
class LibraryView {
public:
    virtual ~LibraryView() = default;

    /// Ends what is still being typed as edits. False when one was refused and stays open.
    virtual bool commitPending() = 0;
    virtual ViewPlace place() const = 0;
    /// Reads everything that is shown from the library again, and makes current and visible what `place` tells, or what
    /// comes nearest. Typing that is still open stays open where its row is still there.
    virtual void showAfresh(const ViewPlace& place) = 0;
};
