#pragma once

#include <string>

namespace gorbex::ui {

enum class StarterStream { Output, Errors };

/// Tells UTF-8 lines to the one who started this program: in the given file or pipe, else on the
/// console that started it, else in a box.
void TellStarter(const std::string& text, StarterStream stream);

}  // namespace gorbex::ui
