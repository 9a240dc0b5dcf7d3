#pragma once

namespace tvx::qt {

/// To be called first of all in main, before the application object: what the browser engine wants to know
/// before it starts. As root it can't use its sandbox; that is said in one line on standard error. What else
/// the engine would tell there of its start is shown where QT_LOGGING_RULES names "qt.webenginecontext".
void prepare_web_engine();

}  // namespace tvx::qt
