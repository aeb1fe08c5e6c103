#pragma once

#include <QString>

/// Opens the bill library at `path`, shows and walks what is in it in the panes of an editor window, and runs a command
/// of each kind. Errors are recorded as ever.
void walkLibrary(const QString& path);

/// Looks a ration up in the ration library at `path` and loads the browser's tree and list from it.
void walkRations(const QString& path, const QString& code);
