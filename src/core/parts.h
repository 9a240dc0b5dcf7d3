#pragma once

#include "tvx/core/actions.h"
#include "tvx/core/chrome/class_menus.h"
#include "tvx/core/chrome/command_state.h"
#include "tvx/core/chrome/dialog_host.h"
#include "tvx/core/chrome/element_dialogs.h"
#include "tvx/core/chrome/element_path.h"
#include "tvx/core/chrome/menu_commands.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/chrome/table_tools.h"
#include "tvx/core/chrome/toolbar_commands.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/chrome/words.h"
#include "tvx/core/commands/clipboard_commands.h"
#include "tvx/core/commands/document_event_handler.h"
#include "tvx/core/commands/formatting.h"
#include "tvx/core/commands/image_commands.h"
#include "tvx/core/commands/selection_commands.h"
#include "tvx/core/commands/selection_formats.h"
#include "tvx/core/content/bootstrap.h"
#include "tvx/core/content/content.h"
#include "tvx/core/content/document_files.h"
#include "tvx/core/content/navigation.h"
#include "tvx/core/content/style_sheet.h"
#include "tvx/core/dialogs/field_settings.h"
#include "tvx/core/dialogs/font_settings.h"
#include "tvx/core/dialogs/form_elements.h"
#include "tvx/core/dialogs/image_settings.h"
#include "tvx/core/remote/image_library.h"
#include "tvx/core/remote/picture_uploads.h"
#include "tvx/core/remote/transfers.h"
#include "tvx/core/search/finder.h"
#include "tvx/core/spelling/spell_run.h"
#include "tvx/core/spelling/speller.h"
#include "tvx/core/spelling/spelling_marks.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/edit_window.h"
#include "tvx/core/views/panes.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/views/side_source.h"
#include "tvx/core/views/view_switch.h"

namespace tvx::core {

/// What a control is made of, in an order in which each knows only those before it. A new part gets its line
/// here, its buttons and items their rows in actions.cpp, and what hosts see of it a line in HTMLed.
struct Parts {
  explicit Parts(Context& given) : context(given) {}

  Context& context;
  TableLabels labels;
  Toolbars toolbars;
  ContextMenus menus;
  SelectionHighlight highlight;
  ControlActions actions{*this};

  CodePane code{context};
  EditWindow edit_window{context};
  Panes panes{context, toolbars, code};

  Words words{context, toolbars, menus, labels};
  DialogHost dialogs{context, words};
  TableTools tables{context, highlight, labels};
  FontSettings font_settings{context};
  FormElements form_elements{context};
  FieldSettings field_settings{context, form_elements};
  ImageSettings image_settings{context, highlight};
  ElementDialogs element_dialogs{context, highlight, tables, image_settings};
  ElementPath element_path{context, toolbars, menus, highlight, panes, labels};
  ToolbarCommands toolbar_commands{context, toolbars, panes, element_path, actions};

  Content content{context, code, highlight};
  StyleSheetBinding style_sheet{context,
                                [this](std::span<const StyleClass> all) { menus.show_classes(all); }};
  Bootstrap bootstrap{context, content, style_sheet, code};
  DocumentFiles files{context, content, style_sheet, code, highlight};
  NavigationHandler navigation{context, content, style_sheet, files, edit_window};
  SideSource side{context, code, content, highlight,
                  [this](bool again) { again ? formatting.redo() : formatting.undo(); }};
  CommandState command_state{context, toolbars, side};
  ViewSwitch view_switch{context, content, code, side, panes, toolbar_commands, highlight};

  Transfers transfers{context, dialogs};
  Speller speller{context};
  SpellRun spelling{context, speller, &dialogs, [this] { spelling_marks.check_again(); }};
  SpellingMarks spelling_marks{context, speller};
  Finder finder{context, code, side};

  Formatting formatting{context, toolbars, code, edit_window};
  SelectionCommands selection{context};
  SelectionFormats selection_formats{context};
  ClipboardCommands clipboard{context, code, content};
  ImageCommands images{context,
                       {[this](const std::u16string& path) { return transfers.UploadImageFile(path); },
                        [this] { image_library.open(); }}};
  PictureUploads picture_uploads{
      context,
      {[this](const std::u16string& path) { return transfers.UploadImageFile(path); },
       [this] { return transfers.running(); }}};
  ImageLibrary image_library{context, transfers,
                             [this](const std::u16string& url) { images.insert_from_library(url); }};
  ClassMenus classes{context, highlight, style_sheet};
  MenuCommands menu_commands{context,
                             {menus, toolbars, highlight, tables, formatting, classes, spelling_marks,
                              actions, image_settings, field_settings}};
  DocumentEventHandler input{
      context, {clipboard, formatting, selection, element_path, menu_commands, highlight, field_settings}};
};

}  // namespace tvx::core
