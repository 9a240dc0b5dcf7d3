#include "tvx/dom/parser/foreign_names.h"

#include <unordered_map>

namespace tvx::dom::parser {
namespace {

using NameMap = std::unordered_map<Name, Name>;

// By their names in small letters.
NameMap with_small_letters(std::initializer_list<std::u16string_view> names) {
  NameMap map;
  for (const std::u16string_view name : names) map.emplace(Name(ascii_lower(name)), Name(name));
  return map;
}

const NameMap& svg_elements() {
  static const NameMap map = with_small_letters({u"altGlyph",
                                                 u"altGlyphDef",
                                                 u"altGlyphItem",
                                                 u"animateColor",
                                                 u"animateMotion",
                                                 u"animateTransform",
                                                 u"clipPath",
                                                 u"feBlend",
                                                 u"feColorMatrix",
                                                 u"feComponentTransfer",
                                                 u"feComposite",
                                                 u"feConvolveMatrix",
                                                 u"feDiffuseLighting",
                                                 u"feDisplacementMap",
                                                 u"feDistantLight",
                                                 u"feDropShadow",
                                                 u"feFlood",
                                                 u"feFuncA",
                                                 u"feFuncB",
                                                 u"feFuncG",
                                                 u"feFuncR",
                                                 u"feGaussianBlur",
                                                 u"feImage",
                                                 u"feMerge",
                                                 u"feMergeNode",
                                                 u"feMorphology",
                                                 u"feOffset",
                                                 u"fePointLight",
                                                 u"feSpecularLighting",
                                                 u"feSpotLight",
                                                 u"feTile",
                                                 u"feTurbulence",
                                                 u"foreignObject",
                                                 u"glyphRef",
                                                 u"linearGradient",
                                                 u"radialGradient",
                                                 u"textPath"});
  return map;
}

const NameMap& svg_attributes() {
  static const NameMap map = with_small_letters({u"attributeName",
                                                 u"attributeType",
                                                 u"baseFrequency",
                                                 u"baseProfile",
                                                 u"calcMode",
                                                 u"clipPathUnits",
                                                 u"diffuseConstant",
                                                 u"edgeMode",
                                                 u"filterUnits",
                                                 u"glyphRef",
                                                 u"gradientTransform",
                                                 u"gradientUnits",
                                                 u"kernelMatrix",
                                                 u"kernelUnitLength",
                                                 u"keyPoints",
                                                 u"keySplines",
                                                 u"keyTimes",
                                                 u"lengthAdjust",
                                                 u"limitingConeAngle",
                                                 u"markerHeight",
                                                 u"markerUnits",
                                                 u"markerWidth",
                                                 u"maskContentUnits",
                                                 u"maskUnits",
                                                 u"numOctaves",
                                                 u"pathLength",
                                                 u"patternContentUnits",
                                                 u"patternTransform",
                                                 u"patternUnits",
                                                 u"pointsAtX",
                                                 u"pointsAtY",
                                                 u"pointsAtZ",
                                                 u"preserveAlpha",
                                                 u"preserveAspectRatio",
                                                 u"primitiveUnits",
                                                 u"refX",
                                                 u"refY",
                                                 u"repeatCount",
                                                 u"repeatDur",
                                                 u"requiredExtensions",
                                                 u"requiredFeatures",
                                                 u"specularConstant",
                                                 u"specularExponent",
                                                 u"spreadMethod",
                                                 u"startOffset",
                                                 u"stdDeviation",
                                                 u"stitchTiles",
                                                 u"surfaceScale",
                                                 u"systemLanguage",
                                                 u"tableValues",
                                                 u"targetX",
                                                 u"targetY",
                                                 u"textLength",
                                                 u"viewBox",
                                                 u"viewTarget",
                                                 u"xChannelSelector",
                                                 u"yChannelSelector",
                                                 u"zoomAndPan"});
  return map;
}

const NameMap& mathml_attributes() {
  static const NameMap map = with_small_letters({u"definitionURL"});
  return map;
}

const std::unordered_map<Name, AttributeNamespace>& attribute_namespaces() {
  using enum AttributeNamespace;
  static const std::unordered_map<Name, AttributeNamespace> map = {
      {Name(u"xlink:actuate"), XLink}, {Name(u"xlink:arcrole"), XLink}, {Name(u"xlink:href"), XLink},
      {Name(u"xlink:role"), XLink},    {Name(u"xlink:show"), XLink},    {Name(u"xlink:title"), XLink},
      {Name(u"xlink:type"), XLink},    {Name(u"xml:lang"), Xml},        {Name(u"xml:space"), Xml},
      {Name(u"xmlns"), Xmlns},         {Name(u"xmlns:xlink"), Xmlns}};
  return map;
}

Name adjusted(const NameMap& map, Name name) {
  const auto found = map.find(name);
  return found == map.end() ? name : found->second;
}

}  // namespace

Name adjusted_svg_name(Name name) { return adjusted(svg_elements(), name); }

void adjust_foreign_attributes(std::vector<Attribute>& attributes, Namespace name_space) {
  const NameMap& map = name_space == Namespace::Svg ? svg_attributes() : mathml_attributes();
  for (Attribute& attribute : attributes) {
    attribute.name = adjusted(map, attribute.name);
    const auto found = attribute_namespaces().find(attribute.name);
    if (found != attribute_namespaces().end()) attribute.name_space = found->second;
  }
}

bool is_mathml_text_integration_point(const Element& element) {
  if (element.name_space() != Namespace::MathMl) return false;
  switch (element.name().tag()) {
    case Tag::Mi:
    case Tag::Mo:
    case Tag::Mn:
    case Tag::Ms:
    case Tag::Mtext: return true;
    default: return false;
  }
}

bool is_html_integration_point(const Element& element) {
  const Tag tag = element.name().tag();
  if (element.name_space() == Namespace::Svg) {
    return tag == Tag::ForeignObject || tag == Tag::Desc || tag == Tag::Title;
  }
  if (element.name_space() != Namespace::MathMl || tag != Tag::AnnotationXml) return false;
  const std::u16string_view encoding = element.attribute_or_empty(names::encoding);
  return equals_ignoring_ascii_case(encoding, u"text/html") ||
         equals_ignoring_ascii_case(encoding, u"application/xhtml+xml");
}

bool breaks_out_of_foreign_content(Tag tag) {
  switch (tag) {
    case Tag::B:
    case Tag::Big:
    case Tag::Blockquote:
    case Tag::Body:
    case Tag::Br:
    case Tag::Center:
    case Tag::Code:
    case Tag::Dd:
    case Tag::Div:
    case Tag::Dl:
    case Tag::Dt:
    case Tag::Em:
    case Tag::Embed:
    case Tag::H1:
    case Tag::H2:
    case Tag::H3:
    case Tag::H4:
    case Tag::H5:
    case Tag::H6:
    case Tag::Head:
    case Tag::Hr:
    case Tag::I:
    case Tag::Img:
    case Tag::Li:
    case Tag::Listing:
    case Tag::Menu:
    case Tag::Meta:
    case Tag::Nobr:
    case Tag::Ol:
    case Tag::P:
    case Tag::Pre:
    case Tag::Ruby:
    case Tag::S:
    case Tag::Small:
    case Tag::Span:
    case Tag::Strong:
    case Tag::Strike:
    case Tag::Sub:
    case Tag::Sup:
    case Tag::Table:
    case Tag::Tt:
    case Tag::U:
    case Tag::Ul:
    case Tag::Var: return true;
    default: return false;
  }
}

}  // namespace tvx::dom::parser
