#pragma once

#include <QString>

/// Bill libraries and ration libraries of any size for measurements. The same size always gives the same content; kind
/// and length of the texts are those of real libraries. Every function throws Error when it cannot write.

// What every bill has. Row ids count up with the bills, so bill n has the contents (n-1)*8+1 to n*8.
inline constexpr int contentsPerBill = 8;
inline constexpr int featuresPerBill = 2;
inline constexpr int valuesPerFeature = 3;

/// The first chapter that has bills: 999 of them, or half of all when that is less. They are the first bills.
inline constexpr char fullChapter[] = "010101";

/// Writes a library of `bills` bills to `path`, where no file may be: 200 chapters on three levels, up to 2,000 when it
/// is large, and some 3 rows of second-level contents and rations a content. The contents of every bill belong to the
/// first profession, every other one to the second as well, and a bill's rows follow one another in each table.
void generateLibrary(const QString& path, int bills);

/// The ration libraries of a generated program folder. Codes of chapter n are "An-1", "An-2", ….
inline constexpr char smallRationLibrary[] = "901";  ///< 20 rations
inline constexpr char largeRationLibrary[] = "902";  ///< 500 chapters on five levels
inline constexpr int chaptersOfLargeLibrary = 500;

/// Makes `folder` a program folder: tessel.dat lists the two ration libraries under 广东省, whose files are in the
/// folder Data; the large one has `rations` rations.
void generateProgramFolder(const QString& folder, int rations);
