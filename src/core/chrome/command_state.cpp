#include "tvx/core/chrome/command_state.h"

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/frames.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/chrome/obstacles.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/views/side_source.h"
#include "tvx/dom/journal.h"
#include "tvx/editing/editor.h"
#include "tvx/platform/clipboard.h"

namespace tvx::core {
namespace {

/// The items of a menu that take the selection away.
constexpr std::u16string_view taking_items[] = {u"mnuImgCut",   u"mnuImgCopy", u"mnuLinkCut",
                                                u"mnuLinkCopy", u"mnuMiscCut", u"mnuMiscCopy"};
constexpr std::u16string_view pasting_items[] = {u"mnuImgPaste", u"mnuLinkPaste", u"mnuMiscPaste"};

bool has_cell_beside(const dom::Element& cell, dom::Node* (dom::Node::*next)() const) {
  for (const dom::Node* node = (cell.*next)(); node; node = (node->*next)())
    if (node->is(dom::Tag::Td) || node->is(dom::Tag::Th)) return true;
  return false;
}

bool has_selected(const Context& context) {
  bool selected = false;
  attempt([&] {
    const editing::Selection& selection = context.document().editor().selection();
    selected = selection.type() != editing::SelectionType::None && !selection.collapsed();
  });
  return selected;
}

/// The buttons of what is done to the text of a page.
constexpr std::u16string_view page_buttons[] = {
    u"Align Left",     u"Center",      u"Align Right",   u"Bold",  u"Italic", u"Underline",
    u"Strike Through", u"indent",      u"unindent",      u"Text",  u"link",   u"Image",
    u"RemoteImage",    u"orderedlist", u"unorderedlist", u"table", u"HR",     u"Spell Check"};

/// Those of other obstacles keep them.
void show_frames(platform::Button& button, bool frames) {
  if (button.Obstacle() == (frames ? obstacles::none : obstacles::frames))
    button.set_Obstacle(frames ? obstacles::frames : obstacles::none);
}

void show_frames(Toolbars& bars, bool frames) {
  for (const std::u16string_view key : page_buttons) show_frames(bars.Toolbar1.Item(key), frames);
  for (int i = 1; i <= bars.Toolbar2.Count(); ++i) show_frames(bars.Toolbar2.Item(i), frames);
}

std::u16string_view unless(bool can_act, std::u16string_view obstacle) {
  return can_act ? obstacles::none : obstacle;
}

}  // namespace

CommandState::CommandState(Context& context, Toolbars& toolbars, SideSource& side)
    : Part(context), toolbars_(toolbars), side_(side) {
  if (platform::Clipboard* clipboard = surroundings().clipboard) clipboard->add_observer(*this);
}

CommandState::~CommandState() {
  if (platform::Clipboard* clipboard = surroundings().clipboard) clipboard->remove_observer(*this);
}

void CommandState::clipboard_changed() {
  if (run_time() && !context_.terminated() && DOM()) context_.state_changed();
}

// Asking the clipboard may mean asking another program: once for each content.
bool CommandState::can_paste() {
  const platform::Clipboard* clipboard = surroundings().clipboard;
  if (!clipboard) return false;
  const std::uint64_t changes = clipboard->changes();
  if (pasteable_ && pasteable_at_ == changes) return *pasteable_;
  pasteable_ = !clipboard->targets().empty();
  pasteable_at_ = changes;
  return *pasteable_;
}

// Undo and Redo do nothing while the document counts as unchanged.
void CommandState::show() {
  bool undo = false, redo = false;
  attempt([&] {
    const dom::Journal& journal = document().tree().journal();
    undo = properties_.IsDirty && (journal.depth() > 0 || journal.is_open());
    redo = properties_.IsDirty && journal.can_redo();
  });
  bool selected = has_selected(context_);
  if (side_.in_hand()) {
    undo = undo || side_.waits();
    selected = side_.box().TextBox1().SelLength() > 0;
  }
  platform::Toolbar& bar = toolbars_.Toolbar1;
  bool frames = false;
  attempt([&] {
    frames = consists_of_frames(document().tree());
    show_frames(toolbars_, frames);
  });
  bar.Item(button_copy).set_Obstacle(unless(selected, obstacles::no_selection));
  bar.Item(button_cut).set_Obstacle(unless(selected, obstacles::no_selection));
  bar.Item(button_paste)
      .set_Obstacle(frames && !side_.in_hand() ? obstacles::frames
                                               : unless(can_paste(), obstacles::no_paste));
  bar.Item(button_undo).set_Obstacle(unless(undo, obstacles::no_undo));
  bar.Item(button_redo).set_Obstacle(unless(redo, obstacles::no_redo));
}

void show_obstacles(ContextMenus& menus, Toolbars& toolbars, const Context& context) {
  const bool selected = has_selected(context);
  const platform::Clipboard* clipboard = context.surroundings().clipboard;
  const bool pasteable = clipboard && !clipboard->targets().empty();
  for (const std::u16string_view name : taking_items)
    menus.item(name).set_Obstacle(unless(selected, obstacles::no_selection));
  for (const std::u16string_view name : pasting_items)
    menus.item(name).set_Obstacle(unless(pasteable, obstacles::no_paste));
  const platform::Button& toggle = toolbars.Toolbar1.Item(button_toggle);
  menus.item(u"mnuMiscSource")
      .set_Obstacle(unless(toggle.Visible() && toggle.Enabled(), obstacles::no_source));
}

// Of all elements these have a dialog.
void show_obstacles(ContextMenus& menus, const dom::Element& element, bool tag_can_be_edited) {
  const bool has_dialog = element.is(dom::Tag::Td) || element.is(dom::Tag::Tr) ||
                          element.is(dom::Tag::Table) || element.is(dom::Tag::Img);
  menus.item(u"mnuToolProperties").set_Obstacle(unless(has_dialog, obstacles::no_properties));
  menus.item(u"mnuToolEditTag").set_Obstacle(unless(tag_can_be_edited, obstacles::no_tag_edit));
  const bool left = has_cell_beside(element, &dom::Node::previous_sibling),
             right = has_cell_beside(element, &dom::Node::next_sibling);
  menus.item(u"MnuCellRowActionsMergeCellLeft").set_Obstacle(unless(left, obstacles::no_cell));
  menus.item(u"MnuCellRowActionsMergeCellRight").set_Obstacle(unless(right, obstacles::no_cell));
}

}  // namespace tvx::core
