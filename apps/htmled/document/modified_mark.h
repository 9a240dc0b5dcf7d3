#pragma once

#include <QObject>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tvx::core {
class HTMLed;
}
namespace tvx::files {
class DocumentFile;
}

namespace tvx::htmled {

/// Whether a document is still what its file holds: after undoing everything it is again.
class ModifiedMark final : public QObject {
  Q_OBJECT
 public:
  /// Both outlive this.
  ModifiedMark(core::HTMLed& control, const files::DocumentFile& file);

  bool is_set() const { return modified_; }
  /// The document is now what its file holds.
  void clear();
  void look();
  /// Whatever the document is, the file is another now: until clear().
  void set_for_good();
  /// When the turn is over: a key is told of before it types.
  void look_later();
  /// What look_later() has put off.
  void look_now_if_awaited();

 signals:
  void changed(bool modified);

 private:
  void set(bool modified);

  core::HTMLed& control_;
  const files::DocumentFile& file_;
  bool modified_ = false;
  bool for_good_ = false;
  bool was_respelled_ = false;  // at the last look
  bool look_awaited_ = false;
  std::uint64_t unmodified_ = 0;      // the digest of the page then
  std::size_t unmodified_depth_ = 0;  // of the undo journal
  std::optional<std::size_t> looked_at_depth_;
};

}  // namespace tvx::htmled
