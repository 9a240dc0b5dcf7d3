#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace tvx::qt {

/// A heading of the page: its level, 1 to 6, and the name of the position in the PDF that it stands at.
struct SheetHeading {
  int level = 1;
  QString text, name;
};

/// A page on paper, as the engine makes it, and what the engine doesn't write into it.
struct Sheets {
  QByteArray pdf;  // empty: it couldn't be made
  QString title, language;
  std::vector<SheetHeading> headings;
};

/// What the names of positions start with that are there for headings alone.
inline constexpr char heading_mark[] = "tvx-heading-";

}  // namespace tvx::qt
