#pragma once

#include <QKeySequence>
#include <QList>
#include <string_view>

#include "tvx/htmled_widget.h"

namespace tvx::qt {

/// How an operation presents itself. What it does is the control's (core/actions.cpp).
struct ActionFace {
  std::u16string_view name;
  const char* text;               // in English, with its access key
  const char* keys;               // as QKeySequence reads them, separated by blanks; null: none
  std::u16string_view icon = {};  // of the icon set
};

const ActionFace& face_of(HTMLedWidget::Action action);
QList<QKeySequence> keys_of(const ActionFace& face);

}  // namespace tvx::qt
