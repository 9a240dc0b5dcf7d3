#include "tvx/dom/style/declarations.h"

#include <algorithm>
#include <cassert>

#include "tvx/base/work_count.h"
#include "tvx/dom/style/css_tokens.h"
#include "tvx/dom/style/shorthands.h"

namespace tvx::dom::style {
namespace {

std::u16string property_name(std::u16string_view name) {
  return name.starts_with(u"--") ? std::u16string(name) : ascii_lower(name);
}

std::u16string text_of(std::u16string_view name, std::u16string_view value, bool important) {
  std::u16string text(name);
  text += u": ";
  text += value;
  if (important) text += u" !important";
  return text;
}

bool sets(const Declaration& declaration, std::u16string_view longhand) {
  if (declaration.name == longhand) return true;
  const Shorthand* shorthand = find_shorthand(declaration.name);
  return shorthand && std::find(shorthand->longhands.begin(), shorthand->longhands.end(), longhand) !=
                          shorthand->longhands.end();
}

bool is_within(const std::vector<std::u16string_view>& some, const std::vector<std::u16string_view>& all) {
  return std::all_of(some.begin(), some.end(), [&](std::u16string_view name) {
    return std::find(all.begin(), all.end(), name) != all.end();
  });
}

bool overlap(const std::vector<std::u16string_view>& a, const std::vector<std::u16string_view>& b) {
  return std::any_of(a.begin(), a.end(), [&](std::u16string_view name) {
    return std::find(b.begin(), b.end(), name) != b.end();
  });
}

/// Whether a style attribute takes it at all: what is not valid loses to what is.
bool counts(const Declaration& declaration) { return is_valid_value(declaration.name, declaration.value); }

/// What a declaration says of a longhand that it sets; "" if that can't be told.
std::u16string said(const Declaration& declaration, std::u16string_view longhand) {
  if (declaration.name == longhand) return declaration.value;
  const Shorthand& shorthand = *find_shorthand(declaration.name);
  const auto expansion = expand(shorthand, declaration.value);
  if (!expansion) return {};
  const auto found = std::find(shorthand.longhands.begin(), shorthand.longhands.end(), longhand);
  return expansion->values[found - shorthand.longhands.begin()];
}

/// The values of all longhands of `name` when it has that value; empty if that can't be told.
std::vector<std::u16string> longhand_values(std::u16string_view name, std::u16string_view value) {
  const Shorthand* shorthand = find_shorthand(name);
  if (!shorthand) return {std::u16string(value)};
  auto expansion = expand(*shorthand, value);
  return expansion ? std::move(expansion->values) : std::vector<std::u16string>{};
}

/// Takes "!important" off the end of the tokens [from, to); returns whether it was there.
bool take_important(const std::vector<Token>& tokens, std::size_t from, std::size_t& to) {
  std::size_t at = to;
  const auto step_back = [&] {
    do --at;
    while (at > from && tokens[at].is_gap());
  };
  if (at <= from) return false;
  step_back();
  if (at <= from || !tokens[at].is_ident(u"important")) return false;
  step_back();
  if (!tokens[at].is_delim(u'!')) return false;
  to = at;
  while (to > from && tokens[to - 1].is_gap()) --to;
  return true;
}

/// CSS Syntax, "consume a declaration", over the tokens [from, to) without gaps at the ends.
std::optional<Declaration> parse_declaration(std::u16string_view text, const std::vector<Token>& tokens,
                                             std::size_t from, std::size_t to) {
  if (from == to || tokens[from].type != TokenType::Ident) return std::nullopt;
  std::size_t at = skip_gaps(tokens, from + 1);
  if (at >= to || tokens[at].type != TokenType::Colon) return std::nullopt;
  Declaration declaration;
  declaration.name = property_name(tokens[from].value);
  std::size_t begin = std::min(skip_gaps(tokens, at + 1), to);
  declaration.important = take_important(tokens, begin, to);
  if (begin >= to) return std::nullopt;
  for (at = begin; at < to; ++at) {
    if (tokens[at].type == TokenType::BadString || tokens[at].type == TokenType::BadUrl) return std::nullopt;
  }
  declaration.value = text.substr(tokens[begin].begin, tokens[to - 1].end - tokens[begin].begin);
  return declaration;
}

/// Whether what stands after the last of these tokens would fall into them.
bool is_open(std::u16string_view text, const std::vector<Token>& tokens, std::size_t from, std::size_t to) {
  if (from == to) return false;
  std::size_t at = from;
  while (at < to) {
    const std::size_t next = skip_component(tokens, at);
    if (next >= to) return leaves_open(text.substr(tokens[at].begin, tokens[to - 1].end - tokens[at].begin));
    at = next;
  }
  return false;
}

std::size_t end_of_part(const std::vector<Token>& tokens, std::size_t at) {
  const std::size_t first = skip_gaps(tokens, at);
  const bool at_rule = tokens[first].type == TokenType::AtKeyword;
  for (at = first; tokens[at].type != TokenType::End && tokens[at].type != TokenType::Semicolon;) {
    const bool block = tokens[at].type == TokenType::OpenBrace;
    at = skip_component(tokens, at);
    if (at_rule && block) break;
  }
  return at;
}

}  // namespace

void Declarations::parse(std::u16string_view text) {
  const std::vector<Token> tokens = tokenize(text);
  const auto slice = [&](std::size_t from, std::size_t to) {
    return from == to
               ? std::u16string()
               : std::u16string(text.substr(tokens[from].begin, tokens[to - 1].end - tokens[from].begin));
  };
  for (std::size_t at = 0; tokens[at].type != TokenType::End;) {
    const std::size_t end = end_of_part(tokens, at);
    const std::size_t first = std::min(skip_gaps(tokens, at), end);
    std::size_t last = end;
    while (last > first && tokens[last - 1].is_gap()) --last;
    Part part{slice(at, first),
              slice(first, last),
              slice(last, end),
              parse_declaration(text, tokens, first, last),
              tokens[end].type == TokenType::Semicolon,
              false};
    part.open = tokens[end].type == TokenType::End && is_open(text, tokens, at, end);
    at = part.terminated ? end + 1 : end;
    parts_.push_back(std::move(part));
    count_work();
  }
}

std::u16string Declarations::css_text() const {
  std::u16string text;
  for (const Part& part : parts_) {
    text += part.before + part.text + part.after;
    if (part.terminated) text += u';';
  }
  return text;
}

std::size_t Declarations::length() const {
  return std::count_if(parts_.begin(), parts_.end(),
                       [](const Part& part) { return part.declaration.has_value(); });
}

const Declaration& Declarations::item(std::size_t index) const {
  for (const Part& part : parts_) {
    if (part.declaration && index-- == 0) return *part.declaration;
  }
  assert(!"no such declaration");
  static const Declaration none;
  return none;
}

std::vector<const Declaration*> Declarations::list() const {
  std::vector<const Declaration*> all;
  for (const Part& part : parts_) {
    if (part.declaration) all.push_back(&*part.declaration);
  }
  return all;
}

Declarations::Winner Declarations::winner(std::u16string_view longhand, std::u16string_view without) const {
  Winner best;
  for (const Part& part : parts_) {
    if (!part.declaration || part.declaration->name == without || !sets(*part.declaration, longhand))
      continue;
    if (best.part && best.part->declaration->important && !part.declaration->important) continue;
    if (counts(*part.declaration)) best.part = &part;
  }
  if (best.part) best.value = said(*best.part->declaration, longhand);
  return best;
}

std::u16string Declarations::value_of(std::u16string_view name, std::u16string_view without) const {
  const Shorthand* shorthand = find_shorthand(name);
  if (!shorthand) return winner(name, without).value;
  std::vector<std::u16string> values;
  std::vector<const Part*> parts;
  for (const std::u16string_view longhand : shorthand->longhands) {
    Winner best = winner(longhand, without);
    if (!best.part) return {};
    parts.push_back(best.part);
    values.push_back(std::move(best.value));
  }
  const Part* first = parts.front();
  const bool one = std::all_of(parts.begin(), parts.end(), [&](const Part* part) { return part == first; });
  if (one && first->declaration->name == name) return first->declaration->value;
  const bool same_weight = std::all_of(parts.begin(), parts.end(), [&](const Part* part) {
    return part->declaration->important == first->declaration->important;
  });
  const bool untold =
      std::any_of(values.begin(), values.end(), [](const auto& value) { return value.empty(); });
  if (!same_weight || untold) return {};
  return compose(*shorthand, values).value_or(u"");
}

std::u16string Declarations::get(std::u16string_view name) const { return value_of(property_name(name)); }

bool Declarations::is_important(std::u16string_view name) const {
  const std::u16string key = property_name(name);
  const std::vector<std::u16string_view> longhands = longhands_of(key);
  return std::all_of(longhands.begin(), longhands.end(), [&](std::u16string_view longhand) {
    const Winner best = winner(longhand);
    return best.part && best.part->declaration->important;
  });
}

bool Declarations::set(std::u16string_view name, std::u16string_view value, Important important) {
  const std::u16string key = property_name(name);
  value = trimmed(value);
  if (key.empty()) return false;
  if (value.empty()) return !get(key).empty() && remove(key);
  const std::u16string written = normalised_value(key, value);
  if (!is_valid_value(key, written)) return false;
  const std::u16string now = get(key);
  if (is_important(key) == (important == Important::Yes) && normalised_value(key, now) == written)
    return false;
  if (drop_if_said_elsewhere(key, written, important)) return true;
  if (set_in_place(key, written, important)) return true;
  if (set_in_shorthand(key, written, important)) return true;
  const std::vector<std::u16string_view> longhands = longhands_of(key);
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (!parts_[i].declaration) continue;
    const bool stronger = parts_[i].declaration->important && important == Important::No;
    if (is_within(longhands_of(parts_[i].declaration->name), longhands)) {
      erase(i--);
    } else if (stronger) {
      take_out(i, longhands);
    }
  }
  append(key, written, important);
  return true;
}

