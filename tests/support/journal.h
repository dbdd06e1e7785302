#pragma once

#include <string>
#include <vector>

namespace gorbex::test {

/// The effects a test run had, in order. All parts of one in-memory platform share one journal.
using Journal = std::vector<std::string>;

}  // namespace gorbex::test
