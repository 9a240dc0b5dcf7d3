#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "tvx/files/kept_page.h"

namespace tvx::htmled {

class UnsavedFolder;

/// Writes what is kept of all pages, in their order, in a thread of its own: a disk that is busy keeps nobody
/// from typing.
class KeptPages final : public QObject {
  Q_OBJECT
 public:
  KeptPages();
  /// Waits for what is still to be written.
  ~KeptPages() override;

  /// A name that no other page of this program has.
  std::string new_name();
  void keep(const std::string& name, files::KeptPage page);
  void forget(const std::string& name);
  /// Waits until everything is on the disk.
  void finish();

 signals:
  /// Pages can't be kept, and why. Told once.
  void failed(const QString& text);

 private:
  struct Writer;
  std::unique_ptr<Writer> writer_;
  int last_name_ = 0;
};

/// Keeps one page while it differs from its file: as many seconds after a change as the user prefers at the
/// latest, and at once where the user turns to something else. Who prefers none keeps nothing.
class PageKeeper final : public QObject {
  Q_OBJECT
 public:
  /// `take` gives the page as it stands; nothing where it is what its file holds.
  PageKeeper(KeptPages& pages, std::function<std::optional<files::KeptPage>()> take);
  /// What is kept stays: who lets a page go calls forget().
  ~PageKeeper() override = default;

  void note_change();
  void keep_now();
  /// There is nothing to keep any more: it was saved, or let go.
  void forget();

 private:
  KeptPages& pages_;
  const std::function<std::optional<files::KeptPage>()> take_;
  const std::string name_;
  QTimer timer_;
  bool noted_ = false, kept_ = false;
};

}  // namespace tvx::htmled
