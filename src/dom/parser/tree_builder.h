#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <unordered_set>
#include <vector>

#include "tvx/dom/parse.h"
#include "tvx/dom/parser/active_formatting.h"
#include "tvx/dom/parser/open_elements.h"
#include "tvx/dom/parser/selected_content.h"
#include "tvx/dom/parser/tokenizer.h"

namespace tvx::dom::parser {

/// HTML standard, section 13.2.4.1 "the insertion mode".
enum class InsertionMode : std::uint8_t {
  Initial,
  BeforeHtml,
  BeforeHead,
  InHead,
  InHeadNoscript,
  AfterHead,
  InBody,
  Text,
  InTable,
  InTableText,
  InCaption,
  InColumnGroup,
  InTableBody,
  InRow,
  InCell,
  InTemplate,
  AfterBody,
  InFrameset,
  AfterFrameset,
  AfterAfterBody,
  AfterAfterFrameset
};

/// HTML standard, section 13.2.6 "tree construction". Each insertion mode is a function in a file of its
/// own or of its neighbours; foreign content, the adoption agency and the places of insertion have theirs.
///
/// Where this parser leaves the standard, for the sake of hostile texts:
/// - Elements nested deeper than maximum_depth become siblings, as in Chromium. The stack of open elements
///   goes on to grow, so that the end tags find their own elements.
/// - reconstruction_allowance and ActiveFormatting::maximum_behind_marker bound what is opened again,
///   copy_allowance what is copied.
/// - An end tag of a formatting element that lies adoption_reach or more below the current node only closes
///   the element for the text to come.
class TreeBuilder {
 public:
  static constexpr int maximum_depth = 512;
  static constexpr int adoption_reach = 1024;
  /// So many formatting elements are opened again in any text, and one more for each unit of it read.
  static constexpr Offset reconstruction_allowance = 4096;
  /// So much may be copied into `selectedcontent` elements, and one more for each unit read.
  static constexpr Offset copy_allowance = 65536;

  /// Builds a whole document below `document`.
  TreeBuilder(Document& document, std::u16string_view html);
  /// Builds the nodes of a fragment below an html element: root().
  TreeBuilder(Document& document, std::u16string_view html, const FragmentContext& context);
  ~TreeBuilder();
  TreeBuilder(const TreeBuilder&) = delete;
  TreeBuilder& operator=(const TreeBuilder&) = delete;

  void run();
  Element& root() { return stack_.at(0); }

 private:
  /// What a mode made of the token: it is used up, or the mode that is now current has to see it.
  enum class Next : bool { Token, Again };
  struct Place {
    Node* parent = nullptr;
    Node* before = nullptr;
  };

  // tree_builder.cpp: dispatch
  void process(Token& token);
  Next dispatch(Token& token);
  Next use_mode(InsertionMode mode, Token& token);
  bool is_for_foreign_content(const Token& token) const;
  const Element& adjusted_current_node() const;
  bool skip_first_line_break(Token& token);
  void set_up_fragment(const FragmentContext& context);
  void stop();

  // construction.cpp: nodes and their places
  Place appropriate_place(Node* override_target = nullptr) const;
  Place foster_place() const;
  Place element_place(int index) const;
  Ref<Element> create_element(Name name, Namespace name_space, std::vector<Attribute>& attributes);
  Ref<Element> create_html(Token& token) {
    return create_element(token.name, Namespace::Html, token.attributes);
  }
  Element& insert_html(Token& token);
  Element& insert_html(Tag tag);
  Element& insert_foreign(Token& token, Namespace name_space);
  void insert_element(Ref<Element> element, Name source_name);
  void insert_and_pop(Token& token);
  void insert_text(std::u16string_view text);
  void insert_comment(const Token& token);
  void append_comment(const Token& token, Node& parent);
  void parse_text_of(Token& token, ContentModel model);
  void add_missing_attributes(Element& element, Token& token);

  // construction.cpp: the stack
  Element& current() const { return stack_.current(); }
  bool current_is(Tag tag) const { return current().tag() == tag; }
  void pop();
  /// Pops the entry at `index` and all below it.
  void pop_through(int index);
  void pop_through(Tag tag) { pop_through(stack_.last(tag)); }
  void clear_back_to(std::initializer_list<Tag> tags);
  void generate_implied_end_tags(Tag except = Tag::Unknown);
  void generate_all_implied_end_tags_thoroughly();
  void close_p();
  void close_p_in_button_scope();
  bool has_template() const { return stack_.last(Tag::Template) != OpenElements::none; }
  void reset_insertion_mode();
  InsertionMode mode_of(const Element& node, bool is_last) const;

