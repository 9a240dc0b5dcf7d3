#include "tvx/library/objects/object_path.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx::library {

namespace {

constexpr int object_required = 424;

class PathReader {
 public:
  explicit PathReader(std::u16string_view path) : path_(path) {}

  std::vector<PathStep> read() {
    std::vector<PathStep> steps;
    do {
      steps.push_back(step());
      // `tags("p")(0)`: an item of what the call gives.
      while (peek() == u'(') steps.push_back(arguments_of({}));
    } while (take(u'.'));
    if (at_ != path_.size()) fail();
    return steps;
  }

 private:
  [[noreturn]] void fail() const {
    throw RuntimeError(errors::invalid_call, u"No path: " + std::u16string(path_));
  }

  char16_t peek() const { return at_ < path_.size() ? path_[at_] : u'\0'; }
  bool take(char16_t c) {
    while (peek() == u' ') ++at_;
    if (peek() != c) return false;
    ++at_;
    return true;
  }

  std::u16string name() {
    while (peek() == u' ') ++at_;
    const std::size_t start = at_;
    while (is_ascii_alpha(peek()) || is_ascii_digit(peek()) || peek() == u'_') ++at_;
    if (at_ == start) fail();
    return std::u16string(path_.substr(start, at_ - start));
  }

  PathStep step() { return arguments_of(name()); }

  PathStep arguments_of(std::u16string name) {
    PathStep step{std::move(name), {}};
    if (!take(u'(') || take(u')')) return step;
    do step.arguments.push_back(argument());
    while (take(u','));
    if (!take(u')')) fail();
    return step;
  }

  Value argument() {
    if (take(u'"')) return quoted(u'"');
    if (take(u'\'')) return quoted(u'\'');
    if (is_ascii_alpha(peek())) return word();
    const std::size_t start = at_;
    while (is_ascii_digit(peek()) || peek() == u'-' || peek() == u'.') ++at_;
    const Value text(path_.substr(start, at_ - start));
    if (start == at_) fail();
    return contains(path_.substr(start, at_ - start), u".") ? Value(text.to_number())
                                                            : Value(text.to_integer32());
  }

  Value word() {
    const std::u16string text = name();
    if (equals_ignoring_ascii_case(text, u"True")) return true;
    if (equals_ignoring_ascii_case(text, u"False")) return false;
    if (equals_ignoring_ascii_case(text, u"Nothing") || equals_ignoring_ascii_case(text, u"Null")) return {};
    fail();
  }

  Value quoted(char16_t quote) {
    std::u16string text;
    while (at_ < path_.size()) {
      const char16_t c = path_[at_++];
      if (c != quote)
        text += c;
      else if (peek() == quote)
        text += path_[at_++];
      else
        return text;
    }
    fail();
  }

  std::u16string_view path_;
  std::size_t at_ = 0;
};

/// A step without a name is an item.
Value taken(library::Object& object, PathStep& step) {
  return step.name.empty() ? object.item(step.arguments) : object.invoke(step.name, step.arguments);
}

/// The object on which the last step works. Empty: on the root itself.
ObjectHandle holder_of(Object& root, std::vector<PathStep>& steps) {
  ObjectHandle holder;
  for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
    const Value value = taken(holder ? *holder : root, steps[i]);
    if (value.is_null())
      throw RuntimeError(errors::object_not_set, u"Object variable not set: " + steps[i].name);
    if (!value.is_object()) throw RuntimeError(object_required, u"Object required: " + steps[i].name);
    holder = value.to_object();
  }
  return holder;
}

}  // namespace

std::vector<PathStep> parse_path(std::u16string_view path) { return PathReader(path).read(); }

Value read_path(Object& root, std::vector<PathStep>& steps) {
  const ObjectHandle holder = holder_of(root, steps);
  return taken(holder ? *holder : root, steps.back());
}

void write_path(Object& root, std::vector<PathStep>& steps, const Value& value) {
  const ObjectHandle holder = holder_of(root, steps);
  if (!steps.back().arguments.empty()) read_only_member();
  (holder ? *holder : root).set(steps.back().name, value);
}

}  // namespace tvx::library
