#include "htmled/document/files_of_page.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <deque>

#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/files/document_file.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using qt::from_qt;
using qt::to_qt;

bool have_same_bytes(const QString& one, const QString& other) {
  QFile first(one), second(other);
  return first.size() == second.size() && first.open(QIODevice::ReadOnly) &&
         second.open(QIODevice::ReadOnly) && first.readAll() == second.readAll();
}

/// Where a copy of the file goes in that folder: it may be there already, and no other file gives way to it.
QString path_for_copy(const QString& source, const QDir& folder) {
  const QFileInfo name(source);
  QString path = folder.filePath(name.fileName());
  for (int number = 2; QFileInfo::exists(path) && !have_same_bytes(source, path); ++number)
    path = folder.filePath(QStringLiteral("%1-%2").arg(number).arg(name.fileName()));
  return path;
}

bool copy_unless_there(const QString& source, const QString& target) {
  if (QFileInfo::exists(target)) return true;
  return QDir().mkpath(QFileInfo(target).absolutePath()) && QFile::copy(source, target);
}

}  // namespace

FilesOfPage::FilesOfPage(const files::DocumentFile& file, const QString& opened, const QString& target,
                         SettledFiles& settled)
    : old_page_(from_qt(opened)),
      to_(QFileInfo(target).absolutePath()),
      target_(target),
      file_(file),
      settled_(settled) {
  if (old_page_.empty()) return;
  from_ = QFileInfo(to_qt(old_page_)).absolutePath();
  old_address_ = file_url(old_page_);
}

QString FilesOfPage::folder_of_copies() const {
  return QFileInfo(target_).completeBaseName() + QStringLiteral("_files");
}

/// A page that is in no file yet has nothing that somebody wants to have so.
bool FilesOfPage::is_new(const files::FileAddress& address) const {
  return !address.relative && !(known_ && known_->contains(address.written));
}

bool FilesOfPage::is_settled(const std::u16string& path) const {
  const auto found = settled_.find(path);
  if (found == settled_.end()) return false;
  const QString& copy = found->second;
  return copy.isEmpty() || (files::lies_in(from_qt(copy), from_qt(to_)) && QFileInfo::exists(copy));
}

void FilesOfPage::read_known() {
  if (known_ || file_.path().empty()) return;
  known_.emplace();
  // Few pages have any, and this is asked each time a page is kept.
  if (!contains(ascii_lower(file_.page_text()), u"file:")) return;
  for (const files::FileAddress& each : files::file_addresses(*dom::parse_document(file_.page_text()), u""))
    known_->insert(each.written);
}

void FilesOfPage::look(dom::Document& page) {
  const bool is_elsewhere = from_ != to_ && from_qt(target_) != file_.path();
  along_.clear();
  elsewhere_.clear();
  const auto add = [](QStringList& list, const QString& path) {
    if (!list.contains(path)) list.append(path);
  };
  for (const files::FileAddress& each : files::file_addresses(page, old_address_)) {
    if (!each.relative) read_known();
    if (!each.shown) continue;
    const QString path = to_qt(each.path);
    if (each.relative && is_elsewhere && files::lies_in(each.path, from_qt(from_))) {
      const QString beside = QDir(from_).relativeFilePath(path);
      if (!QFileInfo::exists(QDir(to_).filePath(beside))) add(along_, beside);
    }
    if (is_new(each) && !is_settled(each.path) && !files::lies_in(each.path, from_qt(to_)))
      add(elsewhere_, path);
  }
}

QString FilesOfPage::copy_along() {
  for (const QString& file : along_) {
    const QString copy = QDir(to_).filePath(file);
    if (!copy_unless_there(QDir(from_).filePath(file), copy)) return copy;
  }
  return {};
}

QString FilesOfPage::copy_elsewhere() {
  const QDir folder(QDir(to_).filePath(folder_of_copies()));
  for (const QString& file : elsewhere_) {
    const QString copy = path_for_copy(file, folder);
    if (!copy_unless_there(file, copy)) return copy;
    settled_[from_qt(file)] = copy;
  }
  return {};
}

void FilesOfPage::leave_elsewhere() {
  for (const QString& file : elsewhere_) settled_[from_qt(file)] = QString();
}

/// What an address that is seen from the page becomes in another folder.
std::optional<std::u16string> FilesOfPage::moved(const files::FileAddress& address) const {
  if (from_ == to_) return {};
  const auto folder = from_qt(to_);
  if (address.path == old_page_) return files::address_from(folder, from_qt(target_)) + address.rest;
  const auto there = resolve_url(trimmed(address.written), file_url(from_qt(target_)));
  const auto file = there ? local_path(*there) : std::nullopt;
  if (file && QFileInfo::exists(to_qt(*file))) return {};
  return files::address_from(folder, address.path) + address.rest;
}

std::optional<std::u16string> FilesOfPage::address_of(const files::FileAddress& address) const {
  if (address.relative) return moved(address);
  if (!is_new(address)) return {};
  const auto folder = from_qt(to_);
  if (!files::lies_in(address.path, folder)) return {};
  return files::address_from(folder, address.path) + address.rest;
}

void FilesOfPage::show_copies(dom::Document& page) {
  std::vector<files::Readdressed> others;
  for (const files::FileAddress& each : files::file_addresses(page, old_address_)) {
    if (!each.relative) read_known();
    if (!is_new(each) || !is_settled(each.path) || files::lies_in(each.path, from_qt(to_))) continue;
    if (const QString& copy = settled_[each.path]; !copy.isEmpty())
      others.emplace_back(each, file_url(from_qt(copy)) + each.rest);
  }
  const dom::MutationScope scope(page, dom::MutationKind::Load);
  for (const files::AddressedText& each : files::texts_with(others)) each.place.set_text(each.text);
}

// Of the kind that nobody but the tree, the serialiser and the view sees, for which nothing has changed in
// the end.
void FilesOfPage::as_filed(dom::Document& page, const std::function<void()>& act) {
  struct Replaced {
    explicit Replaced(const files::AddressedText& other) : before_{other.place, other.place.text()} {
      write(other);
    }
    ~Replaced() { write(before_); }
    Replaced(const Replaced&) = delete;
    static void write(const files::AddressedText& text) {
      const dom::MutationScope scope(dom::document_of(*text.place.element), dom::MutationKind::Overlay);
      text.place.set_text(text.text);
    }
    const files::AddressedText before_;
  };
  std::vector<files::Readdressed> others;
  for (const files::FileAddress& each : files::file_addresses(page, old_address_)) {
    if (!each.relative) read_known();
    const auto other = address_of(each);
    if (other && *other != each.written) others.emplace_back(each, *other);
  }
  std::deque<Replaced> replaced;
  for (const files::AddressedText& each : files::texts_with(others)) replaced.emplace_back(each);
  act();
}

}  // namespace tvx::htmled
