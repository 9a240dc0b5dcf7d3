#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/library/members/value.h"

/// Made once, in json.cpp: each unit that made its own would take seconds more.
extern template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace tvx::automation {

/// Objects keep the order in which they were written: answers read as they were thought.
using Json = nlohmann::ordered_json;

/// UTF-8 text of JSON; lone surrogates have become U+FFFD.
Json json_text(std::u16string_view text);
/// The text of a JSON string. Throws RuntimeError(13) for any other kind.
std::u16string text_of(const Json& json);

/// Objects travel as {"object": kind, ...}; elements with "tag", "sourceIndex" and "id".
Json to_json(const library::Value& value);
/// null, booleans, numbers, texts and lists. An object that stands for an element ({"object":"element",
/// "sourceIndex":n}) is resolved by `resolve`. Throws RuntimeError(13) for any other object.
class ObjectResolver {
 public:
  virtual ~ObjectResolver() = default;
  virtual library::Value resolve(const Json& object) const = 0;
};
library::Value from_json(const Json& json, const ObjectResolver* resolver = nullptr);

/// What a line is refused with, beside the system's own RuntimeErrors: JSON-RPC 2.0, section 5.1.
class ProtocolError : public std::exception {
 public:
  static constexpr int parse_error = -32700;
  static constexpr int invalid_request = -32600;
  static constexpr int method_not_found = -32601;
  static constexpr int invalid_params = -32602;
  static constexpr int internal_error = -32603;

  ProtocolError(int code, std::string text) : code_(code), text_(std::move(text)) {}
  int code() const { return code_; }
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  int code_;
  std::string text_;
};

/// The named parameters of a request. What is missing or of the wrong kind throws ProtocolError(-32602).
class Params {
 public:
  explicit Params(Json object) : object_(std::move(object)) {}

  const Json& object() const { return object_; }
  bool has(const char* name) const { return object_.contains(name); }
  /// Present and not null.
  bool given(const char* name) const { return has(name) && !object_[name].is_null(); }
  /// The parameter as it came; null when absent.
  const Json& raw(const char* name) const;

  std::u16string text(const char* name) const;
  std::u16string text_or(const char* name, std::u16string_view otherwise) const;
  bool flag_or(const char* name, bool otherwise) const;
  int number(const char* name) const;
  int number_or(const char* name, int otherwise) const;
  /// The elements of a list; none when absent or null.
  const std::vector<Json>& list(const char* name) const;
  /// An object of its own, with none of this one's parameters; empty when absent or null.
  Params part(const char* name) const;

 private:
  Json object_;
};

}  // namespace tvx::automation
