#include "core/run_events.h"

namespace gorbex {

std::string_view NameOf(BuildStep step) {
  switch (step) {
    case BuildStep::Latest:
      return "getting latest sources";
    case BuildStep::Compatibility:
      return "breaking compatibility";
    case BuildStep::Debug:
      return "setting debug values";
    case BuildStep::References:
      return "updating references";
    case BuildStep::Version:
      return "stamping the version";
    case BuildStep::Compile:
      return "compiling";
  }
  return {};
}

}  // namespace gorbex
