#pragma once

#include <string>
#include <string_view>

namespace gorbex::standin {

[[nodiscard]] std::string FileNameOf(std::string_view path);

[[nodiscard]] std::string_view Unquoted(std::string_view value);

}  // namespace gorbex::standin
