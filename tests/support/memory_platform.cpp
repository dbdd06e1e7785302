#include "tests/support/memory_platform.h"

namespace gorbex::test {

PlatformServices MemoryPlatform::Services() {
  return {files, registry, processes, clock, events, components, sourceControl, programFolder};
}

}  // namespace gorbex::test