  // formatting.cpp
  void reconstruct_formatting();
  bool is_open_or_marker(std::size_t entry) const;
  void push_formatting(Token& token);
  struct Adoption;
  void adopt(Token& token);
  enum class Adopted : std::uint8_t { Done, More, AnyOtherEndTag };
  Adopted adopt_once(Token& token);
  void adopt_into_furthest_block(Adoption& adoption);
  Ref<Element> twin_of(const Element& element);
  void clone_chain(Adoption& adoption);

  // modes_before_body.cpp, mode_in_head.cpp
  Next initial(Token& token);
  Next before_html(Token& token);
  Next before_head(Token& token);
  Next in_head(Token& token);
  Next in_head_start_tag(Token& token);
  Next in_head_noscript(Token& token);
  Next after_head(Token& token);
  Next after_head_start_tag(Token& token);
  void end_template();
  void start_template(Token& token);
  void make_html_element();

  // mode_in_body.cpp, mode_in_body_start_tags.cpp, mode_in_body_end_tags.cpp
  Next in_body(Token& token);
  void in_body_text(const Token& token);
  Next in_body_start_tag(Token& token);
  bool in_body_structure_start_tag(Token& token);
  bool in_body_form_start_tag(Token& token);
  Next in_body_end_tag(Token& token);
  void start_html(Token& token);
  void start_body(Token& token);
  void start_frameset(Token& token);
  void start_block(Token& token);
  void start_heading(Token& token);
  void start_preformatted(Token& token);
  void start_form(Token& token);
  void start_list_item(Token& token);
  void start_definition(Token& token);
  void start_button(Token& token);
  void start_anchor(Token& token);
  void start_nobr(Token& token);
  void start_embedded(Token& token);
  void start_table(Token& token);
  void start_input(Token& token);
  void start_rule(Token& token);
  void start_textarea(Token& token);
  void start_select(Token& token);
  void start_option(Token& token);
  void start_ruby_part(Token& token);
  void start_foreign(Token& token, Namespace name_space);
  void start_ordinary(Token& token);
  Next end_body(Token& token);
  void end_block(Token& token);
  void end_form();
  void end_list_item(Token& token);
  void end_heading();
  void end_embedded(Token& token);
  void any_other_end_tag(Token& token);

  // mode_text.cpp
  Next text(Token& token);

  // mode_in_table.cpp
  Next in_table(Token& token);
  Next in_table_start_tag(Token& token);
  Next in_table_end_tag(Token& token);
  Next in_table_text(Token& token);
  void flush_table_text();
  void in_body_with_foster_parenting(Token& token);
  void end_table();
  void start_table_part(Tag implied, InsertionMode mode);

  // modes_in_table_parts.cpp
  Next in_caption(Token& token);
  bool close_caption();
  Next in_column_group(Token& token);
  Next in_table_body(Token& token);
  Next leave_table_body();
  Next in_row(Token& token);
  bool close_row();
  Next in_cell(Token& token);
  void close_cell();

  // modes_in_template.cpp, modes_behind_body.cpp, modes_frameset.cpp
  Next in_template(Token& token);
  Next in_template_end(Token& token);
  Next switch_template_mode(InsertionMode mode);
  Next after_body(Token& token);
  Next after_after_body(Token& token);
  Next in_frameset(Token& token);
  Next after_frameset(Token& token);
  Next after_after_frameset(Token& token);
  void insert_only_space(const Token& token);

  // foreign_content.cpp
  void in_foreign_content(Token& token);
  void foreign_start_tag(Token& token);
  void foreign_end_tag(Token& token);
  void leave_foreign_content(Token& token);

  // Takes the white space off the front of a text token, which may be empty then.
  static std::u16string_view take_space(Token& token);

  Document& document_;
  Tokenizer tokenizer_;
  Token token_;
  Ref<Element> root_;  // of a fragment
  OpenElements stack_;
  ActiveFormatting formatting_;
  std::vector<InsertionMode> template_modes_;
  InsertionMode mode_ = InsertionMode::Initial;
  InsertionMode original_mode_ = InsertionMode::Initial;
  Ref<Element> context_;  // of a fragment, empty for documents
  Ref<Element> head_, form_;
  std::u16string table_text_;
  SelectedContent selected_content_;
  std::unordered_set<const void*> merged_attributes_;  // names that merged_into_ has
  const Element* merged_into_ = nullptr;
  Offset reconstructed_ = 0;
  CompatibilityMode compatibility_mode_ = CompatibilityMode::NoQuirks;
  bool frameset_ok_ = true;
  bool foster_parenting_ = false;
  bool skip_line_break_ = false;
  bool stopped_ = false;
};

}  // namespace tvx::dom::parser
