#include "tvx/library/members/member_table.h"

namespace tvx::library {

namespace {

constexpr Parameter reference(std::u16string_view name, Type type) { return {name, type, ByReference::Yes}; }

constexpr Parameter failure[] = {reference(u"errNo", Type::Integer32), reference(u"errDesc", Type::String)};
constexpr Parameter success[] = {reference(u"id", Type::Integer32), reference(u"Message", Type::String)};
constexpr Parameter key[] = {reference(u"KeyCode", Type::Integer32), reference(u"Shift", Type::Boolean),
                             reference(u"Control", Type::Boolean)};
constexpr Parameter progress[] = {reference(u"CurrentBytes", Type::Integer32),
                                  reference(u"TotalBytes", Type::Integer32)};
constexpr Parameter complete[] = {reference(u"Cancelled", Type::Boolean)};
constexpr Parameter button[] = {reference(u"Toolbar", Type::String), reference(u"index", Type::Integer16),
                                reference(u"buttonName", Type::String), reference(u"cancel", Type::Boolean)};
constexpr Parameter menu[] = {reference(u"MenuItem", Type::String), reference(u"cancel", Type::Boolean)};
constexpr Parameter asset[] = {reference(u"AssetName", Type::String), reference(u"cancel", Type::Boolean)};
constexpr Parameter view[] = {reference(u"CurrentlyWYSIWYG", Type::Boolean),
                              reference(u"cancel", Type::Boolean)};
constexpr Parameter word[] = {reference(u"Cancelled", Type::Boolean), reference(u"oldWord", Type::String),
                              reference(u"newWord", Type::String), reference(u"AddThisWord", Type::Boolean)};
constexpr Parameter html[] = {reference(u"CurrentDocumentHTML", Type::String)};
constexpr Parameter element[] = {reference(u"CurrentElement", Type::Object)};
constexpr Parameter navigation[] = {reference(u"TheURL", Type::String),
                                    reference(u"TheFrameName", Type::String),
                                    reference(u"CancelNavigate", Type::Boolean)};

constexpr EventMember rows[] = {
    {1, u"Error", u"An operation failed in a way that the host should know.", failure},
    {2, u"FTPSuccess", u"A note about a transfer, or its good end.", success},
    {3, u"FTPError", u"A transfer failed.", failure},
    {4, u"ASCIIKeyPress", u"A key goes down in the document, before anything acts on it.", key},
    {5, u"FTPTransferProgress", u"Bytes of a running transfer.", progress},
    {6, u"SpellCheckComplete", u"A spelling run has ended.", complete},
    {7, u"ToolButtonClick", u"A toolbar button is about to act; cancel stops it.", button},
    {8, u"MenuClick", u"An item of a context menu is about to act; cancel stops it.", menu},
    {9, u"BeforeLibraryInsert", u"Part of the interface; nothing raises it.", asset},
    {10, u"BeforeCodeViewChange", u"The view is about to switch; cancel stops it.", view},
    {11, u"SpellCheckWord", u"A spelling run deals with a word.", word},
    {12, u"BeginImageUpload", u"The connection of a one-file upload stands.", {}},
    {13, u"EndImageUpload", u"A one-file upload has ended.", {}},
    {14, u"BeforeGetDocumentHTML", u"DocumentHTML is being read; the text may be changed.", html},
    {15, u"DocumentClick", u"A click in the document; the element may be nothing.", element},
    {16, u"BeforeNavigate", u"Something wants to navigate; CancelNavigate is true on entry.", navigation},
};

}  // namespace

std::span<const EventMember> events() { return rows; }

}  // namespace tvx::library
