#include "tvx/transfer/listing_parser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <ctime>
#include <optional>
#include <vector>

#include "tvx/base/code_page.h"
#include "tvx/base/strings.h"
#include "tvx/transfer/name_pattern.h"

namespace tvx::transfer {
namespace {

using platform::ListingForm;

std::u16string text_of(std::string_view bytes) {
  std::u16string text = from_utf8(bytes);
  // Old servers send names in the code page of their country, of which this is the commonest.
  if (text.find(u'\uFFFD') != std::u16string::npos && bytes.find("\xEF\xBF\xBD") == std::string_view::npos)
    return CodePage::windows_1252().decode(bytes);
  return text;
}

template <class Number = std::int64_t>
std::optional<Number> number_in(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return {};
  return number;
}

/// A word of a line, and where in the line it stands.
struct Word {
  std::string_view text;
  std::size_t start, end;
};

std::vector<Word> words_of(std::string_view line, std::size_t most) {
  std::vector<Word> words;
  std::size_t at = 0;
  while (words.size() < most) {
    const std::size_t start = line.find_first_not_of(" \t", at);
    if (start == std::string_view::npos) break;
    at = std::min(line.find_first_of(" \t", start), line.size());
    words.push_back({line.substr(start, at - start), start, at});
  }
  return words;
}

// --- dates ---

struct DayAndTime {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

bool is_real(const DayAndTime& time) {
  return time.year >= 1601 && time.year <= 9999 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
         time.day <= 31 && time.hour >= 0 && time.hour <= 24 && time.minute >= 0 && time.minute <= 59 &&
         time.second >= 0 && time.second <= 60;
}

/// Days since 1970-01-01 (the civil calendar counted from March, so that the leap day comes last).
std::int64_t day_number(int year, int month, int day) {
  year -= month <= 2;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t year_of_era = year - era * 400;
  const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year - 719468;
}

std::int64_t seconds_of(const DayAndTime& time) {
  return day_number(time.year, time.month, time.day) * 86400 + time.hour * 3600 + time.minute * 60 +
         time.second;
}

/// As it stands, whatever zone the server is in.
double date_of(const DayAndTime& time) {
  constexpr double days_until_1970 = 25569;
  return days_until_1970 + static_cast<double>(seconds_of(time)) / 86400.0;
}

bool read_clock(std::string_view text, DayAndTime& time) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return false;
  std::string_view minute = text.substr(colon + 1);
  std::string_view half;
  if (minute.size() > 2 && minute[2] != ':') {
    half = minute.substr(2);
    minute = minute.substr(0, 2);
  } else {
    minute = minute.substr(0, std::min(minute.find_first_of(":."), minute.size()));
  }
  const auto hours = number_in<int>(text.substr(0, colon)), minutes = number_in<int>(minute);
  if (!hours || !minutes) return false;
  time.hour = *hours;
  time.minute = *minutes;
  if (half.empty()) return true;
  const bool afternoon = half == "PM" || half == "pm";
  if (!afternoon && half != "AM" && half != "am") return false;
  time.hour = time.hour % 12 + (afternoon ? 12 : 0);
  return true;
}

int month_called(std::string_view name) {
  static constexpr std::array<std::string_view, 12> months = {"jan", "feb", "mar", "apr", "may", "jun",
                                                              "jul", "aug", "sep", "oct", "nov", "dec"};
  if (name.size() < 3) return 0;
  std::string lower(name.substr(0, 3));
  for (char& letter : lower)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + 0x20);
  const auto found = std::ranges::find(months, lower);
  return found == months.end() ? 0 : static_cast<int>(found - months.begin()) + 1;
}

/// Of a time without a year: this year, or the last one where that would be yet to come.
int year_lately(const DayAndTime& time, std::int64_t now) {
  constexpr std::int64_t a_day = 86400;
  const std::time_t present = now;
  std::tm utc{};
  gmtime_r(&present, &utc);
  DayAndTime this_year = time;
  this_year.year = utc.tm_year + 1900;
  return seconds_of(this_year) > now + a_day ? this_year.year - 1 : this_year.year;
}

/// 20260102030405.123
std::optional<std::int64_t> file_time_of_fact(std::string_view text) {
  if (text.size() < 14) return {};
  const auto part = [&](std::size_t from, std::size_t size) {
    return number_in<int>(text.substr(from, size)).value_or(-1);
  };
  const DayAndTime time{part(0, 4), part(4, 2), part(6, 2), part(8, 2), part(10, 2), part(12, 2)};
  if (!is_real(time)) return {};
  return (seconds_of(time) + 11'644'473'600) * 10'000'000;
}

DirectoryFacts facts_without_times() {
  const double none = FileTimeToDate(0);
  return {.attributes = attribute_normal, .creation = none, .last_access = none, .last_write = none};
}

// --- the three forms ---

std::string lower_case(std::string_view text) {
  std::string result(text);
  for (char& letter : result)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + 0x20);
  return result;
}

enum class Line : std::uint8_t { Entry, Nothing, Nonsense };

void apply_fact(std::string_view name, std::string_view value, ListedEntry& entry, bool& listed_folder) {
  const std::string key = lower_case(name);
  if (key == "type") {
    const std::string type = lower_case(value);
    if (type == "dir") entry.facts.attributes = attribute_directory;
    listed_folder = type == "cdir" || type == "pdir";
  } else if (key == "size") {
    entry.facts.size = number_in<std::uint64_t>(value).value_or(0);
  } else if (key == "modify" || key == "create") {
    if (const auto time = file_time_of_fact(value))
      (key == "modify" ? entry.facts.last_write : entry.facts.creation) = FileTimeToDate(*time);
  }
}

/// RFC 3659, section 7.2.
Line read_facts(std::string_view line, ListedEntry& entry) {
  const std::size_t end = line.find(' ');
  if (end == std::string_view::npos) return Line::Nonsense;
  std::string_view facts = line.substr(0, end);
  if (!facts.empty() && facts.find('=') == std::string_view::npos) return Line::Nonsense;
  bool listed_folder = false;
  while (!facts.empty()) {
    const std::size_t semicolon = std::min(facts.find(';'), facts.size());
    const std::string_view fact = facts.substr(0, semicolon);
    facts.remove_prefix(std::min(semicolon + 1, facts.size()));
    const std::size_t equals = fact.find('=');
    if (equals != std::string_view::npos)
      apply_fact(fact.substr(0, equals), fact.substr(equals + 1), entry, listed_folder);
  }
  entry.name = text_of(line.substr(end + 1));
  return listed_folder ? Line::Nothing : Line::Entry;
}

/// "11-22-26  05:59AM       <DIR>          pictures"
bool read_dos(std::string_view line, ListedEntry& entry) {
  const std::vector<Word> words = words_of(line, 3);
  if (words.size() < 3) return false;
  const std::string_view day = words[0].text;
  const std::size_t first = day.find_first_of("-/."), second = day.find_first_of("-/.", first + 1);
  if (first == std::string_view::npos || second == std::string_view::npos) return false;
  const auto a = number_in<int>(day.substr(0, first)),
             b = number_in<int>(day.substr(first + 1, second - first - 1)),
             c = number_in<int>(day.substr(second + 1));
  if (!a || !b || !c) return false;
  DayAndTime time{.year = *c, .month = *a, .day = *b};
  if (first == 4) time = {.year = *a, .month = *b, .day = *c};
  if (time.year < 100) time.year += time.year < 70 ? 2000 : 1900;
  if (!read_clock(words[1].text, time) || !is_real(time)) return false;
  const bool folder = words[2].text == "<DIR>" || words[2].text == "<JUNCTION>";
  const auto size = number_in<std::uint64_t>(words[2].text);
  if (!folder && !size) return false;
  // A size ends where the names begin but for one blank; after the longer mark of a folder there are more.
  std::size_t name = words[2].end + 1;
  if (folder) name = words[2].start + 15;
  if (folder &&
      (name > line.size() ||
       line.substr(words[2].end, name - words[2].end).find_first_not_of(' ') != std::string_view::npos))
    name = std::min(line.find_first_not_of(' ', words[2].end), line.size());
  if (name >= line.size()) return false;
  if (folder) entry.facts.attributes = attribute_directory;
  entry.facts.size = size.value_or(0);
  entry.facts.last_write = date_of(time);
  entry.name = text_of(line.substr(name));
  return true;
}

/// The date from the word `at` on: "Nov 22 05:59", "Nov 22  2025", "2026-11-22 05:59". Gives the last word of
/// it.
std::optional<std::size_t> read_unix_date(const std::vector<Word>& words, std::size_t at, std::int64_t now,
                                          DayAndTime& time) {
  if (const int month = month_called(words[at].text); month > 0 && at + 2 < words.size()) {
    const auto day = number_in<int>(words[at + 1].text);
    if (!day) return {};
    time = {.month = month, .day = *day};
    if (const auto year = number_in<int>(words[at + 2].text)) {
      time.year = *year;
    } else {
      if (!read_clock(words[at + 2].text, time)) return {};
      time.year = year_lately(time, now);
    }
    return is_real(time) ? std::optional(at + 2) : std::nullopt;
  }
  const std::string_view text = words[at].text;
  if (text.size() != 10 || text[4] != '-' || text[7] != '-' || at + 1 >= words.size()) return {};
  time = {.year = number_in<int>(text.substr(0, 4)).value_or(0),
          .month = number_in<int>(text.substr(5, 2)).value_or(0),
          .day = number_in<int>(text.substr(8, 2)).value_or(0)};
  if (!read_clock(words[at + 1].text, time) || !is_real(time)) return {};
  return at + 1;
}

/// "drwxr-xr-x   2 ada users     4096 Nov 22 05:59 pictures". What stands between the rights and the size
/// differs from server to server; the size is the number before the date.
bool read_unix(std::string_view line, std::int64_t now, ListedEntry& entry) {
  if (line.size() < 10 || std::string_view("-dlbcpsD").find(line[0]) == std::string_view::npos) return false;
  if (std::string_view("r-").find(line[1]) == std::string_view::npos) return false;
  const std::vector<Word> words = words_of(line, 14);
  for (std::size_t i = 2; i < words.size(); ++i) {
    const auto size = number_in<std::uint64_t>(words[i - 1].text);
    DayAndTime time;
    const auto last = size ? read_unix_date(words, i, now, time) : std::nullopt;
    if (!last || words[*last].end + 1 >= line.size()) continue;
    // One blank parts the date from the name: more of them are the name's own.
    std::string_view name = line.substr(words[*last].end + 1);
    if (line[0] == 'l') name = name.substr(0, name.find(" -> "));
    if (line[0] == 'd') entry.facts.attributes = attribute_directory;
    entry.facts.size = *size;
    entry.facts.last_write = date_of(time);
    entry.name = text_of(name);
    return true;
  }
  return false;
}

Line read_line(ListingForm form, std::string_view line, std::int64_t now, ListedEntry& entry) {
  if (line.find_first_not_of(" \t") == std::string_view::npos) return Line::Nothing;
  if (form == ListingForm::Facts) return read_facts(line, entry);
  if (line.starts_with("total ") && number_in(line.substr(6))) return Line::Nothing;
  return read_unix(line, now, entry) || read_dos(line, entry) ? Line::Entry : Line::Nonsense;
}

}  // namespace

void ListingParser::add(std::string_view bytes) {
  // A listing without a line's end must not take all memory.
  constexpr std::size_t longest_line = 65536;
  for (std::size_t end; (end = bytes.find('\n')) != std::string_view::npos;) {
    rest_ += bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
    add_line(rest_);
    rest_.clear();
  }
  if (rest_.size() < longest_line) rest_ += bytes;
}

void ListingParser::finish() {
  add_line(rest_);
  rest_.clear();
}

void ListingParser::add_line(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  ListedEntry entry{.facts = facts_without_times()};
  const Line read = read_line(form_, line, now_, entry);
  if (read == Line::Nothing) return;
  if (read == Line::Nonsense) {
    ++skipped_;
    return;
  }
  entry.name = entry.name.substr(0, entry.name.find(u'\0'));
  if (entry.name == u"." || entry.name == u"..") return;
  if (!stays_in_folder(entry.name)) {
    ++skipped_;
    return;
  }
  entries_.push_back(std::move(entry));
}

}  // namespace tvx::transfer
