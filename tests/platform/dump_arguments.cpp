#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

// dump_arguments FILE EXITCODE ARGUMENTS...: writes to the file what it was started with, each
// argument in brackets, and ends with the exit code, or by the signal of a negative one.
int main(int count, char** arguments) {
  if (count < 3) return 99;
  std::ofstream out(arguments[1], std::ios::binary);
  for (int i = 3; i < count; ++i) out << '[' << arguments[i] << ']';
  const char* prefix = std::getenv("GORBEX_PREFIX");
  out << '\n' << (prefix != nullptr ? prefix : "") << '\n' << (std::cin.get() == EOF ? 0 : 1);
  out.close();
  const int code = std::stoi(arguments[2]);
  return code >= 0 ? code : std::raise(-code);
}
