#pragma once

#include <QString>

/// Finding a ration (定额) in a ration library by its code. Every look-up opens the files it needs and closes them
/// again; nothing is ever written to them.

/// The file of the ration library `dekId`, by the editor's rule: Data folder, region, file name, as the system database
/// lists them. Empty when the library is not listed, or after a recorded error.
QString GetDekFilePath(const QString& dekId);

/// Looks the ration `deh` (letter case ignored) up in the library file at `path`, which must exist. When there is one,
/// fills `name` and `unit` and gives True; False otherwise or after a recorded error, with both untouched.
bool GetDeData(const QString& deh, const QString& path, QString& name, QString& unit);
