#include <algorithm>
#include <unordered_set>

#include "tvx/dom/builder.h"
#include "tvx/dom/parser/foreign_names.h"
#include "tvx/dom/parser/tree_builder.h"

// Nodes, their places, and the stack: HTML standard, sections 13.2.6.1, 13.2.6.3 and 13.2.4.1.
namespace tvx::dom::parser {
namespace {

Node& container_of(Element& element) {
  return element.template_content() ? *element.template_content() : element;
}

}  // namespace

// --- places ---

// "Appropriate place for inserting a node".
TreeBuilder::Place TreeBuilder::appropriate_place(Node* override_target) const {
  Node& target = override_target ? *override_target : current();
  const auto* element = as<Element>(&target);
  if (foster_parenting_ && element && is_table_structure(element->tag())) return foster_place();
  return {element ? &container_of(static_cast<Element&>(target)) : &target, nullptr};
}

TreeBuilder::Place TreeBuilder::foster_place() const {
  const int last_template = stack_.last(Tag::Template);
  const int last_table = stack_.last(Tag::Table);
  if (last_template > last_table) return {&container_of(stack_.at(last_template)), nullptr};
  if (last_table == OpenElements::none) return {&stack_.at(0), nullptr};
  Element& table = stack_.at(last_table);
  if (table.parent()) return {table.parent(), &table};
  return {&container_of(stack_.at(last_table - 1)), nullptr};
}

// Elements nested too deep go beside the open element at `index` instead of into it.
TreeBuilder::Place TreeBuilder::element_place(int index) const {
  if (index < 0) return {&document_, nullptr};
  Element& target = stack_.at(index);
  const bool fosters = foster_parenting_ && is_table_structure(target.tag());
  if (stack_.depth(index) >= maximum_depth && !fosters && target.parent()) return {target.parent(), nullptr};
  return appropriate_place(&target);
}

// --- nodes ---

Ref<Element> TreeBuilder::create_element(Name name, Namespace name_space,
                                         std::vector<Attribute>& attributes) {
  Ref<Element> element = document_.create_element(name, name_space);
  if (!attributes.empty()) {
    Builder::reserve_attributes(*element, attributes.size());
    for (Attribute& attribute : attributes) Builder::add_attribute(*element, std::move(attribute));
    attributes.clear();
  }
  if (element->tag() == Tag::Template) Builder::set_template_content(*element, document_.create_fragment());
  return element;
}

void TreeBuilder::insert_element(Ref<Element> element, Name source_name) {
  const Place place = element_place(stack_.size() - 1);
  Element& inserted = *element;
  Builder::insert(*place.parent, std::move(element), place.before);
  stack_.push(inserted, source_name);
}

Element& TreeBuilder::insert_html(Token& token) {
  insert_element(create_html(token), token.name);
  return current();
}

Element& TreeBuilder::insert_html(Tag tag) {
  insert_element(document_.create_element(tag), Name(tag));
  return current();
}

void TreeBuilder::insert_and_pop(Token& token) {
  insert_html(token);
  pop();
}

Element& TreeBuilder::insert_foreign(Token& token, Namespace name_space) {
  adjust_foreign_attributes(token.attributes, name_space);
  const Name name = name_space == Namespace::Svg ? adjusted_svg_name(token.name) : token.name;
  insert_element(create_element(name, name_space, token.attributes), token.name);
  return current();
}

// "Insert a character", for a run of them.
void TreeBuilder::insert_text(std::u16string_view text) {
  if (text.empty()) return;
  const Place place = appropriate_place();
  if (place.parent->type() == NodeType::Document) return;
  Node* previous = place.before ? place.before->previous_sibling() : place.parent->last_child();
  if (auto* neighbour = as<Text>(previous)) {
    Builder::append_data(*neighbour, text);
  } else {
    Builder::insert(*place.parent, document_.create_text(std::u16string(text)), place.before);
  }
}

void TreeBuilder::insert_comment(const Token& token) {
  const Place place = appropriate_place();
  Builder::insert(*place.parent, document_.create_comment(std::u16string(token.text)), place.before);
}

void TreeBuilder::append_comment(const Token& token, Node& parent) {
  Builder::insert(parent, document_.create_comment(std::u16string(token.text)));
}

// "Generic raw text element parsing algorithm" and its like.
void TreeBuilder::parse_text_of(Token& token, ContentModel model) {
  insert_html(token);
  tokenizer_.set_content_model(model);
  original_mode_ = mode_;
  mode_ = InsertionMode::Text;
}

// What later <html> and <body> tags still say. A set, since they may come by the thousand.
void TreeBuilder::add_missing_attributes(Element& element, Token& token) {
  for (Attribute& attribute : token.attributes) {
    if (merged_attributes_.empty() || merged_into_ != &element) {
      merged_attributes_.clear();
      merged_into_ = &element;
      for (const Attribute& present : element.attributes()) merged_attributes_.insert(present.name.key());
    }
    if (merged_attributes_.insert(attribute.name.key()).second)
      Builder::add_attribute(element, std::move(attribute));
  }
}

// --- the stack ---

void TreeBuilder::pop() {
  if (!current_is(Tag::Option)) return stack_.pop();
  const Ref<Element> option(current());
  stack_.pop();
  selected_content_.option_closed(*option, copy_allowance + tokenizer_.position());
}

void TreeBuilder::pop_through(int index) {
  while (stack_.size() > index) pop();
}

void TreeBuilder::clear_back_to(std::initializer_list<Tag> tags) {
  while (std::find(tags.begin(), tags.end(), current().tag()) == tags.end()) pop();
}

void TreeBuilder::generate_implied_end_tags(Tag except) {
  while (has_implied_end(current().tag()) && !current_is(except)) pop();
}

void TreeBuilder::generate_all_implied_end_tags_thoroughly() {
  while (has_thoroughly_implied_end(current().tag())) pop();
}

void TreeBuilder::close_p() {
  generate_implied_end_tags(Tag::P);
  pop_through(Tag::P);
}

void TreeBuilder::close_p_in_button_scope() {
  if (stack_.has_in_scope(Tag::P, Boundary::ButtonScope)) close_p();
}

// "Reset the insertion mode appropriately".
void TreeBuilder::reset_insertion_mode() {
  const int index = std::max(stack_.last(Boundary::ModeDecider), 0);
  const bool is_last = index == 0;
  const Element& node = is_last && context_ ? *context_ : stack_.at(index);
  mode_ = mode_of(node, is_last);
}

InsertionMode TreeBuilder::mode_of(const Element& node, bool is_last) const {
  switch (node.tag()) {
    case Tag::Td:
    case Tag::Th: return is_last ? InsertionMode::InBody : InsertionMode::InCell;
    case Tag::Tr: return InsertionMode::InRow;
    case Tag::Tbody:
    case Tag::Thead:
    case Tag::Tfoot: return InsertionMode::InTableBody;
    case Tag::Caption: return InsertionMode::InCaption;
    case Tag::Colgroup: return InsertionMode::InColumnGroup;
    case Tag::Table: return InsertionMode::InTable;
    case Tag::Template: return template_modes_.back();
    case Tag::Head: return is_last ? InsertionMode::InBody : InsertionMode::InHead;
    case Tag::Body: return InsertionMode::InBody;
    case Tag::Frameset: return InsertionMode::InFrameset;
    case Tag::Html: return head_ ? InsertionMode::AfterHead : InsertionMode::BeforeHead;
    default: return InsertionMode::InBody;
  }
}

}  // namespace tvx::dom::parser
