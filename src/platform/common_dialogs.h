#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tvx/base/colour.h"
#include "tvx/platform/window.h"

namespace tvx::platform {

/// One line of a file dialog's filter list: "Images", "*.gif;*.jpg".
struct FileFilter {
  std::u16string name;
  std::u16string pattern;

  bool operator==(const FileFilter&) const = default;
};

struct FileDialog {
  std::vector<FileFilter> filters;
  std::u16string title;
  /// What stands in the name field at first, a pattern too: "*.html".
  std::u16string preset;
  WindowHandle owner = WindowHandle::none;
  /// Files are pictures: a desktop shows the one that is about to be chosen, and offers all kinds at first.
  bool of_pictures = false;
};

enum class MessageButtons { ok, ok_cancel, yes_no, yes_no_cancel };
enum class MessageIcon { none, critical, question, exclamation, information };
/// With the numbers that hosts know.
enum class MessageAnswer { ok = 1, cancel = 2, yes = 6, no = 7 };

struct MessageBox {
  std::u16string text;
  std::u16string title = u"HTMLed";
  MessageButtons buttons = MessageButtons::ok;
  MessageIcon icon = MessageIcon::none;
  WindowHandle owner = WindowHandle::none;
  /// Nothing has failed: the program asks before it goes on. A desktop shows it as its program's question,
  /// whatever icon and title hosts know it by.
  bool asks = false;
};

/// Asks for the address of a link.
struct LinkDialog {
  std::u16string address;  // what stands in the field at first
  WindowHandle owner = WindowHandle::none;
};

/// What closing the box without a choice means: No where there is no Cancel, OK where there is nothing else.
MessageAnswer answer_when_closed(MessageButtons buttons);
/// The answers a box offers, from the first button on.
std::vector<MessageAnswer> answers_of(MessageButtons buttons);

/// The dialogs that the desktop brings. All are modal over their owner and return when they are closed; the
/// message loop runs meanwhile.
class CommonDialogs {
 public:
  virtual ~CommonDialogs() = default;

  /// Lets the user choose a colour, `colour` at first; `no_colour` on cancel. The dialog opens in full, with
  /// sixteen colours of the user's own that are kept between calls.
  virtual Colour ShowColor(Colour colour, WindowHandle owner) = 0;

  /// The path chosen, empty on cancel. Fails with a RuntimeError if the dialog can't be shown.
  virtual std::u16string ShowOpen(const FileDialog& dialog) = 0;
  /// As `ShowOpen`; the file need not exist, and the dialog asks before one that does.
  virtual std::u16string ShowSave(const FileDialog& dialog) = 0;

  virtual MessageAnswer show_message(const MessageBox& box) = 0;

  /// The address without white space around it, never an empty one; nothing on cancel.
  virtual std::optional<std::u16string> ask_link(const LinkDialog& dialog) = 0;
};

}  // namespace tvx::platform
