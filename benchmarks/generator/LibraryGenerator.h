#pragma once

#include <QString>

/// Bill libraries and ration libraries of any size for measurements and long tests. The same shape always gives the
/// same content; kind and length of the texts are those of real libraries. Every function throws Error when it cannot
/// write.

struct LibraryShape {
    int bills = 6000;
    int chapters = 2000;  ///< on three levels; hundreds
    int contentsPerBill = 8;
    int featuresPerBill = 2;
    int valuesPerFeature = 3;
};

/// The shape of a library of `bills` bills as it grows: 8 contents a bill, 3 rows of second-level contents and rations
/// a content.
LibraryShape shapeOf(int bills);

/// The first chapter that has bills: 999 of them, or half of all when that is less.
inline constexpr char fullChapter[] = "010101";
int billsInFullChapter(const LibraryShape& shape);

/// Writes a bill library to `path`, where no file may be. The contents of every bill belong to the first profession,
/// and a bill's rows follow one another in each table.
void generateLibrary(const QString& path, const LibraryShape& shape);

struct RationShape {
    int rations = 20000;
    int chapters = 500;  ///< on five levels; fifties
};

/// Writes a ration library to `path`, where no file may be. The codes of chapter n (from 1) are "An-1", "An-2", ….
void generateRationLibrary(const QString& path, const RationShape& shape);

inline constexpr char smallRationLibrary[] = "901";
inline constexpr char largeRationLibrary[] = "902";

/// Makes `folder` a program folder: tessel.dat lists two ration libraries under 广东省, one with 20 rations and one of
/// the shape `large`, whose files are in the folder Data.
void generateProgramFolder(const QString& folder, const RationShape& large);
