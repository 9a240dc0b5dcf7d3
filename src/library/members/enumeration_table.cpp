#include "tvx/core/enumerations.h"
#include "tvx/library/members/member_table.h"

namespace tvx::library {

namespace {

template <class Value>
constexpr EnumerationMember member(std::u16string_view name, Value value) {
  return {name, static_cast<std::int32_t>(value)};
}

using Border = core::EdBorderStyle;
using Highlight = core::EdHighLightStyle;
using Transfer = core::ed_FTPTransferType;
using Insert = core::ed_InsertType;
using Bar = core::EdToolbar;

constexpr EnumerationMember border_styles[] = {member(u"None", Border::None),
                                               member(u"Solid", Border::Solid)};
constexpr EnumerationMember highlight_styles[] = {
    member(u"edNone", Highlight::edNone),     member(u"edSolid", Highlight::edSolid),
    member(u"edDashed", Highlight::edDashed), member(u"edDotted", Highlight::edDotted),
    member(u"edDouble", Highlight::edDouble), member(u"edGroove", Highlight::edGroove),
    member(u"edRidge", Highlight::edRidge),   member(u"edInset", Highlight::edInset),
    member(u"edOutset", Highlight::edOutset)};
constexpr EnumerationMember transfer_types[] = {member(u"ov_Unknown", Transfer::ov_Unknown),
                                                member(u"ov_ASCII", Transfer::ov_ASCII),
                                                member(u"ov_Binary", Transfer::ov_Binary)};
constexpr EnumerationMember insert_types[] = {
    member(u"ed_InsertReplaceSelection", Insert::ed_InsertReplaceSelection),
    member(u"ed_InsertBeforeSelection", Insert::ed_InsertBeforeSelection),
    member(u"ed_InsertAfterSelection", Insert::ed_InsertAfterSelection)};
constexpr EnumerationMember toolbars[] = {member(u"edMainToolbars", Bar::edMainToolbars),
                                          member(u"edFormToolbar", Bar::edFormToolbar)};

constexpr Enumeration rows[] = {{u"EdBorderStyle", border_styles},
                                {u"EdHighLightStyle", highlight_styles},
                                {u"ed_FTPTransferType", transfer_types},
                                {u"ed_InsertType", insert_types},
                                {u"EdToolbar", toolbars}};

}  // namespace

std::span<const Enumeration> enumerations() { return rows; }

}  // namespace tvx::library
