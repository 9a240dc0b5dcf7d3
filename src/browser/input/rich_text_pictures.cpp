#include "tvx/browser/input/rich_text_pictures.h"

#include <charconv>

namespace tvx::browser {
namespace {

bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

int digit_of(char c) {
  if (is_digit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// One pass over the text, with a stack of its groups.
class PictureReader {
 public:
  explicit PictureReader(std::string_view text) : text_(text) {}

  std::vector<PastedPicture> run() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '{') {
        groups_.push_back(groups_.empty() ? Group{} : groups_.back());
        groups_.back().starts_picture = false;
        ++at_;
      } else if (c == '}') {
        end_group();
        ++at_;
      } else if (c == '\\') {
        read_control();
      } else {
        take_digit(c);
        ++at_;
      }
    }
    return std::move(pictures_);
  }

 private:
  struct Group {
    bool skipped = false;  // no picture of the text's is in it
    bool in_picture = false;
    bool starts_picture = false;  // the picture's bytes stand in it, and in no group within it
  };

  void end_group() {
    if (groups_.empty()) return;
    if (groups_.back().starts_picture) {
      if (type_.empty()) bytes_.clear();
      pictures_.push_back({std::move(bytes_), std::move(type_)});
      bytes_ = {};
      type_ = {};
    }
    groups_.pop_back();
  }

  void read_control() {
    ++at_;
    if (at_ >= text_.size()) return;
    if (!is_letter(text_[at_])) {
      ++at_;
      return;
    }
    const std::size_t start = at_;
    while (at_ < text_.size() && is_letter(text_[at_])) ++at_;
    const std::string_view word = text_.substr(start, at_ - start);
    long number = 0;
    const std::size_t digits = at_;
    if (at_ < text_.size() && text_[at_] == '-') ++at_;
    while (at_ < text_.size() && is_digit(text_[at_])) ++at_;
    std::from_chars(text_.data() + digits, text_.data() + at_, number);
    if (at_ < text_.size() && text_[at_] == ' ') ++at_;
    act(word, number);
  }

  void act(std::string_view word, long number) {
    if (word == "bin") return take_raw(number);
    if (groups_.empty()) return;
    Group& group = groups_.back();
    if (word == "nonshppict" || word == "listpicture") {
      group.skipped = true;
    } else if (word == "pict" && !group.skipped && !group.in_picture) {
      group.in_picture = group.starts_picture = true;
      half_ = -1;
    } else if (group.in_picture && word == "pngblip") {
      type_ = "image/png";
    } else if (group.in_picture && word == "jpegblip") {
      type_ = "image/jpeg";
    }
  }

  void take_raw(long count) {
    if (count <= 0) return;
    const std::string_view raw = text_.substr(at_, static_cast<std::size_t>(count));
    if (takes_data()) bytes_ += raw;
    at_ += raw.size();
  }

  void take_digit(char c) {
    const int digit = takes_data() ? digit_of(c) : -1;
    if (digit < 0) return;
    if (half_ < 0) {
      half_ = digit;
      return;
    }
    bytes_ += static_cast<char>(half_ << 4 | digit);
    half_ = -1;
  }

  bool takes_data() const { return !groups_.empty() && groups_.back().starts_picture; }

  std::string_view text_;
  std::size_t at_ = 0;
  std::vector<Group> groups_;
  std::vector<PastedPicture> pictures_;
  std::string bytes_, type_;
  int half_ = -1;  // the first digit of a byte
};

}  // namespace

std::vector<PastedPicture> pictures_of_rich_text(std::string_view text) {
  if (!text.starts_with("{\\rtf")) return {};
  return PictureReader(text).run();
}

}  // namespace tvx::browser
