#pragma once

#include <QString>

/// Everything in which systems differ. Each has one source file here; no other file asks which system it runs on.
namespace platform {

/// The command line behind the program's own name, as one text.
/// Windows: as it was written, quotes and every blank included; only the blank behind the program's name is left out.
/// Elsewhere: the system has taken it apart; its pieces, joined by one blank each.
[[nodiscard]] QString commandLine();

/// The machine's name. Windows: GetComputerNameA. Elsewhere: the host name.
[[nodiscard]] QString computerName();

/// Makes this process the running copy of the program in `folder`, which may be written in any letter case, until it
/// ends, however it ends. False when another process is that copy.
/// Windows: a named mutex of the session. Elsewhere: a lock file of the user's on this machine.
[[nodiscard]] bool becomeRunningCopy(const QString& folder);

/// Why the system can keep no database at `path`, in words for the user; empty when nothing is known to be against it.
/// Windows: names of devices, names that end with a dot or a blank, paths that are too long. Elsewhere: nothing.
[[nodiscard]] QString objectionTo(const QString& path);

/// Whether the user chooses files in the system's own dialog.
/// Windows: yes, it is the one that users know, in their language. Elsewhere: no, the toolkit's speaks Chinese on every
/// machine.
[[nodiscard]] bool hasFileDialog();

}  // namespace platform
