#include "compiler/host.h"

#include <optional>

#include "platform/linux/host.h"

namespace gorbex::standin {

std::unique_ptr<Host> MakeHost() {
  return std::make_unique<LinuxHost>(std::nullopt);
}

std::string Image(ImageKind kind) {
  return EmptyImage(kind);
}

std::vector<std::string> Arguments(int count, char** values) {
  return {values + (count > 0 ? 1 : 0), values + count};
}

}  // namespace gorbex::standin