/// A declaration of its own that only says what another says already goes away: writing a value and writing
/// the old one back leaves what was there.
bool Declarations::drop_if_said_elsewhere(std::u16string_view name, std::u16string_view value,
                                          Important important) {
  if (important == Important::Yes || value_of(name, name) != value) return false;
  bool dropped = false;
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (!parts_[i].declaration || parts_[i].declaration->name != name) continue;
    erase(i--);
    dropped = true;
  }
  return dropped;
}

bool Declarations::set_in_place(std::u16string_view name, std::u16string_view value, Important important) {
  const Part* own = nullptr;
  for (const std::u16string_view longhand : longhands_of(name)) {
    const Winner best = winner(longhand);
    if (!best.part || best.part->declaration->name != name || (own && own != best.part)) return false;
    own = best.part;
  }
  // Taking "!important" away could give the word to another declaration.
  if (own->declaration->important != (important == Important::Yes)) return false;
  Part& part = parts_[own - parts_.data()];
  const std::u16string& old_value = part.declaration->value;
  const std::size_t at = part.text.find(old_value, part.declaration->name.size());
  if (at == std::u16string::npos) {
    part.text = text_of(name, value, part.declaration->important);
  } else {
    part.text.replace(at, old_value.size(), value);
  }
  part.open = part.open && leaves_open(part.after);  // a comment after the value stays
  part.declaration->value = value;
  return true;
}

