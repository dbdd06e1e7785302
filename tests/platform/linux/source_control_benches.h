#pragma once

#include <gtest/gtest.h>

#include "tests/platform/git_bench.h"
#include "tests/platform/memory_source_control_bench.h"

namespace gorbex::test {

using SourceControlBenches = testing::Types<MemorySourceControlBench, GitBench, GitOverHttp>;

}  // namespace gorbex::test
