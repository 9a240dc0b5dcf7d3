#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tvx/browser/events.h"
#include "tvx/dom/document.h"
#include "tvx/platform/transfer_data.h"

/// What the document and the view that shows it send each other. Values only, no pointers.
namespace tvx::browser {

enum class PatchNumber : std::uint32_t {};
enum class QuestionId : std::uint32_t {};

/// A position in the view's terms. Offsets count 16-bit units in text, children elsewhere.
struct ViewPlace {
  dom::NodeId node{};
  std::uint32_t offset = 0;
  friend bool operator==(const ViewPlace&, const ViewPlace&) = default;
};

/// One change of the mirrored tree. Nodes are made one by one; never from a string of HTML.
struct PatchOperation {
  enum class Type : std::uint8_t {
    Element,     // makes `node` (name, namespace, attributes) as a child of `parent`, before `before`
    Text,        // makes a text node with `text`
    Comment,     // makes a comment with `text`; it shows nothing, but positions count children
    Detach,      // takes `node` out; it stays known, a Place may follow
    Place,       // puts a known node into `parent`, before `before`
    Forget,      // `node` and all below it is known no more
    Data,        // replaces `length` units from `offset` of a text by `text`
    Attribute,   // sets `name` to `text`
    NoAttribute  // removes `name`
  };
  struct Attribute {
    std::u16string name, value;
    dom::AttributeNamespace name_space = dom::AttributeNamespace::None;
  };
  Type type;
  dom::NodeId node{};
  dom::NodeId parent{};  // 0: the page itself
  dom::NodeId before{};  // 0: at the end
  std::u16string name;
  dom::Namespace name_space = dom::Namespace::Html;
  dom::AttributeNamespace attribute_namespace = dom::AttributeNamespace::None;
  std::vector<Attribute> attributes;
  std::uint32_t offset = 0, length = 0;
  std::u16string text;
};

struct Patch {
  PatchNumber number{};
  /// Start over: a fresh page for this compatibility mode, nothing known.
  bool reset = false;
  dom::CompatibilityMode compatibility_mode = dom::CompatibilityMode::NoQuirks;
  /// With reset: the address that relative ones in the document are meant against.
  std::u16string base;
  std::vector<PatchOperation> operations;
  /// How much of the document the view has then, from 0 to 1, where 0 means that nobody knows; and whether
  /// the document's end is in it.
  double share = 1;
  bool has_end = true;
};

struct ViewSelection {
  enum class Type : std::uint8_t { None, Text, Control };
  Type type = Type::None;
  ViewPlace anchor, focus;  // Text
  dom::NodeId control{};    // Control
  /// What an input method is composing, to be underlined: a stretch of one text. Empty: nothing.
  ViewPlace composing;
  std::uint32_t composing_length = 0;
  bool reveal = true;  // scroll it into sight
  /// The last press or release that this knows of. A page that has had a later one keeps what that has drawn:
  /// when it has been dealt with, the selection is sent again.
  std::uint32_t mouse = 0;
};

/// What the view may let the user do; it knows beforehand and never asks. And what it shows as unfinished.
struct ViewMode {
  bool editable = true;                // shows a caret, begins selections
  bool free_placement = false;         // positioned elements can be dragged to where they shall stand
  std::vector<dom::NodeId> under_way;  // pictures that are on their way to a server
  friend bool operator==(const ViewMode&, const ViewMode&) = default;
};

/// What an input method may know: answered at once from here, never from the page.
struct InputContext {
  bool enabled = true;
  std::u16string text;  // of the caret's block
  std::uint32_t cursor = 0, anchor = 0;
  /// Counts how often the document has ended a composition by itself: the input method is to forget it.
  std::uint32_t interruptions = 0;
  friend bool operator==(const InputContext&, const InputContext&) = default;
};

/// A question with an identity. The answer comes through the inbox, or never: the asker has a deadline.
struct ViewQuestion {
  /// Ping: asks for nothing but an answer. It is given when all that came before has been dealt with.
  enum class Type : std::uint8_t { Move, Hit, Ping };
  QuestionId id{};
  Type type = Type::Move;
  ViewMove move = ViewMove::LineDown;
  ViewPlace from{};     // Move: where the caret stands
  bool extend = false;  // Move: the selection is to be extended
  int x = 0, y = 0;     // Hit
};

// --- what comes up. Every message names the last patch that the view had applied. ---

struct ViewReady {};  // the user wants the document to be tried once more
/// The view's process is gone, all questions with it.
struct ViewDied {
  bool of_silence = false;  // it was still there, but said nothing for too long
};
/// The page wanted something that it may not bring in. Told once a page.
struct ViewWithheld {};
/// Applied and laid out.
struct PatchDone {
  PatchNumber number{};
  std::optional<double> milliseconds = {};  // that the view answered nothing else meanwhile, if it knows
};
struct PatchFailed {
  dom::NodeId node{};
  std::u16string reason;
};
struct ViewAnswer {
  QuestionId id{};
  std::optional<ViewPlace> place;
  dom::NodeId element{};
  PatchNumber seen{};  // as in the message
};
/// A native mouse event is on its way to the page, which will report it (ViewMouse). Input that comes
/// later waits for the report, as long as it may still come.
struct ViewTicket {
  enum class Type : std::uint8_t { Press, Release };
  Type type = Type::Press;
  MouseButton button = MouseButton::Left;
  int x = 0, y = 0;
};
/// The page's own report of a mouse event. A press and a release answer the oldest open ticket of their kind
/// and position; a click and a double click follow their release in the same batch.
struct ViewMouse {
  enum class Type : std::uint8_t { Press, Release, Click, DoubleClick };
  Type type = Type::Press;
  MouseButton button = MouseButton::Left;
  int x = 0, y = 0;
  bool shift = false, control = false, alt = false;
  dom::NodeId element{};
  std::optional<ViewPlace> place;          // the caret position nearest to the point
  std::optional<ViewPlace> anchor, focus;  // the native selection after the event
  dom::NodeId edge{};        // the element whose edge or handle is there: it is meant as a whole
  bool held = false;         // a press on selected text, which stays selected until it is known what follows
  std::uint32_t number = 0;  // counts presses and releases of the page; a click has its release's
  PatchNumber seen{};        // as in the message
};
/// The user drags a handle of the selected control, an element to another position, the edge between two
/// columns of a table, or what is selected: reported when the mouse has gone far enough to mean it, and at
/// its release. Both come before the release's ViewMouse.
struct ViewDrag {
  enum class Phase : std::uint8_t { Begin, Drop };
  enum class Type : std::uint8_t { Size, Move, Content, Column };
  Phase phase = Phase::Begin;
  Type type = Type::Content;
  /// What is sized or moved; of Content the control, or none: the selected text; of Column the cell that ends
  /// at the edge.
  dom::NodeId node{};
  int x = 0, y = 0;
  bool shift = false, control = false, alt = false;
  // At the drop:
  std::optional<int> width, height;  // Size: CSS pixels, as `width` and `height` count for the element
  std::optional<int> width_was;      // Size: before
  std::optional<int> left, top;      // Move, and Size of a positioned element
  std::optional<ViewPlace> place;    // Content
  struct Edge {
    dom::NodeId after{};             // the cell that begins at the edge
    int width = 0, after_width = 0;  // of both cells, as `width` counts for them
    int shift = 0, table_width = 0;  // how far the edge goes forward, and what percent count of
  };
  std::optional<Edge> edge;  // Column
  PatchNumber seen{};        // as in the message
};
/// Something came from another program, and was let go at a point of the window; or a middle press brought
/// what is selected with the mouse somewhere.
struct ViewDrop {
  enum class Way : std::uint8_t { Drag, MiddlePress };
  int x = 0, y = 0;
  platform::TransferData data;
  Way way = Way::Drag;
};
/// A key, as the window system gave it; the page never sees one.
struct ViewKey {
  KeyInput key;
  bool down = true;
};
/// What an input method gives: text that it commits, and then the text that it is composing.
struct ViewText {
  std::u16string text;
  std::u16string composing = {};
  std::uint32_t cursor = 0;  // in `composing`
  /// Units around the caret that `text` replaces, as the input method saw them.
  std::int32_t replaced_from = 0;
  std::uint32_t replaced_length = 0;
};
struct ViewFocus {
  bool focused = false;
};
/// The native selection moved while the button is held.
struct ViewSelect {
  ViewPlace anchor, focus;
  PatchNumber seen{};  // as in the message
};
/// Facts of the layout, kept beside the tree: the caret's box, the viewport.
struct ViewFacts {
  int caret_left = 0, caret_top = 0, caret_height = 0;
  int scroll_x = 0, scroll_y = 0, width = 0, height = 0;
};

/// The view has loaded the picture of an element, or couldn't: both are 0 then.
struct ViewPicture {
  dom::NodeId image{};
  int width = 0, height = 0;  // that it has by itself, in CSS pixels
};

/// The user moves the window's scroll bar while the page is still coming in.
struct ViewScrollBar {
  double share = 0;     // of the document that is wanted at the window's upper edge; 1: its end
  dom::NodeId shown{};  // the element that is there instead; 0: nothing is
};

struct ViewMessage {
  PatchNumber seen{};
  std::variant<ViewReady, ViewDied, ViewWithheld, PatchDone, PatchFailed, ViewAnswer, ViewTicket, ViewMouse,
               ViewSelect, ViewDrag, ViewDrop, ViewKey, ViewText, ViewFocus, ViewFacts, ViewPicture,
               ViewScrollBar>
      what;
};

}  // namespace tvx::browser
