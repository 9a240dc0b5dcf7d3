#include "tvx/core/content/temporary_files.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/control_fixture.h"

namespace tvx::core {
namespace {

namespace fs = std::filesystem;

/// A process that is over, and its number free for now.
pid_t dead_process() {
  const pid_t process = ::fork();
  if (process == 0) ::_exit(0);
  ::waitpid(process, nullptr, 0);
  return process;
}

class TemporaryFiles : public Control {
 protected:
  /// A file that a control of that process has left, so many hours ago.
  std::string left_by(pid_t process, const std::string& name, int hours) {
    const std::string file =
        std::to_string(platform::number_of(platform::first_window_handle(process)) + 3) + name;
    write_file(file, "left");
    fs::last_write_time(folder / file, fs::file_time_type::clock::now() - std::chrono::hours(hours));
    return file;
  }
  bool there(const std::string& file) { return fs::exists(folder / file); }
};

TEST_F(TemporaryFiles, OfDeadProcessesAreSweptAtTheNextStart) {
  const pid_t dead = dead_process();
  const std::string page = left_by(dead, "msHTMLEdit.html", 30), sheet = left_by(dead, "tvxStyle.css", 30);
  start();
  EXPECT_FALSE(there(page));
  EXPECT_FALSE(there(sheet));
}

TEST_F(TemporaryFiles, OfLivingProcessesStay) {
  const std::string own = left_by(::getpid(), "msHTMLEdit.html", 30);
  const std::string of_the_first = left_by(1, "msHTMLEdit.html", 30);
  start();
  EXPECT_TRUE(there(own));
  EXPECT_TRUE(there(of_the_first));
}

TEST_F(TemporaryFiles, OfTheLastDayStay) {
  const std::string young = left_by(dead_process(), "msHTMLEdit.html", 20);
  start();
  EXPECT_TRUE(there(young));
}

TEST_F(TemporaryFiles, OtherFilesStay) {
  const pid_t dead = dead_process();
  const std::string note = left_by(dead, "note.html", 30);
  const std::string folder_of_that_name = left_by(dead, "tvxStyle.css", 30);
  fs::remove(folder / folder_of_that_name);
  fs::create_directory(folder / folder_of_that_name);
  // The last two are numbers of no process: a host has chosen them.
  const std::vector<std::string> odd = {"msHTMLEdit.html", "12tvxStyle.css", "9999999999999tvxStyle.css",
                                        "99999999999999999999999tvxStyle.css"};
  for (const std::string& name : odd) {
    write_file(name, "x");
    fs::last_write_time(folder / name, fs::file_time_type::clock::now() - std::chrono::hours(30));
  }
  start();
  for (const std::string& name : odd) EXPECT_TRUE(there(name)) << name;
  EXPECT_TRUE(there(note));
  EXPECT_TRUE(there(folder_of_that_name));
}

TEST_F(TemporaryFiles, GoWithTheirControl) {
  start();
  std::vector<std::string> own;
  for (std::u16string_view name : {document_file, style_sheet_file, picture_file}) {
    own.push_back("7654321" + to_utf8(name));  // the control's window
    write_file(own.back(), "x");
  }
  control->UserControl_Terminate();
  for (const std::string& file : own) EXPECT_FALSE(there(file)) << file;
}

TEST_F(TemporaryFiles, WithNoFolderNothingIsWrittenToTheCurrentOne) {
  const fs::path before = fs::current_path(), empty = folder / "empty";
  fs::create_directory(empty);
  fs::current_path(empty);
  platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, u"");
  control = make(container);
  control->set_CSShttp(false);
  control->set_CSSText(u".a { color: red }");
  control->UserControl_Show();
  loop.settle();
  control->set_DocumentHTML(u"<P>given</P>");
  control->UserControl_Terminate();
  fs::current_path(before);
  EXPECT_TRUE(fs::is_empty(empty)) << fs::directory_iterator(empty)->path();
  ASSERT_FALSE(host.heard.empty());
  EXPECT_EQ(host.heard.front(), "Error: 75 No folder for temporary files can be used");
}

TEST_F(TemporaryFiles, WithNoFolderTheDocumentCanBeEditedAllTheSame) {
  platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, u"");
  start();
  control->set_DocumentHTML(u"<P>given</P>");
  EXPECT_EQ(body(), u"<P>given</P>");
}

}  // namespace
}  // namespace tvx::core
