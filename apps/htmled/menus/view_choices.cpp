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

const QString share_key = QStringLiteral("view/split-share");

/// In the order of the enumeration.
constexpr Row rows[] = {
    {"view/formatting-tools", true, &qt::HTMLedWidget::set_showFormattingToolbar1},
    {"view/insertion-tools", true, &qt::HTMLedWidget::set_showFormattingToolbar2},
    {"view/form-tools", false, &qt::HTMLedWidget::set_showFormToolbar},
    {"view/element-path", true, &qt::HTMLedWidget::set_showDOMToolbar},
    {"view/dark-page", false, &qt::HTMLedWidget::set_dark_page},
    {"view/split", false, &qt::HTMLedWidget::set_split_view},
};

const Row& row_of(Choice choice) { return rows[static_cast<int>(choice)]; }

}  // namespace

bool is_on(Choice choice) {
  return program_settings().value(QString::fromLatin1(row_of(choice).key), row_of(choice).at_first).toBool();
}

void turn(Choice choice) {
  program_settings().setValue(QString::fromLatin1(row_of(choice).key), !is_on(choice));
}

void keep_split_share(double share) { program_settings().setValue(share_key, share); }

void apply(qt::HTMLedWidget& editor) {
  editor.set_split_share(program_settings().value(share_key, 0.5).toDouble());
  for (const Row& row : rows)
    (editor.*row.set)(program_settings().value(QString::fromLatin1(row.key), row.at_first).toBool());
}

}  // namespace tvx::htmled::view_choices
