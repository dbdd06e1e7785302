#include "platform/content_hash.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace gorbex {

ContentHash HashOf(std::string_view bytes) {
  const auto hash = XXH3_128bits(bytes.data(), bytes.size());
  return {hash.high64, hash.low64};
}

}  // namespace gorbex