bool Declarations::set_in_shorthand(std::u16string_view name, std::u16string_view value,
                                    Important important) {
  const std::vector<std::u16string_view> longhands = longhands_of(name);
  const Part* holder = nullptr;
  for (const std::u16string_view longhand : longhands) {
    const Winner best = winner(longhand);
    if (!best.part || (holder && holder != best.part)) return false;
    holder = best.part;
  }
  const Shorthand* shorthand = find_shorthand(holder->declaration->name);
  const std::vector<std::u16string> values = longhand_values(name, value);
  if (!shorthand || shorthand->name == name || values.empty() ||
      holder->declaration->important != (important == Important::Yes)) {
    return false;
  }
  std::vector<std::optional<std::u16string>> changes(shorthand->longhands.size());
  for (std::size_t i = 0; i < longhands.size(); ++i) {
    const auto found = std::find(shorthand->longhands.begin(), shorthand->longhands.end(), longhands[i]);
    changes[found - shorthand->longhands.begin()] = values[i];
  }
  const std::u16string holder_name(shorthand->name);
  const auto rewritten = rewrite(*shorthand, holder->declaration->value, changes);
  return rewritten && set_in_place(holder_name, *rewritten, important);
}

bool Declarations::remove(std::u16string_view name) {
  const std::u16string key = property_name(name);
  const std::vector<std::u16string_view> longhands = longhands_of(key);
  bool changed = false;
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (!parts_[i].declaration) continue;
    const std::vector<std::u16string_view> held = longhands_of(parts_[i].declaration->name);
    if (is_within(held, longhands)) {
      erase(i--);
      changed = true;
    } else if (overlap(held, longhands)) {
      changed |= take_out(i, longhands);
    }
  }
  return changed;
}

