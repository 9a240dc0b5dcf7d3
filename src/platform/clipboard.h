#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/transfer_data.h"

namespace tvx::platform {

/// The clipboard's formats by number. Plain text answers to three of them, an image to two; names registered
/// by programs have numbers from 0xC000 on.
enum class ClipboardFormat : std::int32_t {
  none = 0,
  text = 1,
  bitmap = 2,
  metafile = 3,
  oem_text = 7,
  dib = 8,
  palette = 9,
  unicode_text = 13,
  file_list = 15,
  rich_text = -16639,
  link = -16640,
};

constexpr std::int32_t number_of(ClipboardFormat format) { return static_cast<std::int32_t>(format); }

/// The number of a named format ("HTML Format"), the same in every call; `none` if it can't be had.
ClipboardFormat RegisterClipboardFormat(std::u16string_view name);
/// The name of a registered format, empty for other numbers.
std::u16string registered_format_name(ClipboardFormat format);
/// The form that holds a format on the desktop. Empty for those that stand for many (images) or for none.
std::string target_of(ClipboardFormat format);

/// Who shows whether there is something to paste.
class ClipboardObserver {
 public:
  virtual ~ClipboardObserver() = default;
  /// There may be another content, whichever program put it there.
  virtual void clipboard_changed() = 0;
};

/// The system's clipboard: one content in several formats, which replaces another as a whole.
///
/// Whoever writes opens it, empties it, sets formats and closes it; others see the new content at the close.
/// Single calls of the visual kind (Clear, SetText) do all of that at once. Every question asks for a format
/// and never for "has text": a program that copied a picture may offer its address as text.
class Clipboard : public TransferSource {
 public:
  /// False while another program holds it. Fault point "OpenClipboard".
  bool OpenClipboard();
  /// Nothing will be on it but what is set from now on. All false: it isn't open.
  bool EmptyClipboard();
  /// Fault point "SetClipboardData".
  bool SetClipboardData(ClipboardFormat format, std::string bytes);
  /// The same for a form by its name on the desktop.
  bool set_data(std::string_view target, std::string bytes);
  void CloseClipboard();

  bool IsClipboardFormatAvailable(ClipboardFormat format) const;
  /// The bytes of a format, by their length; texts in UTF-8. Nothing if there is none.
  std::optional<std::string> GetClipboardData(ClipboardFormat format) const;

  // --- the short way; a clipboard that can't be opened stays as it is ---
  void Clear();
  void SetText(std::u16string_view text, ClipboardFormat format = ClipboardFormat::text);
  /// Empty if there is no text in that format.
  std::u16string GetText(ClipboardFormat format = ClipboardFormat::text) const;
  bool GetFormat(ClipboardFormat format) const { return IsClipboardFormatAvailable(format); }
  /// All of the content at once. False: it couldn't be opened.
  bool put(TransferItems items);

  /// Another number whenever there may be another content. Where nobody watches, each call gives another.
  virtual std::uint64_t changes() const { return ++changes_; }

  void add_observer(ClipboardObserver& observer) { observers_.push_back(&observer); }
  void remove_observer(ClipboardObserver& observer) { std::erase(observers_, &observer); }

  /// The new content as the desktop gets it, opened or not; none: it is empty.
  virtual void publish(TransferItems items) = 0;

 protected:
  void tell_changed() {
    for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->clipboard_changed();
  }

 private:
  std::vector<ClipboardObserver*> observers_;
  mutable std::uint64_t changes_ = 0;
  bool open_ = false;
  std::optional<TransferItems> pending_;
};

}  // namespace tvx::platform
