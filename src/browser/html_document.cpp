#include "tvx/browser/html_document.h"

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/url.h"
#include "tvx/browser/input/gesture.h"
#include "tvx/browser/input/paste.h"
#include "tvx/browser/natural_size.h"
#include "tvx/browser/picture_sizes.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/address.h"
#include "tvx/dom/objects/media.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/commands/platform_values.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/links.h"
#include "tvx/editing/insertion/link_selection.h"

namespace tvx::browser {

using dom::Element;
using dom::Tag;

class HTMLDocument::SelectionWatch final : public editing::SelectionObserver {
 public:
  explicit SelectionWatch(HTMLDocument& document) : document_(document) {
    document_.editor_->selection().add_observer(*this);
  }
  ~SelectionWatch() override { document_.editor_->selection().remove_observer(*this); }
  void selection_changed() override { document_.selection_changed(); }

 private:
  HTMLDocument& document_;
};

std::shared_ptr<HTMLDocument> HTMLDocument::create(dom::Ref<dom::Document> tree, std::u16string url) {
  return std::shared_ptr<HTMLDocument>(new HTMLDocument(std::move(tree), std::move(url)));
}

HTMLDocument::HTMLDocument(dom::Ref<dom::Document> tree, std::u16string url)
    : tree_(std::move(tree)),
      editor_(std::make_unique<editing::Editor>(*tree_)),
      composition_(std::make_unique<editing::Composition>(*editor_)),
      url_(std::move(url)),
      picture_sizes_(std::make_unique<PictureSizes>()),
      watch_(std::make_unique<SelectionWatch>(*this)) {}

HTMLDocument::~HTMLDocument() {
  editor_->set_clipboard(nullptr);
  watch_.reset();
}

void HTMLDocument::set_under_way(std::vector<std::u16string> addresses) {
  if (under_way_ == addresses) return;
  under_way_ = std::move(addresses);
  if (viewport_) viewport_->under_way_changed();
}

void HTMLDocument::set_clipboard(platform::Clipboard* clipboard) {
  clipboard_ = clipboard ? std::make_unique<DocumentClipboard>(*this, *clipboard) : nullptr;
  editor_->set_clipboard(clipboard_.get());
}

void HTMLDocument::fill(dom::Ref<dom::Document> tree, std::u16string url) {
  watch_.reset();
  composition_.reset();  // holds the editor
  editor_.reset();
  tree_ = std::move(tree);
  editor_ = std::make_unique<editing::Editor>(*tree_);
  editor_->set_clipboard(clipboard_.get());
  composition_ = std::make_unique<editing::Composition>(*editor_);
  composition_refused_ = false;
  watch_ = std::make_unique<SelectionWatch>(*this);
  picture_sizes_ = std::make_unique<PictureSizes>();
  url_ = std::move(url);
}

void HTMLDocument::fail_loading() {
  load_failed_ = true;
  finish_loading();
}

std::shared_ptr<HTMLDocument> HTMLDocument::createDocumentFromUrl(std::u16string_view url,
                                                                  std::u16string_view /*options*/) {
  if (!source_) throw RuntimeError(errors::not_supported, u"Nobody loads documents for this one");
  const DocumentSource source = source_;
  return source(std::u16string(url));
}

std::u16string HTMLDocument::readyState() const { return ready_state_; }

std::u16string HTMLDocument::designMode() const { return editor_->design_mode() ? u"On" : u"Off"; }

void HTMLDocument::set_designMode(std::u16string_view mode) {
  const bool on = equals_ignoring_ascii_case(mode, u"On");
  if (!on && !equals_ignoring_ascii_case(mode, u"Off"))
    throw RuntimeError(errors::invalid_property_value, u"Invalid property value");
  editor_->set_design_mode(on);
}

// HTML standard, section 3.1.5 "document.title".
std::u16string HTMLDocument::title() const {
  const Element* element = first(Tag::Title);
  if (!element) return {};
  std::u16string result;
  const std::u16string text = dom::text_content(*element);
  for (std::u16string_view word : split_on_space(text)) {
    if (!result.empty()) result += u' ';
    result += word;
  }
  return result;
}

void HTMLDocument::set_title(std::u16string_view title) {
  dom::Ref<Element> element = first(Tag::Title);
  if (!element) {
    // OURS: an empty title makes no element, so that a page without one is saved without one.
    if (title.empty() || !tree_->head()) return;
    element = tree_->create_element(Tag::Title);
    dom::insert(*tree_->head(), element);
  }
  if (dom::text_content(*element) == title) return;
  if (title.empty())
    dom::clear(*element);
  else
    dom::replace_children(*element, tree_->create_text(std::u16string(title)));
}

Element* HTMLDocument::first(Tag tag) const {
  for (dom::Node* node = tree_.get(); node; node = dom::next_in_order(*node))
    if (node->is(tag)) return static_cast<Element*>(node);
  return nullptr;
}

void HTMLDocument::load_body(std::u16string_view html) {
  const auto self = shared_from_this();
  const dom::Ref<Element> element = body();
  if (!element) throw RuntimeError(errors::object_not_set, u"The document has no body");
  composition_->accept();
  ++contents_;
  {
    dom::MutationScope scope(*tree_, dom::MutationKind::Load);
    dom::set_inner_html(*element, html);
  }
  tree_->journal().clear();
}

std::u16string HTMLDocument::absolute_url(std::u16string_view written) const {
  return resolve_url(trimmed(written), dom::base_address(*tree_, url_)).value_or(std::u16string(written));
}

std::optional<platform::PictureSize> HTMLDocument::natural_size(Element& image) const {
  if (const auto told = picture_sizes_->of(image)) return told;
  return browser::natural_size(dom::ImageObject(image, url_).src());
}

void HTMLDocument::note_natural_size(const Element& image, std::optional<platform::PictureSize> size) {
  picture_sizes_->note(image, size);
}

bool HTMLDocument::execCommand(std::u16string_view command, bool show_ui, std::u16string_view value) {
  if (const auto result = fault_point(u"execCommand " + std::u16string(command))) return *result != 0;
  const auto self = shared_from_this();
  if (show_ui && equals_ignoring_ascii_case(command, u"CreateLink")) return ask_for_link();
  Gesture gesture(*this);
  composition_->accept();
  const std::uint64_t structure = tree_->structure_version();
  const bool done = editor_->execute(command, value);
  // The caret may stand in the same text, and yet in another element.
  if (tree_->structure_version() != structure) selection_moved_ = true;
  return done;
}

// The dialog runs a loop of its own: no gesture is open meanwhile, and afterwards everything may have
// changed.
bool HTMLDocument::ask_for_link() {
  if (!link_dialog_ || !editor_->enabled(u"createLink")) return false;
  composition_->accept();
  const auto dialog = link_dialog_;
  const std::optional<std::u16string> address = dialog(editing::link_address(*editor_));
  if (!address) return false;
  Gesture gesture(*this);
  return editing::link_selection(*editor_, *address);
}

bool HTMLDocument::queryCommandEnabled(std::u16string_view command) { return editor_->enabled(command); }

CommandValue HTMLDocument::queryCommandValue(std::u16string_view command) {
  return editing::platform_value(*editor_, command);
}

void HTMLDocument::connect(DocumentHandler* handler) { handler_ = handler; }

void HTMLDocument::set_resource_policy(const ResourcePolicy& policy) {
  if (policy == resource_policy_) return;
  resource_policy_ = policy;
  withholds_ = false;
  if (viewport_) viewport_->resource_policy_changed();
}

void HTMLDocument::note_withheld() {
  if (std::exchange(withholds_, true)) return;
  if (on_withheld_) on_withheld_();
}

}  // namespace tvx::browser