/// Takes longhands out of the shorthand at `index`; what else it says out loud stays, as declarations in its
/// place. `index` is left at the last of these. False if it can't be taken apart.
bool Declarations::take_out(std::size_t& index, const std::vector<std::u16string_view>& longhands) {
  const Declaration declaration = *parts_[index].declaration;
  const Shorthand* shorthand = find_shorthand(declaration.name);
  const auto expansion = shorthand ? expand(*shorthand, declaration.value) : std::nullopt;
  if (!expansion || !overlap(shorthand->longhands, longhands)) return false;
  std::vector<std::u16string_view> rest;
  for (std::size_t i = 0; i < shorthand->longhands.size(); ++i) {
    if (expansion->origins[i] >= 0 && !is_within({shorthand->longhands[i]}, longhands)) {
      rest.push_back(shorthand->longhands[i]);
    }
  }
  Declarations remains;
  for (const Shorthand& candidate : all_shorthands()) {
    if (!is_within(candidate.longhands, rest)) continue;
    std::vector<std::u16string> values;
    for (const std::u16string_view longhand : candidate.longhands)
      values.push_back(said(declaration, longhand));
    const auto value = compose(candidate, values);
    if (!value) continue;
    remains.append(candidate.name, *value, Important(declaration.important));
    std::erase_if(rest, [&](std::u16string_view name) { return is_within({name}, candidate.longhands); });
  }
  for (const std::u16string_view longhand : rest) {
    remains.append(longhand, said(declaration, longhand), Important(declaration.important));
  }
  if (remains.parts_.empty()) {
    erase(index--);
    return true;
  }
  remains.parts_.front().before = parts_[index].before;
  remains.parts_.back().after = parts_[index].after;
  remains.parts_.back().terminated = parts_[index].terminated;
  remains.parts_.back().open = parts_[index].open && leaves_open(parts_[index].after);
  const std::size_t count = remains.parts_.size();
  parts_.erase(parts_.begin() + index);
  parts_.insert(parts_.begin() + index, std::make_move_iterator(remains.parts_.begin()),
                std::make_move_iterator(remains.parts_.end()));
  index += count - 1;
  return true;
}

/// Puts a declaration at the end, in the punctuation that is there: a text without a last ";" stays so.
void Declarations::append(std::u16string_view name, std::u16string_view value, Important important) {
  const bool weight = important == Important::Yes;
  Part part{u"",   text_of(name, value, weight),
            u"",   Declaration{std::u16string(name), std::u16string(value), weight},
            false, false};
  std::size_t place = parts_.size();
  const auto is_blank = [](const Part& p) { return p.text.empty() && trimmed(p.before + p.after).empty(); };
  if (place && is_blank(parts_.back()) && !parts_.back().terminated) --place;
  if (place == 0) {
    parts_.clear();
  } else if (parts_[place - 1].open) {
    // After it nothing would be read. It stays last.
    --place;
    part.terminated = true;
    part.before = place ? u" " : u"";
    if (parts_[place].before.empty() && !parts_[place].text.empty()) parts_[place].before = u" ";
  } else {
    part.terminated = parts_[place - 1].terminated;
    parts_[place - 1].terminated = true;
    part.before = u" ";
  }
  parts_.insert(parts_.begin() + std::min(place, parts_.size()), std::move(part));
}

void Declarations::erase(std::size_t index) {
  const bool is_last = index + 1 == parts_.size();
  if (is_last && index > 0 && !parts_[index].terminated) {
    parts_[index - 1].terminated = false;
  } else if (!is_last && index == 0 && trimmed(parts_[1].before).empty()) {
    parts_[1].before = parts_[0].before;
  }
  parts_.erase(parts_.begin() + index);
}

}  // namespace tvx::dom::style
