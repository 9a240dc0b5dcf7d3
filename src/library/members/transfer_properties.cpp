#include "tvx/library/members/bindings.h"

namespace tvx::library {

namespace {

using core::HTMLed;

constexpr Member rows[] = {
    property<&HTMLed::UploadImages, &HTMLed::set_UploadImages>(
        32, u"UploadImages", Type::Boolean, false, u"Whether an inserted image is uploaded at once."),
    property<&HTMLed::LocalImageStore, &HTMLed::set_LocalImageStore>(
        33, u"LocalImageStore", Type::String, u"", u"The folder into which inserted images are copied."),
    property<&HTMLed::CustomDictionaryFilename, &HTMLed::set_CustomDictionaryFilename>(
        34, u"CustomDictionaryFilename", Type::String, u"", u"The user's own words for the spelling run."),
    property<&HTMLed::FTPHost, &HTMLed::set_FTPHost>(35, u"FTPHost", Type::String, u"",
                                                     u"The server that files are transferred to and from."),
    property<&HTMLed::FTPUser, &HTMLed::set_FTPUser>(36, u"FTPUser", Type::String, u"",
                                                     u"The name for logging in there."),
    property<&HTMLed::FTPPassword, &HTMLed::set_FTPPassword>(
        37, u"FTPPassword", Type::String, u"",
        u"The password there; the property store holds it unenciphered."),
    property<&HTMLed::FTPInitDir, &HTMLed::set_FTPInitDir>(38, u"FTPInitDir", Type::String, u"",
                                                           u"The server's folder to begin in."),
    property<&HTMLed::FTPSaveToURL, &HTMLed::set_FTPSaveToURL>(
        39, u"FTPSaveToURL", Type::String, u"", u"The address under which uploaded images are seen."),
    property<&HTMLed::FTPPassive, &HTMLed::set_FTPPassive>(40, u"FTPPassive", Type::Boolean, false,
                                                           u"Whether data connections are passive."),
    property<&HTMLed::FTPPort, &HTMLed::set_FTPPort>(41, u"FTPPort", Type::Integer32, 21,
                                                     u"The server's port."),
    property<&HTMLed::FTPTransferType, &HTMLed::set_FTPTransferType>(
        42, u"FTPTransferType", Type::ed_FTPTransferType, 2, u"Text (1) or binary (2) transfer."),
    property<&HTMLed::FTPProxyServer, &HTMLed::set_FTPProxyServer>(43, u"FTPProxyServer", Type::String, u"",
                                                                   u"The proxy that transfers go through."),
    property<&HTMLed::FTPProxyBypassList, &HTMLed::set_FTPProxyBypassList>(
        44, u"FTPProxyBypassList", Type::String, u"", u"The servers that need no proxy."),
    property<&HTMLed::FTPActionInProgress, &HTMLed::set_FTPActionInProgress>(
        45, u"FTPActionInProgress", Type::Boolean, false, u"Whether a transfer is under way.",
        Access::Refused),
    property<&HTMLed::ShowFTPDialog, &HTMLed::set_ShowFTPDialog>(
        46, u"ShowFTPDialog", Type::Boolean, true, u"Whether a transfer shows its progress in a dialog."),
    property<&HTMLed::FTPBlockSize, &HTMLed::set_FTPBlockSize>(
        47, u"FTPBlockSize", Type::Integer32, 100,
        u"Bytes that are moved between two looks at the message loop; above 1,024 without a rest."),
    property<&HTMLed::SpellingLanguage, &HTMLed::set_SpellingLanguage>(
        48, u"SpellingLanguage", Type::String, u"",
        u"The language of what no element of the document names one for (\"de-DE\"); empty: the locale's."),
    property<&HTMLed::CheckSpellingAsYouType, &HTMLed::set_CheckSpellingAsYouType>(
        49, u"CheckSpellingAsYouType", Type::Boolean, false,
        u"Whether wrong words are underlined while the user types."),
};

}  // namespace

std::span<const Member> transfer_properties() { return rows; }

}  // namespace tvx::library
