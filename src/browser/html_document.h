#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "tvx/browser/events.h"
#include "tvx/browser/geometry.h"
#include "tvx/browser/resource_policy.h"
#include "tvx/dom/document.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/composition.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/platform/pictures/picture_size.h"

namespace tvx::platform {
class Clipboard;
}

namespace tvx::browser {

class DocumentClipboard;
class PictureSizes;

/// The answer of a command in the platform's way: true or false for toggles, blue-green-red numbers for
/// colours, texts for the rest, nothing for a selection with several values.
using CommandValue = std::variant<bool, std::int32_t, std::u16string, std::monostate>;

/// How the bytes of a file became text: what a program needs to write it back as it was.
struct Encoding {
  std::string name = "utf-8";  // as in the Encoding standard, lower case
  bool byte_order_mark = false;
};

/// What a key led to.
struct KeyOutcome {
  bool taken = false;           // a handler took it away, or the document acted on it
  std::optional<ViewMove> ask;  // the view must tell where the caret goes
  bool extend = false;          // the move extends the selection
  bool link = false;            // the user wants a link, and is asked for its address
};

/// A document as its control sees it: the tree, its editor, and the events between them. What a hosted
/// browser called its document. `readyState`, `designMode`, `title` and the like have their names there.
class HTMLDocument : public std::enable_shared_from_this<HTMLDocument> {
 public:
  /// A document around a tree; `readyState` "loading" until finish_loading().
  static std::shared_ptr<HTMLDocument> create(dom::Ref<dom::Document> tree, std::u16string url);
  ~HTMLDocument();

  dom::Document& tree() const { return *tree_; }
  editing::Editor& editor() { return *editor_; }
  const std::u16string& url() const { return url_; }

  // --- the object model's members that the control uses ---
  std::u16string readyState() const;
  std::u16string designMode() const;
  /// "On" or "Off", without regard to case; anything else throws RuntimeError(380).
  void set_designMode(std::u16string_view mode);
  std::u16string title() const;
  void set_title(std::u16string_view title);
  dom::Element* body() const { return tree_->body(); }
  dom::Element* documentElement() const { return tree_->document_element(); }
  /// The first element of that name in tree order; null if there is none.
  dom::Element* first(dom::Tag tag) const;
  /// False where the command failed or is unknown. "CreateLink" with `show_ui` asks for the address, and for
  /// nothing else is there anything to show; false as well where the user cancelled.
  bool execCommand(std::u16string_view command, bool show_ui, std::u16string_view value);
  bool queryCommandEnabled(std::u16string_view command);
  /// Throws RuntimeError(5) for an unknown command. Of Copy, Cut and Paste: false.
  CommandValue queryCommandValue(std::u16string_view command);
  /// New content for the body, from outside: loaded, not edited; clears the undo journal. Throws
  /// RuntimeError(91) without a body.
  void load_body(std::u16string_view html);
  /// How often new content was put in from outside: whoever waited with an edit asks whether it is still for
  /// this content.
  std::uint64_t contents() const { return contents_; }
  /// An address as it is meant: seen from the base element, else from the document; as written where that
  /// gives no address (a base of "http://").
  std::u16string absolute_url(std::u16string_view written) const;
  /// The size that the picture of an IMG has by itself: as the view has told that shows it, else as its file
  /// or its address tells.
  std::optional<platform::PictureSize> natural_size(dom::Element& image) const;
  void note_natural_size(const dom::Element& image, std::optional<platform::PictureSize> size);
  const Encoding& encoding() const { return encoding_; }
  void set_encoding(Encoding encoding) { encoding_ = std::move(encoding); }

