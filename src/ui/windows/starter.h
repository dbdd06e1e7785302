#pragma once

#include <string>

namespace gorbex::ui {

enum class StarterStream { Output, Errors };

/// Tells UTF-8 lines to whoever started this window's program: into the file or pipe that it was
/// given, else on the console that it was started from, else in a box.
void TellStarter(const std::string& text, StarterStream stream);

}  // namespace gorbex::ui
