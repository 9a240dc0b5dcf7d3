#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/browser/view/messages.h"

class QJsonArray;
class QString;

/// The words between web_view.cpp and the scripts of view/. Down go arrays in JSON, the page's number first;
/// up come the page's number, the last patch it had applied, and its messages.
namespace tvx::qt {

/// One command for a page. Texts are written with escapes, so that lone surrogates arrive as they are.
class CommandWriter {
 public:
  CommandWriter(int page, std::string_view command);
  CommandWriter& add(std::int64_t number);
  CommandWriter& add(bool value);
  CommandWriter& add(std::u16string_view text);
  CommandWriter& open();
  CommandWriter& close();
  QString finish();

 private:
  void separate();
  std::u16string out_;
  bool first_ = false;
};

QString patch_command(int page, const browser::Patch& patch);
QString select_command(int page, const browser::ViewSelection& selection);
QString ask_command(int page, const browser::ViewQuestion& question);

/// What came up.
struct PageReport {
  int page = 0;
  std::vector<browser::ViewMessage> messages;
  bool ready = false;
};
std::optional<PageReport> read_report(const QString& text);

}  // namespace tvx::qt
