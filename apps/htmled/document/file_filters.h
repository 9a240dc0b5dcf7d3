#pragma once

#include <QString>

namespace tvx::htmled {

/// The kinds of files that the program's file dialogs offer.
QString file_filters();

}  // namespace tvx::htmled
