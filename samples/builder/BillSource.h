#pragma once

#include <QString>
#include <QStringList>
#include <vector>

struct Ration;
struct RationLibrary;
class Complaints;

struct Chapter {
    QString code;
    QString name;
    QString note;
};

/// A feature of a bill. The value in use, when there is one, is also the feature's default.
struct Feature {
    QString name;
    int type = 0;  ///< 0 none, 1 numeric, 2 enumeration, 3 calculated
    QString unit;
    QStringList values;
    int used = -1;  ///< index of the value in use, -1 for none
};

/// A ration attached to a second-level content; without a ration, the row that stands for the content's text alone.
struct AttachedRation {
    const RationLibrary* library = nullptr;
    const Ration* ration = nullptr;
};

struct SubContent {
    QString text;
    std::vector<AttachedRation> rations;  ///< its rows in the library file, never empty
};

struct Content {
    QString text;
    QString professions;  ///< two digits each, "0104"
    std::vector<SubContent> parts;
};

struct Bill {
    QString code;
    QString prefix;
    QString name;
    QString unit;
    QStringList rules;
    std::vector<Feature> features;
    std::vector<Content> contents;
};

/// What a bill library is made of.
struct BillLibrary {
    QString fileName;
    std::vector<Chapter> chapters;
    std::vector<Bill> bills;
    std::vector<Chapter> explanations;  ///< code and note; the companion file
};

/// Reads "chapters.txt", "companion.txt" and everything in "bills" of the source folder. Rations are looked up in
/// `libraries`, which must outlive the result; the library's file name is the one that the default library names.
BillLibrary readBillLibrary(const QString& sourceFolder, const std::vector<RationLibrary>& libraries,
                            Complaints& complaints);
