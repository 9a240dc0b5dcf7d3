#pragma once

#include <QHash>
#include <QString>

#include "tvx/platform/form.h"

namespace tvx::qt {

/// The captions of a form with a mark before the letter that the keyboard reaches each control by: where a
/// caption has none, one is found for it, each letter once. Captions without Latin, Greek, Cyrillic or Arabic
/// letters get a Latin one in brackets. The default and the cancel button have keys of their own.
QHash<const platform::FormControl*, QString> captions_with_mnemonics(const platform::Form& form);

}  // namespace tvx::qt
