#include <unistd.h>

#include "tests/platform/chatty_tool.h"

namespace gorbex::test {

void StartAndLeave(const std::string& program, const std::string& argument) {
  if (fork() == 0) execl(program.c_str(), program.c_str(), argument.c_str(), nullptr);
}

}  // namespace gorbex::test