  // --- what is copied and pasted (browser/paste.h) ---
  /// Where the commands Copy, Cut and Paste lead; null: nowhere. It outlives the document or is taken away.
  void set_clipboard(platform::Clipboard* clipboard);
  /// The folder into which pictures are copied; empty: files stay where they are, bytes go into the page.
  void set_image_folder(std::function<std::u16string()> folder) { image_folder_ = std::move(folder); }
  std::u16string image_folder() const { return image_folder_ ? image_folder_() : std::u16string(); }
  /// A folder for those that come as bytes alone, in place of that one.
  void set_bytes_folder(std::function<std::u16string()> folder) { bytes_folder_ = std::move(folder); }
  std::u16string bytes_folder() const { return bytes_folder_ ? bytes_folder_() : image_folder(); }
  /// Who hears of the local pictures that were pasted or dropped, by their addresses as written.
  using LocalPictures = std::function<void(const std::vector<std::u16string>& addresses)>;
  void set_on_local_pictures(LocalPictures hear) { on_local_pictures_ = std::move(hear); }
  /// The addresses of pictures that are on their way to a server: a view shows them as such.
  void set_under_way(std::vector<std::u16string> addresses);
  const std::vector<std::u16string>& under_way() const { return under_way_; }
  void tell_local_pictures(const std::vector<std::u16string>& addresses) {
    if (on_local_pictures_ && !addresses.empty()) on_local_pictures_(addresses);
  }

  // --- events ---
  /// Connects a handler (null: none). The document doesn't own it.
  void connect(DocumentHandler* handler);
  /// The event being handled; null outside any handler.
  const Event* event() const;
  /// Takes the key being delivered away (`event.keyCode = 0`), or changes it.
  void set_event_key_code(int key_code);
  /// The element at a point: from the living event's snapshot at its own coordinates, else as the last
  /// reported layout has it; null where nothing is. The view is never waited for.
  dom::Element* element_from_point(int x, int y) const;
  /// Who answers element_from_point where no event does. Null: nobody.
  void set_geometry(const Geometry* geometry) { geometry_ = geometry; }
  /// Null: nothing shows it, and there is nothing to scroll.
  void set_viewport(Viewport* viewport) { viewport_ = viewport; }
  Viewport* viewport() const { return viewport_; }

  // --- what it brings in from elsewhere ---
  const ResourcePolicy& resource_policy() const { return resource_policy_; }
  /// A view that shows it shows it anew.
  void set_resource_policy(const ResourcePolicy& policy);
  /// Something that it wants was not fetched, since the policy doesn't allow it.
  void note_withheld();
  bool withholds() const { return withholds_; }
  /// Called when that is noted for the first time under a policy.
  void set_on_withheld(std::function<void()> call) { on_withheld_ = std::move(call); }

  // --- input, in the order that the user gave it ---
  /// Whether the handler lets the user change the document. Where it doesn't, no key, text or drag does.
  bool user_may_edit() const { return !handler_ || handler_->user_may_edit(); }
  /// onkeydown, then (unless taken away) onkeypress for keys that type, then what the key does.
  KeyOutcome key_down(const KeyInput& key);
  void key_up(const KeyInput& key);
  /// Text of an input method, or pasted by the platform: one onkeydown with 229, then typed.
  void input_text(std::u16string_view text);
  /// What an input method is composing, with the caret within it: it stands in the document until it is
  /// committed by input_text(), or emptied. One onkeydown with 229 at its beginning. Whatever else the user
  /// or a command does ends it, as the text that it is.
  void compose(std::u16string_view text, Offset cursor);
  /// Where it stands; none while nothing is composed.
  std::optional<editing::ComposedStretch> composed() const { return composition_->stretch(); }
  bool is_composing() const { return composition_->active(); }
  /// A press sets the selection, then: oncontrolselect if an element was taken as a whole,
  /// onselectionchange always, onmousedown. A right press inside the selection keeps it.
  void mouse_press(const MouseInput& mouse);
  /// The selection that a drag or a shift-press made.
  void mouse_select(const MouseInput& mouse);
  /// onclick; then a plain left click on a link asks whoever set_link_follower named.
  /// False: the handler forbids what the click would do.
  bool click(const MouseInput& mouse);
  bool double_click(const MouseInput& mouse);
  /// False: the handler forbids it.
  bool drag_start(const MouseInput& mouse);
  bool context_menu(const MouseInput& mouse);
  /// The selection as a script or a command of the control sets it: one onselectionchange at the end.
  void select(const std::function<void(editing::Selection&)>& set);
  /// Input has changed the tree: the handler is told.
  void tell_user_change();
  /// The view's answer to KeyOutcome::ask.
  void move_caret_to(dom::Boundary place, bool extend);

