#include "tvx/automation/control_object.h"
#include "tvx/automation/inside.h"
#include "tvx/automation/instance.h"
#include "tvx/library/objects/directory_list_object.h"
#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/parts.h"

/// The clients of servers by the names of their members: the control's own, and that of the library of remote
/// pictures while it is open.
namespace tvx::automation {

using library::expect_arguments;
using library::MemberOf;
using library::Value;
using library::Values;
using transfer::clsFTP;

namespace {

class ClientObject final : public library::Object {
 public:
  explicit ClientObject(clsFTP& client) : client_(client) {}
  std::u16string_view kind() const override { return u"ftp"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  clsFTP& operator*() const { return client_; }

 private:
  clsFTP& client_;
};

template <auto Field>
Value text(ClientObject& self) {
  return (*self).*Field;
}
template <auto Field>
void set_text(ClientObject& self, const Value& value) {
  (*self).*Field = value.to_text();
}
template <auto Field>
Value number(ClientObject& self) {
  return std::int32_t{(*self).*Field};
}
template <auto Field>
void set_number(ClientObject& self, const Value& value) {
  (*self).*Field = value.to_integer32();
}
template <auto Field>
void set_flag(ClientObject& self, const Value& value) {
  (*self).*Field = value.to_boolean();
}

template <auto Method>
Value call(ClientObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  return ((*self).*Method)();
}
template <auto Method>
Value on_name(ClientObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return ((*self).*Method)(arguments[0].to_text());
}
template <auto Method>
Value on_names(ClientObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  return ((*self).*Method)(arguments[0].to_text(), arguments[1].to_text());
}

void set_transfer_type(ClientObject& self, const Value& value) {
  (*self).TransferType = static_cast<platform::RemoteTransferType>(value.to_integer32());
}

constexpr MemberOf<ClientObject> rows[] = {
    {u"UserName", text<&clsFTP::UserName>, set_text<&clsFTP::UserName>},
    {u"Password", text<&clsFTP::Password>, set_text<&clsFTP::Password>},
    {u"Host", text<&clsFTP::Host>, set_text<&clsFTP::Host>},
    {u"InitDir", text<&clsFTP::InitDir>, set_text<&clsFTP::InitDir>},
    {u"Passive", text<&clsFTP::Passive>, set_flag<&clsFTP::Passive>},
    {u"FTPPort", number<&clsFTP::FTPPort>, set_number<&clsFTP::FTPPort>},
    {u"ProxyServer", text<&clsFTP::ProxyServer>, set_text<&clsFTP::ProxyServer>},
    {u"ProxyBypassList", text<&clsFTP::ProxyBypassList>, set_text<&clsFTP::ProxyBypassList>},
    {u"ShowDialog", text<&clsFTP::ShowDialog>, set_flag<&clsFTP::ShowDialog>},
    {u"TransferType",
     [](ClientObject& self) -> Value { return static_cast<std::int32_t>((*self).TransferType); },
     set_transfer_type},
    {u"BlockSize", number<&clsFTP::BlockSize>, set_number<&clsFTP::BlockSize>},
    // Reading it clears it.
    {u"ActionCancelled", [](ClientObject& self) -> Value { return (*self).ActionCancelled(); },
     [](ClientObject& self, const Value& value) { (*self).set_ActionCancelled(value.to_boolean()); }},
    {u"Directory", [](ClientObject& self) { return library::directory_list_object((*self).Directory()); }},
    {.name = u"Connect", .call = call<&clsFTP::Connect>},
    {.name = u"Disconnect", .call = call<&clsFTP::Disconnect>},
    {.name = u"GetFileProgress", .call = on_names<&clsFTP::GetFileProgress>},
    {.name = u"PutFileProgress", .call = on_names<&clsFTP::PutFileProgress>},
    {.name = u"GetRemoteFileSize", .call = on_name<&clsFTP::GetRemoteFileSize>},
    {.name = u"GetDirectoryListing", .call = on_name<&clsFTP::GetDirectoryListing>},
    {.name = u"GetCurrDirectory", .call = call<&clsFTP::GetCurrDirectory>},
    {.name = u"SetCurrDirectory", .call = on_name<&clsFTP::SetCurrDirectory>},
    {.name = u"DeleteFile", .call = on_name<&clsFTP::DeleteFile>},
    {.name = u"CreateDirectory", .call = on_name<&clsFTP::CreateDirectory>},
    {.name = u"RemoveDirectory", .call = on_name<&clsFTP::RemoveDirectory>},
    {.name = u"RenameFile", .call = on_names<&clsFTP::RenameFile>},
};

Value ClientObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<ClientObject>(rows, name, *this, arguments);
}
void ClientObject::set(std::u16string_view name, const Value& value) {
  library::set_named<ClientObject>(rows, name, *this, value);
}

/// The library's dialog, with what it has beside its controls.
class LibraryObject final : public library::Object {
 public:
  explicit LibraryObject(transfer::frmLibraryImage& library)
      : library_(library), form_(library::form_object(library.form())) {}
  std::u16string_view kind() const override { return u"form"; }
  std::vector<std::pair<std::string, Value>> description() const override { return form_->description(); }
  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"lFTP")) {
      expect_arguments(arguments, 0, 0);
      return client_object(library_.lFTP());
    }
    if (!equals_ignoring_ascii_case(name, u"Connect")) return form_->invoke(name, arguments);
    expect_arguments(arguments, 0, 0);
    library_.Connect();
    return {};
  }
  void set(std::u16string_view name, const Value& value) override { form_->set(name, value); }

 private:
  transfer::frmLibraryImage& library_;
  const library::ObjectHandle form_;
};

}  // namespace

library::ObjectHandle client_object(clsFTP& client) { return std::make_shared<ClientObject>(client); }

library::ObjectHandle library_object(transfer::frmLibraryImage* library) {
  return library ? std::make_shared<LibraryObject>(*library) : nullptr;
}

}  // namespace tvx::automation
