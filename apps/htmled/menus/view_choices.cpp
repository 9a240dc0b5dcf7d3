#include "htmled/menus/view_choices.h"

#include <QSettings>

#include "htmled/languages.h"
#include "tvx/htmled_widget.h"

namespace tvx::htmled::view_choices {
namespace {

struct Row {
  const char* key;
  bool at_first;
  void (qt::HTMLedWidget::*set)(bool);
};

/// In the order of the enumeration.
constexpr Row rows[] = {
    {"view/formatting-tools", true, &qt::HTMLedWidget::set_showFormattingToolbar1},
    {"view/insertion-tools", true, &qt::HTMLedWidget::set_showFormattingToolbar2},
    {"view/form-tools", false, &qt::HTMLedWidget::set_showFormToolbar},
    {"view/element-path", true, &qt::HTMLedWidget::set_showDOMToolbar},
    {"view/dark-page", false, &qt::HTMLedWidget::set_dark_page},
};

const Row& row_of(Choice choice) { return rows[static_cast<int>(choice)]; }

}  // namespace

bool is_on(Choice choice) {
  return program_settings().value(QString::fromLatin1(row_of(choice).key), row_of(choice).at_first).toBool();
}

void turn(Choice choice) {
  program_settings().setValue(QString::fromLatin1(row_of(choice).key), !is_on(choice));
}

void apply(qt::HTMLedWidget& editor) {
  for (const Row& row : rows)
    (editor.*row.set)(program_settings().value(QString::fromLatin1(row.key), row.at_first).toBool());
}

}  // namespace tvx::htmled::view_choices
