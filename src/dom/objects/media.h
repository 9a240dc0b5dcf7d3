#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/ref.h"

/// Images, links and the base as objects, with the members' names of that object model. `document_address` is
/// where the document was loaded from: addresses read as absolute ones (dom/objects/address.h) and are
/// written as given. A value that isn't among those allowed throws RuntimeError(380).
namespace tvx::dom {

struct PixelSize {
  std::int32_t width = 0, height = 0;
};

class ImageObject {
 public:
  /// `natural`: the size of the picture itself, if the view has told it. Throws RuntimeError(13) for anything
  /// but an IMG or an INPUT (of type image).
  ImageObject(Element& image, std::u16string_view document_address,
              std::optional<PixelSize> natural = std::nullopt);

  std::u16string src() const;
  void set_src(std::u16string_view value);
  /// Of the address that it reads as: "File Protocol", "http:".
  std::u16string protocol() const;
  /// In pixels: as written, else the picture's own size (also where a share like "50%" is written), else 0.
  std::int32_t width() const;
  void set_width(std::int32_t pixels);
  std::int32_t height() const;
  void set_height(std::int32_t pixels);
  std::u16string alt() const;
  void set_alt(std::u16string_view value);
  std::u16string border() const;
  void set_border(std::u16string_view value);
  /// absbottom, absmiddle, baseline, bottom, center, left, middle, right, texttop or top.
  std::u16string align() const;
  void set_align(std::u16string_view value);
  std::u16string name() const;
  void set_name(std::u16string_view value);

 private:
  std::int32_t size(Name name, std::int32_t PixelSize::*side) const;
  Ref<Element> element_;
  std::u16string document_address_;
  std::optional<PixelSize> natural_;
};

/// A, AREA or LINK.
class LinkObject {
 public:
  LinkObject(Element& link, std::u16string_view document_address);
  std::u16string href() const;
  void set_href(std::u16string_view value);
  /// "#" and what follows it in the address, "" if nothing does.
  std::u16string hash() const;
  /// Without "#" at its front it is put there; "" takes it away.
  void set_hash(std::u16string_view value);
  std::u16string protocol() const;
  std::u16string target() const;
  void set_target(std::u16string_view value);
  std::u16string name() const;
  void set_name(std::u16string_view value);

 private:
  Ref<Element> element_;
  std::u16string document_address_;
};

class BaseObject {
 public:
  explicit BaseObject(Element& base);
  /// As an absolute address; as written where it is none.
  std::u16string href() const;
  void set_href(std::u16string_view value);
  std::u16string target() const;
  void set_target(std::u16string_view value);

 private:
  Ref<Element> element_;
};

}  // namespace tvx::dom