  /// Called with the absolute address and the target frame of a link that was clicked.
  using LinkFollower = std::function<void(const std::u16string& url, const std::u16string& target)>;
  void set_link_follower(LinkFollower follow) { follow_link_ = std::move(follow); }

  /// Asks the user for an address, the present one given; nothing: cancelled.
  using LinkDialog = std::function<std::optional<std::u16string>(const std::u16string& address)>;
  void set_link_dialog(LinkDialog dialog) { link_dialog_ = std::move(dialog); }

  /// Holds news of the selection back while it lives, then raises one event for all of them.
  class Gesture;

  // --- loading; the browser calls these ---
  /// The tree stands; style sheets may still be on their way.
  void begin_interactive() { ready_state_ = u"interactive"; }
  void finish_loading() { ready_state_ = u"complete"; }
  /// The content of a document that was made to wait for it; whatever was asked of it before is forgotten.
  void fill(dom::Ref<dom::Document> tree, std::u16string url);
  /// The content couldn't be had: the document is complete, and empty.
  void fail_loading();
  bool load_failed() const { return load_failed_; }

  /// A document of that address (a whole one, or a path) beside this one, as it loads: `readyState` says how
  /// far it has come. A local file is there at once. Throws RuntimeError(53) if it can't be read, 445 if
  /// nobody loads for this document. No `options` are known.
  std::shared_ptr<HTMLDocument> createDocumentFromUrl(std::u16string_view url, std::u16string_view options);
  using DocumentSource = std::function<std::shared_ptr<HTMLDocument>(const std::u16string& url)>;
  void set_document_source(DocumentSource source) { source_ = std::move(source); }

 private:
  class SelectionWatch;
  struct Living;
  explicit HTMLDocument(dom::Ref<dom::Document> tree, std::u16string url);
  void deliver(Event& event, const std::function<void(DocumentHandler&)>& call);
  bool ask_handler(Event event, bool (DocumentHandler::*question)());
  void deliver_selection_change(Event event);
  void selection_changed();
  Event event_of(const MouseInput& mouse, std::u16string_view type) const;
  Event event_of(const KeyInput& key, std::u16string_view type) const;
  Event event_at_caret() const;
  dom::Ref<dom::Element> focus_element() const;
  void set_selection_by_press(const MouseInput& mouse);
  KeyOutcome deliver_key(const KeyInput& key);
  void default_action(const KeyInput& key, KeyOutcome& outcome);
  bool may_input();
  bool ask_for_link();

  dom::Ref<dom::Document> tree_;
  std::unique_ptr<editing::Editor> editor_;
  std::unique_ptr<editing::Composition> composition_;
  bool composition_refused_ = false;  // a handler has taken its key away
  std::u16string url_;
  std::uint64_t contents_ = 0;
  std::u16string ready_state_ = u"loading";
  DocumentHandler* handler_ = nullptr;
  const Geometry* geometry_ = nullptr;
  Viewport* viewport_ = nullptr;
  ResourcePolicy resource_policy_;
  bool withholds_ = false;
  std::function<void()> on_withheld_;
  Encoding encoding_;
  LinkFollower follow_link_;
  DocumentSource source_;
  bool load_failed_ = false;
  LinkDialog link_dialog_;
  std::vector<Living> events_;  // being handled, the innermost last
  std::size_t gestures_ = 0;
  bool selection_moved_ = false;  // within a gesture, or while a change is being reported
  bool telling_selection_ = false;
  std::unique_ptr<DocumentClipboard> clipboard_;
  std::function<std::u16string()> image_folder_, bytes_folder_;
  LocalPictures on_local_pictures_;
  std::vector<std::u16string> under_way_;
  std::unique_ptr<PictureSizes> picture_sizes_;
  std::unique_ptr<SelectionWatch> watch_;
};

}  // namespace tvx::browser
