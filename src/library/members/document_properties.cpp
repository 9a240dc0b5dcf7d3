#include "tvx/library/members/bindings.h"
#include "tvx/library/objects/directory_item_object.h"
#include "tvx/library/objects/document_object.h"

namespace tvx::library {

namespace {

using core::HTMLed;

constexpr Member rows[] = {
    {.kind = MemberKind::Property,
     .number = 1,
     .name = u"DOM",
     .type = Type::Object,
     .description = u"The document that is being edited; nothing before the start and at design time.",
     .access = Access::RefusedDOM,
     .get = [](HTMLed& control) -> Value { return document_object(control.DOM()); },
     .set = [](HTMLed& control, const Value&) { control.set_DOM(); }},
    {.kind = MemberKind::Property,
     .number = 2,
     .name = u"DirectoryItem",
     .type = Type::Object,
     .description = u"A new, empty entry of a directory listing at each read.",
     .access = Access::ReadOnly,
     .get = [](HTMLed&) -> Value { return directory_item_object({}); }},
    {.kind = MemberKind::Property,
     .number = 3,
     .name = u"hwnd",
     .type = Type::Integer32,
     .description = u"The number of the control's window; its temporary files begin with it.",
     .access = Access::ReadOnly,
     .get = get_of<&HTMLed::hwnd>},
    property<&HTMLed::DocumentHTML, &HTMLed::set_DocumentHTML>(
        4, u"DocumentHTML", Type::String, u"",
        u"The HTML in the body: set to edit it, read to have what it has become."),
    property<&HTMLed::allHTML, &HTMLed::set_allHTML>(
        5, u"allHTML", Type::String, u"", u"The HTML of the whole document, its head included, as it stands.",
        Access::Refused),
    property<&HTMLed::DocumentText, &HTMLed::set_DocumentText>(
        6, u"DocumentText", Type::String, u"", u"The text of the body, without markup.", Access::Refused),
    property<&HTMLed::DocumentTitle, &HTMLed::set_DocumentTitle>(
        7, u"DocumentTitle", Type::String, u"",
        u"The document's title; every document loaded later gets it."),
    property<&HTMLed::IsDirty, &HTMLed::set_IsDirty>(
        8, u"IsDirty", Type::Boolean, false, u"Whether the user has touched the document since it was set.",
        Access::Refused),
    property<&HTMLed::BaseURL, &HTMLed::set_BaseURL>(
        9, u"BaseURL", Type::String, u"http://",
        u"The address against which the document's addresses are read."),
    property<&HTMLed::relativeURLs, &HTMLed::set_relativeURLs>(
        10, u"relativeURLs", Type::Boolean, false,
        u"Whether reading the HTML takes BaseURL off the addresses of links, images and scripts."),
    property<&HTMLed::AlwaysConvertUnicodeCharacters, &HTMLed::set_AlwaysConvertUnicodeCharacters>(
        11, u"AlwaysConvertUnicodeCharacters", Type::Boolean, false,
        u"Whether characters outside ASCII leave the control as numeric references."),
    property<&HTMLed::CSSText, &HTMLed::set_CSSText>(
        12, u"CSSText", Type::String, u"",
        u"The style sheet: its address while CSShttp is true, else its text."),
    property<&HTMLed::CSShttp, &HTMLed::set_CSShttp>(13, u"CSShttp", Type::Boolean, true,
                                                     u"Whether CSSText is an address."),
    property<&HTMLed::showDocumentBackgroundImage, &HTMLed::set_showDocumentBackgroundImage>(
        14, u"showDocumentBackgroundImage", Type::Boolean, true,
        u"Whether the document may show a background image; can be set at design time only.",
        Access::DesignTime),
    property<&HTMLed::EditorEnabled, &HTMLed::set_EditorEnabled>(
        15, u"EditorEnabled", Type::Boolean, true, u"Whether the document can be edited, or read only."),
    property<&HTMLed::useEnterAsBR, &HTMLed::set_useEnterAsBR>(
        16, u"useEnterAsBR", Type::Boolean, false, u"Whether Enter makes a line break, not a paragraph."),
    property<&HTMLed::isAccessContained, &HTMLed::set_isAccessContained>(
        17, u"isAccessContained", Type::Boolean, false,
        u"Whether the control lives in a host that keeps Enter and the focus for itself."),
    property<&HTMLed::RemoteContent, &HTMLed::set_RemoteContent>(
        71, u"RemoteContent", Type::Integer32, 1,
        u"What documents bring in from other machines: nothing (0), images and style sheets (1), nothing "
        u"until "
        u"ShowRemoteContent (2), frames, fonts and media too (3)."),
    {.kind = MemberKind::Property,
     .number = 72,
     .name = u"RemoteContentWithheld",
     .type = Type::Boolean,
     .description =
         u"Whether the document wants images or style sheets that RemoteContent doesn't let it have.",
     .access = Access::ReadOnly,
     .get = get_of<&HTMLed::RemoteContentWithheld>},
    property<&HTMLed::AutoFormat, &HTMLed::set_AutoFormat>(
        73, u"AutoFormat", Type::Boolean, false,
        u"Whether short forms that are typed become what they stand for: \"- \" a list, \"1. \" a numbered "
        u"one, \"# \" a heading, \"> \" a quotation, an address a link."),
};

}  // namespace

std::span<const Member> document_properties() { return rows; }

}  // namespace tvx::library
