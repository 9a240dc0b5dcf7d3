#include "tvx/automation/event_relay.h"

#include "tvx/library/objects/document_object.h"

namespace tvx::automation {

using library::Value;

namespace {

Value value_of(const std::u16string& text, const EventRelay::Document&) { return text; }
Value value_of(bool flag, const EventRelay::Document&) { return flag; }
Value value_of(std::int32_t number, const EventRelay::Document&) { return number; }
Value value_of(std::int16_t number, const EventRelay::Document&) { return std::int32_t{number}; }
Value value_of(const dom::Ref<dom::Element>& element, const EventRelay::Document& document) {
  return library::element_object(element.get(), document());
}

void assign(std::u16string& text, const Value& value) { text = value.to_text(); }
void assign(bool& flag, const Value& value) { flag = value.to_boolean(); }
void assign(std::int32_t& number, const Value& value) { number = value.to_integer32(); }
void assign(std::int16_t& number, const Value& value) { number = value.to_integer16(); }
void assign(dom::Ref<dom::Element>& element, const Value& value) { element = library::element_of(value); }

const library::EventMember& event_numbered(int number) {
  return library::events()[static_cast<std::size_t>(number) - 1];
}

}  // namespace

template <class... Arguments>
void EventRelay::relay(int number, Arguments&... arguments) {
  library::Values values{value_of(arguments, document_)...};
  sink_(event_numbered(number), values);
  std::size_t place = 0;
  (assign(arguments, values[place++]), ...);
}

void EventRelay::Error(std::int32_t& errNo, std::u16string& errDesc) { relay(1, errNo, errDesc); }
void EventRelay::FTPSuccess(std::int32_t& id, std::u16string& Message) { relay(2, id, Message); }
void EventRelay::FTPError(std::int32_t& errNo, std::u16string& errDesc) { relay(3, errNo, errDesc); }
void EventRelay::ASCIIKeyPress(std::int32_t& KeyCode, bool& Shift, bool& Control) {
  relay(4, KeyCode, Shift, Control);
}
void EventRelay::FTPTransferProgress(std::int32_t& CurrentBytes, std::int32_t& TotalBytes) {
  relay(5, CurrentBytes, TotalBytes);
}
void EventRelay::SpellCheckComplete(bool& Cancelled) { relay(6, Cancelled); }
void EventRelay::ToolButtonClick(std::u16string& Toolbar, std::int16_t& index, std::u16string& buttonName,
                                 bool& cancel) {
  relay(7, Toolbar, index, buttonName, cancel);
}
void EventRelay::MenuClick(std::u16string& MenuItem, bool& cancel) { relay(8, MenuItem, cancel); }
void EventRelay::BeforeLibraryInsert(std::u16string& AssetName, bool& cancel) { relay(9, AssetName, cancel); }
void EventRelay::BeforeCodeViewChange(bool& CurrentlyWYSIWYG, bool& cancel) {
  relay(10, CurrentlyWYSIWYG, cancel);
}
void EventRelay::SpellCheckWord(bool& Cancelled, std::u16string& oldWord, std::u16string& newWord,
                                bool& AddThisWord) {
  relay(11, Cancelled, oldWord, newWord, AddThisWord);
}
void EventRelay::BeginImageUpload() { relay(12); }
void EventRelay::EndImageUpload() { relay(13); }
void EventRelay::BeforeGetDocumentHTML(std::u16string& CurrentDocumentHTML) {
  relay(14, CurrentDocumentHTML);
}
void EventRelay::DocumentClick(dom::Ref<dom::Element>& CurrentElement) { relay(15, CurrentElement); }
void EventRelay::BeforeNavigate(std::u16string& TheURL, std::u16string& TheFrameName, bool& CancelNavigate) {
  relay(16, TheURL, TheFrameName, CancelNavigate);
}

}  // namespace tvx::automation
