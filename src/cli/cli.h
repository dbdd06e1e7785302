#pragma once

#include <string>
#include <vector>

#include "cli/frame.h"

namespace gorbex::cli {

/// Runs the command line. The arguments leave out the program's own name. Returns the exit status
/// of the process.
int RunCli(const std::vector<std::string>& arguments, const Streams& streams,
           const HostFactory& makeHost);

}  // namespace gorbex::cli
