#include "tvx/library/members/bindings.h"
#include "tvx/library/objects/directory_list_object.h"

namespace tvx::library {

namespace {

using core::HTMLed;

constexpr Parameter transfer_parameters[] = {{u"LocalFile", Type::String}, {u"RemoteFile", Type::String}};
constexpr Parameter remote_parameters[] = {{u"RemoteFile", Type::String}};
constexpr Parameter list_parameters[] = {{u"RemoteDirectory", Type::String}, {u"Filter", Type::String}};
constexpr Parameter image_parameters[] = {{u"localImagePath", Type::Variant, ByReference::No, Optional::Yes}};
constexpr Parameter address_parameters[] = {{u"ImageURL", Type::String}};

std::optional<std::u16string> path_of(const Values& arguments) {
  if (arguments.empty() || arguments[0].is_null()) return std::nullopt;
  return arguments[0].to_text();
}

Value insert_image(core::HTMLed& control, Values& arguments) {
  control.Insert_Image(path_of(arguments));
  return {};
}

Value insert_local_image(core::HTMLed& control, Values& arguments) {
  control.Insert_Image_NoFTP(path_of(arguments));
  return {};
}

Value insert_image_from_url(core::HTMLed& control, Values& arguments) {
  control.insertImageFromURL(arguments[0].to_text());
  return {};
}

Value count_local_images(core::HTMLed& control, Values&) { return control.CountLocalImages(); }

constexpr Member rows[] = {
    operation(151, u"PutFileFTP", Type::Boolean, transfer_parameters, u"Sends a file to the server.",
              [](HTMLed& control, Values& arguments) -> Value {
                return control.PutFileFTP(arguments[0].to_text(), arguments[1].to_text());
              }),
    operation(152, u"GetFileFTP", Type::Boolean, transfer_parameters, u"Fetches a file from the server.",
              [](HTMLed& control, Values& arguments) -> Value {
                return control.GetFileFTP(arguments[0].to_text(), arguments[1].to_text());
              }),
    operation(153, u"DeleteFileFTP", Type::Boolean, remote_parameters, u"Deletes a file on the server.",
              [](HTMLed& control, Values& arguments) -> Value {
                return control.DeleteFileFTP(arguments[0].to_text());
              }),
    operation(154, u"ListFilesFTP", Type::Object, list_parameters, u"Lists a folder of the server.",
              [](HTMLed& control, Values& arguments) -> Value {
                return directory_list_object(
                    control.ListFilesFTP(arguments[0].to_text(), arguments[1].to_text()));
              }),
    operation<&HTMLed::FTPCancelTransfer>(155, u"FTPCancelTransfer", u"Ends the running transfer."),
    operation(156, u"Insert_Image", Type::None, image_parameters,
              u"Uploads an image, or the one that the user chooses, and inserts it.", insert_image),
    operation(157, u"Insert_Image_NoFTP", Type::None, image_parameters,
              u"Inserts a local image, or the one that the user chooses.", insert_local_image),
    operation(158, u"insertImageFromURL", Type::None, address_parameters, u"Inserts the image at an address.",
              insert_image_from_url),
    operation(159, u"UploadAllImages", Type::Integer32, {},
              u"Uploads the document's local images and gives their number.",
              [](HTMLed& control, Values&) -> Value { return control.UploadAllImages(); }),
    operation(160, u"CountLocalImages", Type::Integer32, {}, u"The number of local images in the document.",
              count_local_images),
    operation<&HTMLed::SpellCheck>(161, u"SpellCheck",
                                   u"Checks the document's words, from the first to the last."),
    operation<&HTMLed::SpellingCancel>(162, u"SpellingCancel",
                                       u"Ends the spelling run after the word in hand."),
};

}  // namespace

std::span<const Member> transfer_operations() { return rows; }

}  // namespace tvx::library
