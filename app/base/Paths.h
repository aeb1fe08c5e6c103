#pragma once

#include <QString>

/// The one place where paths are put together.

/// The folder of the running executable, or the one that the environment variable TESSEL_HOME names (tests and
/// portable set-ups use it); no trailing separator.
QString programFolder();

/// `folder` with exactly one closing separator, as the platform writes it.
[[nodiscard]] QString withSeparator(const QString& folder);

/// `folder`, a separator and `name`, as the platform writes it.
[[nodiscard]] QString joinPath(const QString& folder, const QString& name);
