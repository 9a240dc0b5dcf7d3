#pragma once

#include <QString>

namespace tvx::htmled {

/// The name that a folder for pages without a file begins with, as QTemporaryDir takes it: the user's alone,
/// with this process's number in it.
QString drafts_template();

/// Removes the folders of processes that are gone: killed, or fallen with their machine. Those of the last
/// day stay, for a process may live where this one can't see it.
void sweep_drafts();

}  // namespace tvx::htmled
