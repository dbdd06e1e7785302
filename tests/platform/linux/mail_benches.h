#pragma once

#include <gtest/gtest.h>

#include "tests/platform/mail_bench.h"

namespace gorbex::test {

using MailBenches = testing::Types<MemoryMailBench, MaildirBench, ServerBench>;

}  // namespace gorbex::test
