#include "tvx/browser/loading/sheet_loader.h"

#include <utility>

#include "tvx/base/url.h"
#include "tvx/browser/loading/encoding.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

using dom::style::style_of;

constexpr int deepest_import = 16;
constexpr int most_imports = 256;  // of one link or `style` element; ResourceBudget: of the page

bool same_origin(std::u16string_view a, std::u16string_view b) {
  const auto first = Url::parse(a), second = Url::parse(b);
  return first && second && first->scheme == second->scheme && first->authority == second->authority;
}

/// HTML standard, section 4.2.4 "link type stylesheet": what a server calls something else is no sheet, but
/// for its own pages of old.
bool is_sheet(const HttpAnswer& answer, const HTMLDocument& document) {
  if (!answer.has_content()) return false;
  const std::string type = media_type(answer.content_type);
  if (type.empty() || type == "text/css") return true;
  return document.tree().compatibility_mode() == dom::CompatibilityMode::Quirks &&
         same_origin(answer.address, document.url());
}

bool mentions_import(std::u16string_view text) {
  for (std::size_t at = text.find(u'@'); at != std::u16string_view::npos; at = text.find(u'@', at + 1))
    if (equals_ignoring_ascii_case(text.substr(at, 7), u"@import")) return true;
  return false;
}

}  // namespace

/// What was asked for in one go.
struct SheetLoader::Batch {
  std::size_t open = 1;  // the asking itself counts
  std::function<void()> done;

  void close_one() {
    if (--open == 0) done();
  }
};

/// One element's sheet with all that it imports: a tree of texts, put into the document when it is whole.
class SheetLoader::Request : public std::enable_shared_from_this<Request> {
 public:
  Request(SheetLoader& loader, dom::Ref<dom::Element> owner)
      : loader_(loader),
        resources_(loader.resources_),
        document_(loader.document_),
        owner_(std::move(owner)) {}
  ~Request() {
    for (const Resources::Ticket ticket : tickets_) resources_.cancel(ticket);
  }

  void add_waiting(const std::shared_ptr<Batch>& batch) {
    ++batch->open;
    waiting_.push_back(batch);
  }
  /// Another request replaces this one: who waits for this waits for that.
  std::vector<std::shared_ptr<Batch>> give_up() { return std::exchange(waiting_, {}); }
  void take_over(std::vector<std::shared_ptr<Batch>> waiting) { waiting_ = std::move(waiting); }

  void start(LocalFiles local_files) {
    local_allowed_ = local_files == LocalFiles::Allowed;
    ++open_;
    if (owner_->is(dom::Tag::Link)) {
      const auto written = owner_->attribute_or_empty(dom::names::href);
      if (!trimmed(written).empty()) fetch(root_, document_->absolute_url(written), document_->url());
    } else {
      root_.text = dom::text_content(*owner_);
      root_.address = document_->absolute_url(u".");
      take_imports(root_);
    }
    close_one();
  }

 private:
  struct Part {
    const Part* importer = nullptr;
    std::u16string address;
    std::optional<std::u16string> text;
    std::vector<std::unique_ptr<Part>> imports;
  };

  void fetch(Part& part, const std::u16string& address, std::u16string_view from) {
    if (!local_allowed_ && !may_bring_in(from, address)) return;
    if (is_remote(address) && !document_->resource_policy().allows_remote(ResourceKind::StyleSheet)) {
      loader_.withheld_.insert_or_assign(owner_->id(), owner_);
      document_->note_withheld();
      return;
    }
    ++open_;
    const auto ticket =
        resources_.load_sheet(address, [weak = weak_from_this(), &part](const HttpAnswer& answer) {
          if (const auto self = weak.lock()) self->take(part, answer);
        });
    if (ticket != 0) tickets_.push_back(ticket);
  }

  void take(Part& part, const HttpAnswer& answer) {
    if (is_sheet(answer, *document_)) {
      part.address = answer.address;
      part.text = decode_sheet(answer.body, charset_of_type(answer.content_type), document_->encoding().name);
      local_allowed_ &= !is_remote(part.address);
      take_imports(part);
    }
    close_one();
  }

  void take_imports(Part& part) {
    if (!mentions_import(*part.text)) return;
    for (const dom::style::Import& import : dom::style::imports_of(dom::style::parse_rules(*part.text))) {
      const auto address = resolve_url(trimmed(import.url), part.address);
      if (!address || imports_ == most_imports || is_open(part, *address)) continue;
      if (loader_.imports_ >= resources_.budget().imports) return;
      ++imports_;
      ++loader_.imports_;
      part.imports.push_back(std::make_unique<Part>());
      part.imports.back()->importer = &part;
      part.imports.back()->address = *address;
      fetch(*part.imports.back(), *address, part.address);
    }
  }

  /// Whether the sheet would stand within itself, or too deep.
  static bool is_open(const Part& part, std::u16string_view address) {
    int depth = 0;
    for (const Part* current = &part; current; current = current->importer)
      if (current->address == address || ++depth > deepest_import) return true;
    return false;
  }

  void close_one() {
    if (--open_ > 0) return;
    const auto self = shared_from_this();
    auto& styles = style_of(document_->tree());
    if (owner_->is(dom::Tag::Link)) styles.set_link_text(*owner_, root_.text);
    std::vector<std::u16string> imported;
    collect_imports(root_, imported);
    if (!imported.empty()) styles.set_imports(*owner_, imported);
    root_ = {};
    tickets_.clear();
    for (const auto& batch : std::exchange(waiting_, {})) batch->close_one();
  }

  /// What is imported counts before the rest; no deeper than imports may stand.
  static void collect_imports(const Part& part, std::vector<std::u16string>& texts) {
    for (const auto& import : part.imports) {
      collect_imports(*import, texts);
      if (import->text) texts.push_back(*import->text);
    }
  }

  SheetLoader& loader_;
  Resources& resources_;
  const std::shared_ptr<HTMLDocument> document_;
  const dom::Ref<dom::Element> owner_;
  std::vector<std::shared_ptr<Batch>> waiting_;
  std::vector<Resources::Ticket> tickets_;
  Part root_;
  bool local_allowed_ = true;
  int open_ = 0, imports_ = 0;
};

SheetLoader::~SheetLoader() = default;

void SheetLoader::set_document(std::shared_ptr<HTMLDocument> document) {
  requests_.clear();
  withheld_.clear();
  imports_ = 0;
  document_ = std::move(document);
}

std::vector<dom::Ref<dom::Element>> SheetLoader::take_withheld() {
  std::vector<dom::Ref<dom::Element>> owners;
  for (const auto& [id, owner] : std::exchange(withheld_, {}))
    if (dom::is_connected(*owner)) owners.push_back(owner);
  return owners;
}

void SheetLoader::load(const std::vector<dom::Ref<dom::Element>>& owners, LocalFiles local_files,
                       std::function<void()> done) {
  const auto batch = std::make_shared<Batch>();
  batch->done = std::move(done);
  for (const auto& owner : owners) {
    const auto request = std::make_shared<Request>(*this, owner);
    auto& place = requests_[owner->id()];
    if (place) request->take_over(place->give_up());
    place = request;
    request->add_waiting(batch);
    request->start(local_files);
  }
  batch->close_one();
}

}  // namespace tvx::browser
