#include "tvx/browser/input/writer_command.h"

#include "tvx/base/fault.h"
#include "tvx/editing/gestures/cell_selection.h"

namespace tvx::browser {
namespace {

/// Those who follow the selection hear of it: the caret may stand in the same text, and yet in another
/// element.
void tell_again(editing::Selection& selection) {
  if (dom::Element* control = selection.control())
    selection.select_control(*control);
  else if (selection.type() == editing::SelectionType::Text)
    selection.set(selection.anchor(), selection.focus());
}

}  // namespace

bool press_command(HTMLDocument& document, std::u16string_view command, std::u16string_view value) {
  if (const auto result = fault_point(u"execCommand " + std::u16string(command))) return *result != 0;
  const auto kept = document.shared_from_this();
  bool done = false;
  document.select([&](editing::Selection& selection) {
    const std::uint64_t structure = document.tree().structure_version();
    done = editing::execute_as_writer(document.editor(), command, value);
    if (document.tree().structure_version() != structure) tell_again(selection);
  });
  return done;
}

}  // namespace tvx::browser
