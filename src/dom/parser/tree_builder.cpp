#include "tvx/dom/parser/tree_builder.h"

#include "tvx/base/small_objects.h"
#include "tvx/base/work_count.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/parser/foreign_names.h"

namespace tvx::dom::parser {

TreeBuilder::TreeBuilder(Document& document, std::u16string_view html)
    : document_(document), tokenizer_(html) {}

TreeBuilder::TreeBuilder(Document& document, std::u16string_view html, const FragmentContext& context)
    : document_(document), tokenizer_(html) {
  set_up_fragment(context);
}

TreeBuilder::~TreeBuilder() = default;

// HTML standard, section 13.4 "parsing HTML fragments".
void TreeBuilder::set_up_fragment(const FragmentContext& context) {
  compatibility_mode_ = context.compatibility_mode;
  context_ = document_.create_element(context.name, context.name_space);
  if (!context.encoding.empty()) Builder::add_attribute(*context_, {names::encoding, context.encoding});
  tokenizer_.set_last_start_tag(context.name);
  switch (context_->tag()) {
    case Tag::Title:
    case Tag::Textarea: tokenizer_.set_content_model(ContentModel::ReplaceableText); break;
    case Tag::Style:
    case Tag::Xmp:
    case Tag::Iframe:
    case Tag::Noembed:
    case Tag::Noframes: tokenizer_.set_content_model(ContentModel::RawText); break;
    case Tag::Script: tokenizer_.set_content_model(ContentModel::ScriptData); break;
    case Tag::Plaintext: tokenizer_.set_content_model(ContentModel::PlainText); break;
    case Tag::Template: template_modes_.push_back(InsertionMode::InTemplate); break;
    default: break;
  }
  root_ = document_.create_element(Tag::Html);
  stack_.push(*root_);
  reset_insertion_mode();
  // Which form it is doesn't matter, only that there is one.
  if (context.inside_form) form_ = document_.create_element(Tag::Form);
}

void TreeBuilder::run() {
  const SmallObjectsToCome nodes([this] { return tokenizer_.part_read(); });
  while (!stopped_) {
    const bool foreign = !stack_.empty() && !adjusted_current_node().is_html();
    tokenizer_.next(token_, foreign);
    process(token_);
  }
}

void TreeBuilder::process(Token& token) {
  count_work(1 + token.attributes.size());
  if (skip_line_break_ && skip_first_line_break(token)) return;
  while (dispatch(token) == Next::Again) {
  }
}

// The line break right after <pre>, <listing> and <textarea>. True if it was all of the token.
bool TreeBuilder::skip_first_line_break(Token& token) {
  skip_line_break_ = false;
  if (token.kind != Token::Kind::Text || !token.text.starts_with(u'\n')) return false;
  token.text.remove_prefix(1);
  return token.text.empty();
}

TreeBuilder::Next TreeBuilder::dispatch(Token& token) {
  if (!is_for_foreign_content(token)) return use_mode(mode_, token);
  in_foreign_content(token);
  return Next::Token;
}

const Element& TreeBuilder::adjusted_current_node() const {
  return context_ && stack_.size() == 1 ? *context_ : stack_.current();
}

// HTML standard, section 13.2.6 "tree construction dispatcher".
bool TreeBuilder::is_for_foreign_content(const Token& token) const {
  if (stack_.empty()) return false;
  const Element& node = adjusted_current_node();
  if (node.is_html() || token.kind == Token::Kind::EndOfFile) return false;
  const bool is_start = token.kind == Token::Kind::StartTag;
  const bool is_text = token.kind == Token::Kind::Text;
  if (is_mathml_text_integration_point(node)) {
    if (is_text || (is_start && token.tag != Tag::Mglyph && token.tag != Tag::Malignmark)) return false;
  }
  if (node.name_space() == Namespace::MathMl && node.name().tag() == Tag::AnnotationXml &&
      token.is_start(Tag::Svg)) {
    return false;
  }
  return !(is_html_integration_point(node) && (is_start || is_text));
}

TreeBuilder::Next TreeBuilder::use_mode(InsertionMode mode, Token& token) {
  switch (mode) {
    case InsertionMode::Initial: return initial(token);
    case InsertionMode::BeforeHtml: return before_html(token);
    case InsertionMode::BeforeHead: return before_head(token);
    case InsertionMode::InHead: return in_head(token);
    case InsertionMode::InHeadNoscript: return in_head_noscript(token);
    case InsertionMode::AfterHead: return after_head(token);
    case InsertionMode::InBody: return in_body(token);
    case InsertionMode::Text: return text(token);
    case InsertionMode::InTable: return in_table(token);
    case InsertionMode::InTableText: return in_table_text(token);
    case InsertionMode::InCaption: return in_caption(token);
    case InsertionMode::InColumnGroup: return in_column_group(token);
    case InsertionMode::InTableBody: return in_table_body(token);
    case InsertionMode::InRow: return in_row(token);
    case InsertionMode::InCell: return in_cell(token);
    case InsertionMode::InTemplate: return in_template(token);
    case InsertionMode::AfterBody: return after_body(token);
    case InsertionMode::InFrameset: return in_frameset(token);
    case InsertionMode::AfterFrameset: return after_frameset(token);
    case InsertionMode::AfterAfterBody: return after_after_body(token);
    case InsertionMode::AfterAfterFrameset: return after_after_frameset(token);
  }
  return Next::Token;
}

std::u16string_view TreeBuilder::take_space(Token& token) {
  std::size_t length = 0;
  while (length < token.text.size() && is_ascii_space(token.text[length])) ++length;
  const std::u16string_view space = token.text.substr(0, length);
  token.text.remove_prefix(length);
  return space;
}

// HTML standard, section 13.2.7 "the end".
void TreeBuilder::stop() {
  while (stack_.size() > (context_ ? 1 : 0)) pop();
  stopped_ = true;
}

}  // namespace tvx::dom::parser
