#pragma once

#include <type_traits>

#include "tvx/browser/html_document.h"
#include "tvx/dom/objects/media.h"
#include "tvx/library/objects/element_object.h"

/// Rows from the members of the document's objects (dom/objects): `facade_get<&TableObject::border>`.
namespace tvx::library {

/// What an assignment means as a text: nothing is "".
inline std::u16string text_or_nothing(const Value& value) {
  return value.is_null() ? std::u16string() : value.to_text();
}

template <class Member>
struct FacadeOf;
template <class Facade, class Result>
struct FacadeOf<Result (Facade::*)() const> {
  using Type = Facade;
};
template <class Facade, class Parameter>
struct FacadeOf<void (Facade::*)(Parameter)> {
  using Type = Facade;
  using Taken = std::remove_cvref_t<Parameter>;
};

/// An image's object knows the size that its picture has by itself.
inline dom::ImageObject image_facade(const ElementObject& self) {
  const auto size =
      self.document() ? self.document()->natural_size(*self) : std::optional<platform::PictureSize>();
  if (!size) return {*self, self.document_address()};
  return {*self, self.document_address(), dom::PixelSize{size->width, size->height}};
}

/// The object that speaks for an element; one that needs to know addresses gets the document's.
template <class Facade>
Facade facade_of(const ElementObject& self) {
  if constexpr (std::is_same_v<Facade, dom::ImageObject>)
    return image_facade(self);
  else if constexpr (std::is_constructible_v<Facade, dom::Element&, std::u16string_view>)
    return Facade(*self, self.document_address());
  else
    return Facade(*self);
}

template <auto Getter>
Value facade_get(ElementObject& self) {
  using Facade = typename FacadeOf<decltype(Getter)>::Type;
  auto result = (facade_of<Facade>(self).*Getter)();
  if constexpr (std::is_same_v<decltype(result), dom::Element*>)
    return self.element(result);
  else
    return result;
}

template <auto Setter>
void facade_set(ElementObject& self, const Value& value) {
  using Parts = FacadeOf<decltype(Setter)>;
  using Taken = typename Parts::Taken;
  auto facade = facade_of<typename Parts::Type>(self);
  if constexpr (std::is_same_v<Taken, bool>)
    (facade.*Setter)(value.to_boolean());
  else if constexpr (std::is_same_v<Taken, std::int32_t>)
    (facade.*Setter)(value.to_integer32());
  else
    (facade.*Setter)(text_or_nothing(value));
}

/// A live list of elements: what the getter gives at each question.
template <auto Getter>
Value facade_list(ElementObject& self) {
  using Facade = typename FacadeOf<decltype(Getter)>::Type;
  (facade_of<Facade>(self).*Getter)();  // refused at once where the element is of another kind
  return element_list_object(
      *self, [self] { return (facade_of<Facade>(self).*Getter)(); }, self.document());
}

/// An operation without arguments; one that makes an element gives it.
template <auto Operation, class Facade>
Value facade_call(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  Facade facade = facade_of<Facade>(self);
  if constexpr (std::is_void_v<decltype((facade.*Operation)())>) {
    (facade.*Operation)();
    return {};
  } else {
    return self.element((facade.*Operation)().get());
  }
}

/// An operation with a place, which may be left out: then it is -1, the end.
template <auto Operation, class Facade>
Value facade_call_at(ElementObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 1);
  const std::int32_t index = arguments.empty() || arguments[0].is_null() ? -1 : arguments[0].to_integer32();
  Facade facade = facade_of<Facade>(self);
  if constexpr (std::is_void_v<decltype((facade.*Operation)(index))>) {
    (facade.*Operation)(index);
    return {};
  } else {
    return self.element((facade.*Operation)(index).get());
  }
}

}  // namespace tvx::library
