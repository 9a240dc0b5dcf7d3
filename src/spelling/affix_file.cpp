#include "tvx/spelling/affix_file.h"

#include <algorithm>
#include <map>

#include "tvx/base/code_page.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"

namespace tvx::spelling {

namespace {

// The largest that are in use have 20 MB.
constexpr std::size_t largest_affixes = std::size_t{32} << 20, largest_words = std::size_t{128} << 20;

/// Tables whose first row says how many more there are. The number stands in this column.
const std::map<std::string_view, std::size_t> counted{
    {"PFX", 3}, {"SFX", 3}, {"REP", 1},   {"MAP", 1},   {"PHONE", 1},        {"BREAK", 1},
    {"AF", 1},  {"AM", 1},  {"ICONV", 1}, {"OCONV", 1}, {"COMPOUNDRULE", 1}, {"CHECKCOMPOUNDPATTERN", 1}};

std::vector<std::string_view> fields_of(std::string_view line) {
  std::vector<std::string_view> fields;
  for (std::size_t at = line.find_first_not_of(" \t\r"); at != line.npos;) {
    const std::size_t end = std::min(line.find_first_of(" \t\r", at), line.size());
    fields.push_back(line.substr(at, end - at));
    at = line.find_first_not_of(" \t\r", end);
  }
  return fields;
}

bool is_number(std::string_view text) {
  return !text.empty() && text.size() < 10 &&
         std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// Goes through the tables and counts their rows.
class Tables {
 public:
  /// False: the row is none of the table that should go on here.
  bool read(std::string_view line) {
    const auto fields = fields_of(line);
    if (fields.empty() || fields[0].starts_with('#')) return true;
    const auto table = counted.find(fields[0]);
    if (missing_ > 0) {
      if (fields[0] != name_) return false;
      --missing_;
      return true;
    }
    if (table != counted.end()) {
      if (fields.size() <= table->second || !is_number(fields[table->second])) return true;
      name_ = fields[0];
      missing_ = std::stoi(std::string(fields[table->second]));
    }
    if (fields[0] == "SET" && fields.size() > 1) known_letters_ = CodePage::by_name(fields[1]).has_value();
    return true;
  }
  bool whole() const { return missing_ == 0; }
  bool known_letters() const { return known_letters_; }

 private:
  std::string name_;
  int missing_ = 0;
  bool known_letters_ = true;
};

}  // namespace

std::optional<std::u16string> damage_of(const std::string& affixes, const std::string& words) {
  const auto rules = read_bytes(from_utf8(affixes), largest_affixes);
  if (!rules) return u"its rules can't be read";
  if (rules->find_first_not_of(" \t\r\n") == rules->npos) return u"its rules are empty";
  Tables tables;
  for (std::size_t at = 0; at < rules->size();) {
    const std::size_t end = std::min(rules->find('\n', at), rules->size());
    if (!tables.read(std::string_view(*rules).substr(at, end - at)))
      return u"its rules are cut off in a table";
    at = end + 1;
  }
  if (!tables.whole()) return u"its rules are cut off";
  if (!tables.known_letters()) return u"its letters are in an unknown code";

  const auto list = read_bytes(from_utf8(words), largest_words);
  if (!list) return u"its words can't be read";
  std::string_view first = std::string_view(*list).substr(0, list->find('\n'));
  if (first.starts_with("\xEF\xBB\xBF")) first.remove_prefix(3);
  const auto fields = fields_of(first);
  if (fields.empty() || !is_number(fields[0])) return u"its words don't say how many they are";
  return std::nullopt;
}

}  // namespace tvx::spelling
