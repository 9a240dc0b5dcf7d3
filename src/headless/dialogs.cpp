#include "tvx/headless/dialogs.h"

#include <algorithm>

#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/headless/expected.h"

namespace tvx::headless {

using platform::FileDialog;
using platform::MessageAnswer;
using platform::MessageBox;

DialogKind kind_of(const ShownDialog& dialog) {
  struct Kind {
    DialogKind operator()(const ColorDialog&) const { return DialogKind::color; }
    DialogKind operator()(const OpenDialog&) const { return DialogKind::open; }
    DialogKind operator()(const SaveDialog&) const { return DialogKind::save; }
    DialogKind operator()(const MessageBox&) const { return DialogKind::msgbox; }
    DialogKind operator()(const platform::LinkDialog&) const { return DialogKind::link; }
  };
  return std::visit(Kind{}, dialog);
}

std::u16string_view name_of(DialogKind kind) {
  switch (kind) {
    case DialogKind::color: return u"color";
    case DialogKind::open: return u"open";
    case DialogKind::save: return u"save";
    case DialogKind::link: return u"link";
    case DialogKind::msgbox: break;
  }
  return u"msgbox";
}

void Dialogs::forget(int id) { forget_expected(expected_, id); }

std::optional<ExpectedDialog> Dialogs::take(DialogKind kind) {
  return take_expected(expected_, [kind](const ExpectedDialog& expected) { return expected.kind == kind; });
}

template <class Answer>
std::optional<Answer> Dialogs::show(const ShownDialog& dialog) {
  // Taken before anything runs: what happens while the dialog is open may change the expectations.
  const std::optional<ExpectedDialog> expected = take(kind_of(dialog));
  if (opened_) opened_(dialog);
  if (expected && expected->while_open) expected->while_open(dialog);
  if (closed_) closed_(dialog, expected ? &*expected : nullptr);
  const Answer* answer = expected ? std::get_if<Answer>(&expected->answer) : nullptr;
  return answer ? std::optional(*answer) : std::nullopt;
}

// One that fails has not been opened; where it gives a result instead, that is a cancelled one.
Colour Dialogs::ShowColor(Colour colour, platform::WindowHandle owner) {
  if (fault_point(u"ShowColor")) return no_colour;
  return show<Colour>(ColorDialog{colour, owner}).value_or(no_colour);
}

std::u16string Dialogs::ShowOpen(const FileDialog& dialog) {
  if (fault_point(u"ShowOpen")) return {};
  return std::u16string(TrimNul(NullToEmpty(show<std::u16string>(OpenDialog{dialog}))));
}

std::u16string Dialogs::ShowSave(const FileDialog& dialog) {
  if (fault_point(u"ShowSave")) return {};
  return std::u16string(TrimNul(NullToEmpty(show<std::u16string>(SaveDialog{dialog}))));
}

MessageAnswer Dialogs::show_message(const MessageBox& box) {
  const MessageAnswer closed = platform::answer_when_closed(box.buttons);
  const MessageAnswer answer = show<MessageAnswer>(box).value_or(closed);
  const auto offered = platform::answers_of(box.buttons);
  return std::find(offered.begin(), offered.end(), answer) == offered.end() ? closed : answer;
}

// An address of nothing but white space can't be agreed to.
std::optional<std::u16string> Dialogs::ask_link(const platform::LinkDialog& dialog) {
  const auto answer = show<std::u16string>(dialog);
  if (!answer) return std::nullopt;
  std::u16string address(trimmed(*answer));
  return address.empty() ? std::nullopt : std::optional(std::move(address));
}

}  // namespace tvx::headless
