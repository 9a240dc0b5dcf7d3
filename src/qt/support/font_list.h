#pragma once

#include <QStringList>

class QComboBox;

namespace tvx::qt {

/// The families of fonts that a document can name, in their order. A foundry that the toolkit writes after a
/// family which several have is left out: nothing else finds a font by it.
QStringList font_families();

/// A list of families shows each name in its font, and beside the names of those whose signs are no letters
/// what these look like. To be called once.
void show_in_their_fonts(QComboBox& list);

/// Says how the item is to be shown.
void show_in_its_font(QComboBox& list, int index);

}  // namespace tvx::qt
