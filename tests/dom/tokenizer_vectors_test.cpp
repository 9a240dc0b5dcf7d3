#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "dom/parse_vectors.h"
#include "tvx/base/strings.h"
#include "tvx/dom/parser/tokenizer.h"

// The public tokenizer cases (html5lib-tests). Error codes are not compared: the tokenizer reports none.
// "xmlViolationTests" describe parsers that make XML trees, which this one doesn't.
namespace tvx::dom::parser {
namespace {

using nlohmann::json;

// Strings stay in 16-bit units, since some hold lone surrogates: \uXXXX is resolved here.
std::u16string unescape(const std::u16string& text) {
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\\' && i + 5 < text.size() && text[i + 1] == u'u') {
      result += static_cast<char16_t>(std::stoi(to_utf8(text.substr(i + 2, 4)), nullptr, 16));
      i += 5;
    } else {
      result += text[i];
    }
  }
  return result;
}

struct Reader {
  bool double_escaped = false;
  std::u16string operator()(const json& value) const {
    const std::u16string text = from_utf8(value.get<std::string>());
    return double_escaped ? unescape(text) : text;
  }
};

// A token as one line of text, so that lists compare and print.
std::u16string in_quotes(std::u16string_view text) { return u'"' + std::u16string(text) + u'"'; }

std::u16string tag_line(std::u16string line,
                        std::vector<std::pair<std::u16string, std::u16string>> attributes,
                        bool self_closing) {
  std::sort(attributes.begin(), attributes.end());
  for (const auto& [name, value] : attributes) line += u' ' + name + u'=' + in_quotes(value);
  return self_closing ? line + u" /" : line;
}

std::u16string id_text(bool present, const std::u16string& id) { return present ? in_quotes(id) : u"null"; }

std::vector<std::u16string> expected_lines(const json& test, const Reader& read) {
  std::vector<std::u16string> lines;
  for (const json& token : test["output"]) {
    const std::string kind = token[0];
    if (kind == "Character") {
      lines.push_back(u"text " + in_quotes(read(token[1])));
    } else if (kind == "Comment") {
      lines.push_back(u"comment " + in_quotes(read(token[1])));
    } else if (kind == "EndTag") {
      lines.push_back(u"end " + read(token[1]));
    } else if (kind == "StartTag") {
      std::vector<std::pair<std::u16string, std::u16string>> attributes;
      for (const auto& [name, value] : token[2].items()) attributes.emplace_back(read(name), read(value));
      lines.push_back(tag_line(u"start " + read(token[1]), attributes, token.size() > 3));
    } else {
      const auto part = [&](int i) { return token[i].is_null() ? std::u16string() : read(token[i]); };
      lines.push_back(u"doctype " + part(1) + u' ' + id_text(!token[2].is_null(), part(2)) + u' ' +
                      id_text(!token[3].is_null(), part(3)) +
                      (token[4].get<bool>() ? u" correct" : u" quirks"));
    }
  }
  return lines;
}

std::u16string line_of(const Token& token) {
  switch (token.kind) {
    case Token::Kind::Comment: return u"comment " + in_quotes(token.text);
    case Token::Kind::EndTag: return u"end " + token.name.text();
    case Token::Kind::StartTag: {
      std::vector<std::pair<std::u16string, std::u16string>> attributes;
      for (const Attribute& attribute : token.attributes)
        attributes.emplace_back(attribute.name.text(), attribute.value);
      return tag_line(u"start " + token.name.text(), attributes, token.self_closing);
    }
    case Token::Kind::DocumentType: {
      const auto& data = token.document_type;
      return u"doctype " + data.name + u' ' + id_text(data.has_public_id, data.public_id) + u' ' +
             id_text(data.has_system_id, data.system_id) + (data.force_quirks ? u" quirks" : u" correct");
    }
    default: return u"";
  }
}

std::vector<std::u16string> lines_of(std::u16string_view input, ContentModel model, const Name& last_tag) {
  Tokenizer tokenizer(input, Halves::Apart);
  tokenizer.set_content_model(model);
  tokenizer.set_last_start_tag(last_tag);
  std::vector<std::u16string> lines;
  std::u16string text;
  const auto flush = [&] {
    if (!text.empty()) lines.push_back(u"text " + in_quotes(text));
    text.clear();
  };
  Token token;
  for (tokenizer.next(token, false); token.kind != Token::Kind::EndOfFile; tokenizer.next(token, false)) {
    if (token.kind == Token::Kind::Text) {
      text += token.text;
    } else {
      flush();
      lines.push_back(line_of(token));
    }
  }
  flush();
  return lines;
}

ContentModel model_named(const std::string& state) {
  if (state == "PLAINTEXT state") return ContentModel::PlainText;
  if (state == "RCDATA state") return ContentModel::ReplaceableText;
  if (state == "RAWTEXT state") return ContentModel::RawText;
  if (state == "Script data state") return ContentModel::ScriptData;
  if (state == "CDATA section state") return ContentModel::CdataSection;
  EXPECT_EQ(state, "Data state");
  return ContentModel::Data;
}

std::string joined(const std::vector<std::u16string>& lines) {
  std::string text;
  for (const std::u16string& line : lines) text += to_utf8(line) + '\n';
  return text;
}

void check(const std::string& file, const json& test) {
  const Reader read{test.value("doubleEscaped", false)};
  const std::u16string input = read(test["input"]);
  const std::vector<std::u16string> expected = expected_lines(test, read);
  const Name last_tag(from_utf8(test.value("lastStartTag", "")));
  for (const std::string& state : test.value("initialStates", std::vector<std::string>{"Data state"})) {
    const std::vector<std::u16string> got = lines_of(input, model_named(state), last_tag);
    EXPECT_TRUE(got == expected) << file << ": " << test["description"] << " in " << state << "\ninput:\n"
                                 << to_utf8(input) << "\nexpected:\n"
                                 << joined(expected) << "got:\n"
                                 << joined(got);
  }
}

TEST(TokenizerVectors, EveryCaseGivesItsTokens) {
  const std::filesystem::path folder = vectors_folder("html-tokenizer");
  if (folder.empty()) GTEST_SKIP() << "the public tokenizer cases are not here";
  std::size_t cases = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".test") continue;
    const json all = json::parse(std::ifstream(entry.path()));
    if (!all.contains("tests")) continue;
    for (const json& test : all["tests"]) {
      check(entry.path().filename().string(), test);
      ++cases;
    }
  }
  EXPECT_GT(cases, 6000u);
}

}  // namespace
}  // namespace tvx::dom::parser
