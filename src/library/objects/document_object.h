#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "tvx/dom/collections.h"
#include "tvx/dom/node.h"
#include "tvx/library/objects/object.h"

namespace tvx::dom::style {
class StyleSheet;
}

namespace tvx::browser {
class HTMLDocument;
struct Event;
}  // namespace tvx::browser

/// The document's object model for callers by name: what `DOM` gives, and what is reached from there. Handles
/// keep their document; an element may have left its tree, and members that need the tree then fail.
namespace tvx::library {

using DocumentHandle = std::shared_ptr<browser::HTMLDocument>;

/// Nothing for no document.
Value document_object(const DocumentHandle& document);  // document_object.cpp
Value window_object(const DocumentHandle& document);    // window_object.cpp: `parentWindow`
Value selection_object(const DocumentHandle& document);

/// Nothing for no element. Two handles on one element are not one value: compare `sourceIndex`.
Value element_object(dom::Element* element, const DocumentHandle& document);  // element_object.cpp
/// The element that a value stands for; empty for nothing. Throws RuntimeError(13) if it is something else.
dom::Ref<dom::Element> element_of(const Value& value);

Value collection_object(dom::Collection collection, const DocumentHandle& document);  // collection_object.cpp
/// A live list: `list` is asked again when the structure of the owner's document has changed.
Value element_list_object(dom::Node& owner, std::function<std::vector<dom::Element*>()> list,
                          const DocumentHandle& document);  // collection_object.cpp
Value current_style_object(dom::Element& element);          // style_object.cpp: computed values
Value inline_style_object(dom::Element& element);           // style_object.cpp
Value style_sheet_object(const std::shared_ptr<dom::style::StyleSheet>& sheet);
Value style_sheets_object(const DocumentHandle& document);  // style_object.cpp

/// A copy of an event. While it is being delivered its `keyCode` can be set.
Value event_object(const browser::Event& event, const DocumentHandle& document);  // event_object.cpp

}  // namespace tvx::library
