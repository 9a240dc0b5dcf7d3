#pragma once

#include <QLocale>
#include <QPageLayout>
#include <QPageSize>
#include <QString>

namespace tvx::qt {

/// How a document stands on paper.
struct PageSetup {
  /// What a header or a footer says at one of its three positions.
  enum class Text { Nothing, Title, FileName, Page, PageOfPages, Date };
  struct Line {
    bool is_shown = false;
    Text left = Text::Nothing, middle = Text::Nothing, right = Text::Nothing;
    friend bool operator==(const Line&, const Line&) = default;
  };

  /// Paper, orientation and margins; at first the paper that the user's country has.
  QPageLayout layout{QPageSize(QLocale().measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter
                                                                                          : QPageSize::A4),
                     QPageLayout::Portrait, QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter};
  /// They stand in the margins.
  Line header{false, Text::Title, Text::Nothing, Text::Date};
  Line footer{false, Text::FileName, Text::Nothing, Text::PageOfPages};
  /// What FileName says, and Title of a document without one.
  QString file_name;
  friend bool operator==(const PageSetup&, const PageSetup&) = default;
};

}  // namespace tvx::qt
