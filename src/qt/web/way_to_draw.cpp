#include "tvx/qt/web/way_to_draw.h"

#include <QByteArray>
#include <algorithm>
#include <array>
#include <string>
#include <system_error>

namespace tvx::qt {
namespace {

constexpr const char* toolkit_variable = "QT_XCB_GL_INTEGRATION";
constexpr const char* scene_variable = "QT_QUICK_BACKEND";
constexpr const char* engine_variable = "QTWEBENGINE_CHROMIUM_FLAGS";

// Drivers that draw by themselves and stand beside the system's own.
constexpr std::array<const char*, 5> other_cards{"nvidiactl", "dxg", "mali0", "kgsl-3d0", "pvrsrvkm"};

bool somebody_has_chosen() {
  const std::array names{toolkit_variable, scene_variable, "QSG_RHI_BACKEND", "LIBGL_ALWAYS_SOFTWARE",
                         "GALLIUM_DRIVER"};
  const QByteArray flags = qgetenv(engine_variable);
  return std::ranges::any_of(names, [](const char* name) { return qEnvironmentVariableIsSet(name); }) ||
         flags.contains("gpu") || flags.contains("-gl");
}

bool is_on_x11() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!platform.isEmpty()) return platform.startsWith("xcb");
  return qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

QtMessageHandler handler_before = nullptr;

/// The engine asks for OpenGL with the application, in every program, and for each view that it shows, and
/// goes on without it.
constexpr const char* of_missing_opengl[] = {"QXcbIntegration: Cannot create platform OpenGL context",
                                             "No suitable graphics backend found"};

void leave_out_missing_opengl(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  const auto is_it = [&](const char* words) { return text.startsWith(QLatin1String(words)); };
  if (std::ranges::any_of(of_missing_opengl, is_it)) return;
  handler_before(type, context, text);
}

}  // namespace

// A device that only shows what was drawn has no node to draw by.
bool has_graphics_card(const std::filesystem::path& devices) {
  std::error_code error;
  for (const auto& node : std::filesystem::directory_iterator(devices / "dri", error))
    if (node.path().filename().string().starts_with("render")) return true;
  return std::ranges::any_of(
      other_cards, [&](const char* name) { return std::filesystem::exists(devices / name, error); });
}

WayToDraw::WayToDraw(const std::filesystem::path& devices)
    : by_processor_(is_on_x11() && !somebody_has_chosen() && !has_graphics_card(devices)) {
  if (!by_processor_) return;
  qputenv(toolkit_variable, "none");
  qputenv(scene_variable, "software");
  qputenv(engine_variable, (qgetenv(engine_variable) + " --disable-gpu").trimmed());
  const QtMessageHandler present = qInstallMessageHandler(leave_out_missing_opengl);
  if (present != leave_out_missing_opengl) handler_before = present;
}

WayToDraw::~WayToDraw() {
  if (by_processor_) qunsetenv(toolkit_variable);
}

}  // namespace tvx::qt
