#pragma once

#include <QString>
#include <functional>

namespace tvx::bench {

class EditedPage;

/// Does one step at a time as lines of the standard input name them, and answers each with "done", the time
/// on the clock and the processor time of this program's own loop, in milliseconds. For trace.py, which
/// has the engine note what it does meanwhile.
///
///   editor open NAME    plain open NAME
///   editor pace N       plain pace N       N letters, 100 ms between them
///   editor pixel N      plain pixel N      the same, each until it is seen
///   editor caret N      plain caret N      the caret N letters on
///
/// `file_of` makes the file of a document that has a name.
int do_steps(EditedPage& own, EditedPage& plain, const std::function<QString(const QString&)>& file_of);

}  // namespace tvx::bench
