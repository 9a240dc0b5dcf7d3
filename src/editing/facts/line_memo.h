#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "tvx/dom/node.h"

namespace tvx::editing {

/// What stands in a line before or after a node that nobody sees: the line's edge, or something to be seen.
enum class LineGoes : std::uint8_t { On, Ends, Holds };

/// Remembers, while a command runs and until the tree changes, how lines go on beside nodes that nobody sees,
/// and what is to be seen in nested elements. Each of a thousand comments with white space between them would
/// otherwise walk over all the others, and each of hundreds of levels down to the only text.
/// The innermost one that lives is asked; with none, each question walks.
class LineMemo {
 public:
  enum class Side : std::uint8_t { Before, After };

  LineMemo();
  ~LineMemo();
  LineMemo(const LineMemo&) = delete;
  LineMemo& operator=(const LineMemo&) = delete;

  static std::optional<LineGoes> find(const dom::Node& node, Side side);
  /// The same holds for all of these.
  static void note(const std::vector<const dom::Node*>& nodes, Side side, LineGoes goes);

  /// Whether anything of an element is seen where what is around it is rendered.
  static std::optional<bool> find_sight(const dom::Node& node);
  static void note_sight(const std::vector<const dom::Node*>& nodes, bool seen);

 private:
  void follow(const dom::Document& document);

  LineMemo* outer_;
  const dom::Document* document_ = nullptr;
  std::uint64_t version_ = 0;
  std::unordered_map<const dom::Node*, LineGoes> known_[2];
  std::unordered_map<const dom::Node*, bool> sights_;
};

}  // namespace tvx::editing
