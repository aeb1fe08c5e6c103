#pragma once

#include <QString>

/// The program folder that this test program runs in: a fresh temporary one, removed when the program ends.
/// appPath and dataPath point there; it holds no tessel.dat unless a test puts one there.
QString testProgramFolder();
