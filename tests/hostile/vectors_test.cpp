#include "hostile/vectors.h"

#include <iostream>
#include <set>

#include "core/control_fixture.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/headless/view.h"
#include "tvx/platform/html_block.h"

/// Nothing in a document acts: what the view is given of a vector, whichever way it comes in, is nothing that
/// could.
namespace tvx::hostile {
namespace {

using headless::ShadowTree;

bool is_script_address(std::u16string_view value) {
  std::u16string scheme;
  for (const char16_t c : value) {
    if (c <= u' ') continue;
    if (c == u':') return scheme == u"javascript" || scheme == u"vbscript";
    scheme += c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c;
  }
  return false;
}

/// What a node could act by; empty: by nothing.
std::string danger_of(const ShadowTree::Node& node) {
  static const std::set<std::u16string> never{u"iframe", u"frame",  u"frameset", u"object",
                                              u"embed",  u"applet", u"base"};
  const std::u16string name = ascii_lower(node.name);
  if (node.name_space == dom::Namespace::Html && never.contains(name)) return "an element " + to_utf8(name);
  if (name == u"script" && (!node.children.empty() || !node.text.empty())) return "a script with a text";
  for (const auto& attribute : node.attributes) {
    const std::u16string lower = ascii_lower(attribute.name);
    if (lower.starts_with(u"on") || lower == u"srcdoc" || lower == u"http-equiv" || lower == u"ping" ||
        lower == u"autofocus")
      return "an attribute " + to_utf8(lower);
    if (name == u"script" && (lower == u"src" || lower == u"href")) return "a script with an address";
    // A label is a text that is painted.
    if (lower == u"tvx-label") continue;
    // A value is a text, and an animation's values act only where they animate an address.
    if (lower == u"attributename" && ascii_lower(attribute.value).ends_with(u"href"))
      return "an animated address";
    if (lower != u"value" && lower != u"values" && lower != u"to" && is_script_address(attribute.value))
      return "an address in " + to_utf8(lower);
  }
  return {};
}

class Vectors : public core::Control {
 protected:
  ~Vectors() override {
    std::cout << "[ COUNTED  ] " << tried_ << " vectors, " << nodes_ << " nodes of the view\n";
  }
  /// A document with a caret in it, in a view.
  void begin() {
    if (!control) {
      start();
      control->set_DocumentHTML(u"<P>first</P><P>second</P>");
    }
    show();
    const auto document = control->DOM();
    document->select([&](editing::Selection& selection) {
      dom::Node* first = document->body();
      while (first->first_child()) first = first->first_child();
      selection.collapse({first, 0});
    });
  }
  void show() {
    shown_.show(control->DOM());
    loop.settle();
  }
  void check_view(const std::string& way, const std::u16string& vector) {
    loop.settle();
    if (shown_.document() != control->DOM()) show();
    ++tried_;
    std::vector<const ShadowTree::Node*> open{&view_.tree().page()};
    while (!open.empty()) {
      const ShadowTree::Node* node = open.back();
      open.pop_back();
      ++nodes_;
      const std::string danger = danger_of(*node);
      EXPECT_EQ(danger, "") << way << ": " << to_utf8(vector);
      for (const ShadowTree::Node* child : node->children) open.push_back(child);
    }
  }
  /// All vectors in all contexts, each put in by `put` into a document that has many of those before.
  void try_all(const std::string& way, const std::function<void(const std::u16string&)>& put) {
    int since = 0;
    std::size_t come_in = 0;
    for (const std::u16string_view vector : vectors)
      for (const std::u16string& markup : in_all_contexts(vector)) {
        if (since++ % 16 == 0 && control) control->set_DocumentHTML(u"<P>first</P><P>second</P>");
        begin();
        const std::u16string before = dom::inner_html(*control->DOM()->body());
        attempt([&] { put(markup); });
        check_view(way, markup);
        come_in += dom::inner_html(*control->DOM()->body()) != before;
        if (HasFailure()) return;
      }
    // What isn't let in proves nothing of what is.
    EXPECT_GT(come_in, tried_ / 4) << way;
  }
  void offer(const std::u16string& html) {
    clipboard.OpenClipboard();
    clipboard.EmptyClipboard();
    clipboard.set_data("text/html", to_utf8(html));
    clipboard.CloseClipboard();
  }

 private:
  std::size_t tried_ = 0, nodes_ = 0;

 protected:
  headless::View view_{loop};
  browser::DocumentView shown_{view_, loop};
};

TEST_F(Vectors, GivenByTheHost) {
  try_all("DocumentHTML", [&](const std::u16string& html) { control->set_DocumentHTML(html); });
}

TEST_F(Vectors, InsertedByTheHost) {
  try_all("InsertAtCursor", [&](const std::u16string& html) {
    control->InsertAtCursor(html, ed_InsertType::ed_InsertReplaceSelection);
  });
}

TEST_F(Vectors, Pasted) {
  try_all("paste", [&](const std::u16string& html) {
    offer(html);
    control->paste_document();
  });
}

TEST_F(Vectors, PastedAsTextWhereTheDocumentRefuses) {
  try_all("the control's own paste of a text", [&](const std::u16string& html) {
    clipboard.put({{"text/plain", to_utf8(html)}});
    set_fault(u"execCommand Paste", {.result = 0});
    control->paste_document();
    clear_faults();
  });
}

TEST_F(Vectors, PastedAsMarkupWhereTheDocumentRefuses) {
  try_all("the control's own paste of markup", [&](const std::u16string& html) {
    clipboard.put({{"HTML Format", platform::html_block(html)}});
    set_fault(u"execCommand Paste", {.result = 0});
    control->paste_document();
    clear_faults();
  });
}

TEST_F(Vectors, Dropped) {
  try_all("drop", [&](const std::u16string& html) {
    browser::ViewDrop drop;
    // The view without a screen has a line of 20 pixels for each node.
    drop.y = 20 * static_cast<int>(control->DOM()->tree().source_index(*control->DOM()->body()));
    offer(html);
    drop.data = platform::fetch(clipboard);
    view_.tell({.seen = {}, .what = drop});
  });
}

TEST_F(Vectors, WrittenInTheCode) {
  try_all("code", [&](const std::u16string& html) {
    control->show_Code();
    control->txtCode().set_Text(html);
    control->show_Code();
  });
}

TEST_F(Vectors, OpenedFromAFile) {
  try_all("file", [&](const std::u16string& html) {
    std::u16string file = write_file("vector.html", "<!DOCTYPE html>" + to_utf8(html));
    control->Open_document(file, true);
  });
}

}  // namespace
}  // namespace tvx::hostile
