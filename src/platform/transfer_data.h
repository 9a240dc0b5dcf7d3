#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Content on its way between programs, by copying or dragging: the same thing in several forms.
namespace tvx::platform {

/// The forms by their names on the desktop, as media types. Texts are UTF-8, but for the address of a link.
namespace targets {
inline constexpr std::string_view text = "text/plain";
inline constexpr std::string_view html = "text/html";
inline constexpr std::string_view rich_text = "text/rtf";
/// Address, line feed, title; UTF-16 in the machine's order.
inline constexpr std::string_view link = "text/x-moz-url";
/// Addresses, one a line, each ended by CR LF; "#" begins a note.
inline constexpr std::string_view files = "text/uri-list";
}  // namespace targets

/// One form: its name and its bytes.
using TransferItem = std::pair<std::string, std::string>;
using TransferItems = std::vector<TransferItem>;

/// Where content comes from: a clipboard, or what is being dropped. A form is fetched when it is asked for,
/// which may mean asking another program.
class TransferSource {
 public:
  virtual ~TransferSource() = default;
  /// The names of the forms on offer, the best one first.
  virtual std::vector<std::string> targets() const = 0;
  /// The bytes of a form; empty if it isn't on offer or its program doesn't answer.
  virtual std::string read(std::string_view target) const = 0;
};

bool offers(const TransferSource& source, std::string_view target);

/// What was fetched of a transfer. A form that wasn't there is empty.
struct TransferData {
  std::u16string html;               // as it came, with whatever its program wrapped around it
  std::u16string text;               // plain
  std::string image;                 // the file's bytes
  std::string image_type;            // "image/png"
  std::vector<std::u16string> uris;  // addresses of files and pages

  bool empty() const { return html.empty() && text.empty() && image.empty() && uris.empty(); }
};

/// Fetches all forms that an editor can use; of several images the first.
TransferData fetch(const TransferSource& source);
/// The plain text only.
TransferData fetch_text(const TransferSource& source);

/// A text of a form, whose program may have written UTF-16 with a byte order mark, or a NUL at its end.
std::u16string decode_transfer_text(std::string_view bytes);
/// The addresses of a "text/uri-list".
std::vector<std::u16string> addresses_of(std::string_view uri_list);

/// A transfer held in memory.
class TransferItemSource : public TransferSource {
 public:
  explicit TransferItemSource(TransferItems items) : items_(std::move(items)) {}
  std::vector<std::string> targets() const override;
  std::string read(std::string_view target) const override;

 private:
  TransferItems items_;
};

}  // namespace tvx::platform
