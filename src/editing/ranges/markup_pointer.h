#pragma once

#include <cstdint>

#include "tvx/dom/mutation.h"
#include "tvx/dom/range.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

class TextRange;

/// The units of MarkupPointer::MoveUnit, with the numbers that hosts use.
enum class MoveUnitAction : std::uint8_t {
  PreviousCharacter = 0,
  NextCharacter = 1,
  PreviousWordBegin = 4,
  NextWordBegin = 5,
  PreviousWordEnd = 6,
  NextWordEnd = 7
};

enum class ElementAdjacency : std::uint8_t { BeforeBegin = 0, AfterBegin = 1, BeforeEnd = 2, AfterEnd = 3 };

/// To which side of a position a pointer holds on when something is inserted right there.
enum class PointerGravity : std::uint8_t { Left = 0, Right = 1 };

/// What lies on one side of a pointer.
struct PointerContext {
  enum class Kind : std::uint8_t { None, Text, EnterScope, ExitScope, NoScope };
  Kind kind = Kind::None;     // NoScope: an element that holds nothing, or a comment
  dom::Node* node = nullptr;  // the text, the element that is entered or left
  Offset length = 0;          // of a text: units up to its edge
};

/// A position in the markup that follows edits. It speaks of characters as a user sees them and of words, so
/// that a program can count its way through a document.
///
/// A pointer that was never placed, or whose document is gone, refuses all but the Move operations that
/// place it: RuntimeError(91).
class MarkupPointer final : private dom::MutationObserver {
 public:
  explicit MarkupPointer(dom::Document& document);
  ~MarkupPointer() override;
  MarkupPointer(const MarkupPointer&) = delete;
  MarkupPointer& operator=(const MarkupPointer&) = delete;

  bool IsPositioned() const { return static_cast<bool>(place_.start()); }
  dom::Boundary place() const;
  void MoveTo(const dom::Boundary& place);

  /// One unit on. Throws RuntimeError(5), and stays, where there is none: a position past the end is a
  /// failure. A character is a grapheme, an object, or one step over the edge of a block or a BR; all that a
  /// step over several edges does is lead to the next line. Costs what it passes.
  void MoveUnit(MoveUnitAction action);
  void MoveAdjacentToElement(dom::Element& element, ElementAdjacency where);
  /// To the start or the end of everything in a document or an element.
  void MoveToContainer(dom::Node& container, bool at_start);
  void MoveToPointer(const MarkupPointer& other);
  void Unposition() { place_.set({}); }

  PointerGravity Gravity() const { return gravity_; }
  void SetGravity(PointerGravity gravity) { gravity_ = gravity; }

  /// The element that the position is in, null outside all.
  dom::Element* CurrentScope() const;
  /// What lies after or before the position; the pointer stays.
  PointerContext RightContext() const;
  PointerContext LeftContext() const;
  /// The same, and then over it.
  PointerContext Right();
  PointerContext Left();

  bool IsEqualTo(const MarkupPointer& other) const;
  bool IsLeftOf(const MarkupPointer& other) const;
  bool IsLeftOfOrEqualTo(const MarkupPointer& other) const;
  bool IsRightOf(const MarkupPointer& other) const { return other.IsLeftOf(*this); }
  bool IsRightOfOrEqualTo(const MarkupPointer& other) const { return other.IsLeftOfOrEqualTo(*this); }

 private:
  void mutated(const dom::Mutation& mutation) override;
  dom::Ref<dom::Document> document_;
  dom::LiveRange place_;
  PointerGravity gravity_ = PointerGravity::Left;
};

/// Makes a range lie between two pointers, whichever comes first. Throws RuntimeError(91) for pointers that
/// are not placed and RuntimeError(5) for pointers in different trees.
void MoveRangeToPointers(const MarkupPointer& start, const MarkupPointer& end, TextRange& range);

/// To the nearest position where a caret can stand.
void MoveToCaretPlace(MarkupPointer& pointer);

}  // namespace tvx::editing
