#pragma once

#include <string>

#include "tests/support/OtherProgram.h"

class KeyedGrid;
class KeyedTree;
class frmEditor;

/// One text a row, for comparing and for reading when they differ.
std::string textOf(const Rows& rows);

/// What an editor window shows.
struct Snapshot {
    Rows tree;      ///< depth, text, tag
    Rows bills;     ///< id, CodePreFix, Code, Name, Unit, Cont, RULE
    Rows features;  ///< id, Name, type, unit, defval
    Rows values;    ///< ID, isUse, eigenValue
    Rows contents;  ///< level, cont, Unit, dekName, contID, contDeID, contNum, subNum, contType
    QString rule;
    QString content;
    bool boxesLocked = false;
};

namespace BillCell {
enum : int { Id, Prefix, Code, Name, Unit, Cont, Rule };
}
namespace ContentCell {
enum : int { Level, Cont, Unit, DekName, ContID, ContDeID, ContNum, SubNum, Type };
}

Snapshot snapshotOf(const frmEditor& editor);
Rows rowsOf(const KeyedGrid* grid);
Rows rowsOf(const KeyedTree* tree);
