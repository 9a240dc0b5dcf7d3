#include "tvx/transfer/wait_dialog.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "tvx/base/strings.h"

namespace tvx::transfer {
namespace {

/// Often enough for the eye.
constexpr std::int64_t milliseconds_between_figures = 100;

constexpr std::array<std::u16string_view, 3> action_labels = {u"lblConnecting", u"lblUploading",
                                                              u"lblDownloading"};

/// "1.2 MB": figures and units that need no translation.
std::u16string amount(double bytes) {
  constexpr std::array<const char*, 5> units = {"B", "KB", "MB", "GB", "TB"};
  std::size_t unit = 0;
  while (bytes >= 1000 && unit + 1 < units.size()) {
    bytes /= 1000;
    ++unit;
  }
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), unit == 0 ? "%.0f %s" : "%.1f %s", bytes, units[unit]);
  return from_utf8(text.data());
}

std::u16string duration(std::int64_t seconds) {
  std::array<char, 40> text{};
  const auto hours = static_cast<int>(seconds / 3600), minutes = static_cast<int>(seconds / 60 % 60),
             rest = static_cast<int>(seconds % 60);
  if (hours > 0)
    std::snprintf(text.data(), text.size(), "%d:%02d:%02d", hours, minutes, rest);
  else
    std::snprintf(text.data(), text.size(), "%d:%02d", minutes, rest);
  return from_utf8(text.data());
}

}  // namespace

frmWait::frmWait() {
  form_.add_label(u"lblTitle", u"Please Wait");
  form_.begin_row();
  form_.add_label(u"lblMessage", u"");
  add_details();
  form_.set_cancel_button(form_.add_closing_button(u"cmdCancel", u"Cancel"));
  form_.set_handler(this);
  show_action(Action::Connecting);
}

void frmWait::add_details() {
  form_.begin_row();
  form_.add_label(u"lblConnecting", u"Connecting");
  form_.add_label(u"lblUploading", u"Uploading");
  form_.add_label(u"lblDownloading", u"Downloading");
  form_.add_label(u"lblFile", u"");
  form_.add_label(u"lblCount", u"");
  form_.begin_row();
  form_.add_label(u"lblPercent", u"");
  const auto add_figure = [this](std::u16string title, std::u16string caption, std::u16string figure) {
    form_.begin_row();
    form_.add_label(std::move(title), std::move(caption));
    form_.add_label(std::move(figure), u"");
  };
  add_figure(u"lblBytesTitle", u"Transferred", u"lblBytes");
  add_figure(u"lblSpeedTitle", u"Speed", u"lblSpeed");
  add_figure(u"lblTimeTitle", u"Time left", u"lblTime");
}

const std::u16string& frmWait::lblMessage() const { return form_.Controls(u"lblMessage").Caption(); }
void frmWait::set_lblMessage(std::u16string_view text) { form_.Controls(u"lblMessage").set_Caption(text); }

void frmWait::show_action(Action action) {
  for (std::size_t i = 0; i < action_labels.size(); ++i)
    form_.Controls(action_labels[i]).set_Visible(i == static_cast<std::size_t>(action));
}

void frmWait::show_file(std::u16string_view name) {
  form_.Controls(u"lblFile").set_Caption(name);
  first_time_ = -1;
}

void frmWait::show_count(std::int32_t number, std::int32_t total) {
  form_.Controls(u"lblCount")
      .set_Caption(total > 0 ? to_text(number) + u" / " + to_text(total) : std::u16string());
}

void frmWait::show_bytes(std::int64_t done, std::int64_t total, std::int64_t now) {
  if (first_time_ < 0) {
    first_time_ = shown_time_ = now;
    first_bytes_ = done;
  } else if (done < total && now - shown_time_ < milliseconds_between_figures) {
    return;
  }
  shown_time_ = now;
  const std::int64_t percent = total > 0 ? std::clamp<std::int64_t>(done * 100 / total, 0, 100) : 0;
  form_.Controls(u"lblPercent").set_Caption(to_text(percent) + u" %");
  form_.Controls(u"lblBytes")
      .set_Caption(amount(static_cast<double>(done)) + u" / " + amount(static_cast<double>(total)));
  if (now <= first_time_ || done <= first_bytes_) return;
  const double speed =
      static_cast<double>(done - first_bytes_) * 1000 / static_cast<double>(now - first_time_);
  form_.Controls(u"lblSpeed").set_Caption(amount(speed) + u"/s");
  const auto left =
      static_cast<std::int64_t>(static_cast<double>(std::max<std::int64_t>(total - done, 0)) / speed + 0.5);
  form_.Controls(u"lblTime").set_Caption(duration(left));
}

void frmWait::Click(platform::FormControl&) {
  bCancel = true;
  if (on_cancel) on_cancel();
}

}  // namespace tvx::transfer
