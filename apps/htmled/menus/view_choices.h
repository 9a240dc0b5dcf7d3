#pragma once

namespace tvx::qt {
class HTMLedWidget;
}

/// What the View menu switches for all documents, kept from one start to the next.
namespace tvx::htmled::view_choices {

enum class Choice { FormattingTools, InsertionTools, FormTools, ElementPath, DarkPage, SplitView };

bool is_on(Choice choice);
/// What holds for an editor from now on; `turn` has been called for it, or it is new.
void turn(Choice choice);
void apply(qt::HTMLedWidget& editor);
/// How much of the room the page has beside the source; apply() gives it to an editor.
void keep_split_share(double share);

}  // namespace tvx::htmled::view_choices
