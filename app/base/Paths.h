#pragma once

#include <QString>

/// The one place where paths are put together.

/// Where the program was put: the folder of the running executable, or the one that the environment variable
/// TESSEL_HOME names (tests and portable set-ups use it); no trailing separator. Holds `Res`.
QString installFolder();

/// `Samples` in it: what every user of an installed copy begins with. Only an installation has that folder.
QString samplesFolder();

/// Where the program reads and writes its files: installFolder(), or, where that has samples for its users, the user's
/// own data folder (makeProgramFolder makes it). TESSEL_HOME is always the program folder itself. No trailing
/// separator.
QString programFolder();

/// `folder` with exactly one closing separator, as the platform writes it.
[[nodiscard]] QString withSeparator(const QString& folder);

/// `folder`, a separator and `name`, as the platform writes it.
[[nodiscard]] QString joinPath(const QString& folder, const QString& name);
