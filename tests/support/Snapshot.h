#pragma once

#include "tests/support/OtherProgram.h"

class KeyedGrid;
class KeyedTree;
class frmEditor;

/// One text a row, for comparing and for reading when they differ.
std::string textOf(const Rows& rows);

/// What an editor window shows. A row of -1 means that none is current.
struct Snapshot {
    Rows tree;         ///< depth, text, tag
    QList<bool> open;  ///< of each node with nodes below it whether those are shown
    int node = -1;
    QString chapter;  ///< code of the selected node
    bool listsQuery = false;
    Rows bills;     ///< id, CodePreFix, Code, Name, Unit, Cont, RULE
    Rows features;  ///< id, Name, type, unit, defval
    Rows values;    ///< ID, isUse, eigenValue
    Rows contents;  ///< level, cont, Unit, dekName, contID, contDeID, contNum, subNum, contType
    int bill = -1, feature = -1, value = -1, contentRow = -1;
    QString profession;  ///< two digits
    QString rule;
    QString content;
    bool boxesLocked = false;

    /// Cell of the current row; empty when there is none.
    QString ofBill(int cell) const { return bill < 0 ? QString() : bills[bill][cell]; }
    QString ofFeature(int cell) const { return feature < 0 ? QString() : features[feature][cell]; }
    QString ofContent(int cell) const { return contentRow < 0 ? QString() : contents[contentRow][cell]; }
    bool listsBills() const { return listsQuery || chapter.size() == 6; }
};

namespace BillCell {
enum : int { Id, Prefix, Code, Name, Unit, Cont, Rule };
}
namespace FeatureCell {
enum : int { Id, Name, Type, Unit, DefVal };
}
namespace ContentCell {
enum : int { Level, Cont, Unit, DekName, ContID, ContDeID, ContNum, SubNum, Type };
}

Snapshot snapshotOf(const frmEditor& editor);
/// All its rows and texts, but not what is current.
std::string textOf(const Snapshot& shown);
Rows rowsOf(const KeyedGrid* grid);
Rows rowsOf(const KeyedTree* tree);
