#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "tvx/core/part.h"
#include "tvx/source/code_view.h"
#include "tvx/source/source_text.h"

namespace tvx::core {

/// What was selected in the design view when it was left.
struct EntrySelection {
  std::u16string html;
  std::int32_t source_index = -1;  // of the element that held it
  std::int32_t code_start = 0;     // where it stands in the code, counted from 1; 0: nowhere
};

/// The box with the code. It knows which text it was entered with, so that code that nobody has edited leaves
/// the document as it is. When the views switch is ViewSwitch's concern.
class CodePane final : public Part, private source::CodeViewEvents {
 public:
  explicit CodePane(Context& context);

  source::OrvelCV& box() { return txtCode_; }
  bool in_front() const { return in_front_; }
  void set_in_front(bool in_front);
  EntrySelection& selection() { return selection_; }
  /// Takes the user's edits, or doesn't, as EditorEnabled says.
  void lock_as_told() { txtCode_.set_Locked(!properties_.EditorEnabled); }

  /// The code as it was made of the document at the last entry, or as it went back to it.
  std::u16string codeText() const;
  void keep_code_text(std::shared_ptr<const std::u16string> text) { code_text_ = std::move(text); }
  /// What the box tells goes through here.
  source::CodeViewEvents& heard() { return *this; }

  /// Shows what stands for a text of the document, as if the view had been entered with it.
  void show_as_entered(source::SourceText text);
  /// What the view was entered with; nothing in the design view.
  const std::optional<source::SourceText>& entered() const { return entered_; }
  void forget_entered();
  /// What the document's body is to hold now: its text, changed where the user has changed the code. Nothing
  /// where the code stands as it was entered.
  std::optional<std::u16string> edited_body() const;

 private:
  void GotFocus() override;
  void Change() override;
  void KeyDown(std::int16_t& KeyCode, std::int16_t Shift) override;

  source::OrvelCV txtCode_;
  bool in_front_ = false;
  std::shared_ptr<const std::u16string> code_text_;
  EntrySelection selection_;
  std::optional<source::SourceText> entered_;
};

}  // namespace tvx::core
