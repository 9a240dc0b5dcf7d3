#pragma once

#include <QPushButton>
#include <cstdio>

#include "tvx/htmled_widget.h"

/// Whether the form's editor has what the form says, and edits. Says what isn't so.
inline bool is_as_designed(QWidget& form) {
  using tvx::qt::HTMLedWidget;
  auto* editor = form.findChild<HTMLedWidget*>(QStringLiteral("editor"));
  auto* send = form.findChild<QPushButton*>(QStringLiteral("send"));
  const auto holds = [](bool what, const char* words) {
    if (!what) std::fprintf(stderr, "not so: %s\n", words);
    return what;
  };
  if (!holds(editor && send, "the form has its widgets")) return false;
  form.show();
  bool good = holds(editor->started(), "it edits");
  good &= holds(editor->DocumentHTML() == QStringLiteral("<P>Dear reader</P>"), "DocumentHTML");
  good &= holds(!editor->showFormattingToolbar2(), "showFormattingToolbar2");
  good &= holds(editor->showFormattingToolbar1(), "showFormattingToolbar1");
  good &= holds(editor->SelectionBorderStyle() == HTMLedWidget::edDouble, "SelectionBorderStyle");
  good &= holds(editor->FTPHost() == QStringLiteral("files.example.org"), "FTPHost");
  good &= holds(editor->FTPPort() == 2121, "FTPPort");
  editor->selectText(0, 4);
  send->click();
  return good & holds(editor->DocumentHTML() == QStringLiteral("<P><B>Dear</B> reader</P>"),
                      "the form's connection");
}
