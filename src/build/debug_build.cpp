#include "build/debug_build.h"

#include <utility>
#include <vector>

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::string_view kOptimizationKey = "OptimizationType";
constexpr std::string_view kDebugInfoKey = "CodeViewDebugInfo";
constexpr std::int32_t kNotOptimized = 2;
constexpr std::int32_t kWithDebugInfo = -1;

}  // namespace

DebugBuild::DebugBuild(const clsOptions& options, ProjectValue& values, ReplacedValues& replaced,
                       std::string path)
    : options_(options), values_(values), replaced_(replaced), path_(std::move(path)) {}

DebugBuild::~DebugBuild() {
  Procedure::IgnoringErrors().Run([this](Procedure& on) { Undo(on); });
}

bool DebugBuild::IsWanted() const {
  return EqualsIgnoringCase(options_.DebugBuild, "true");
}

void DebugBuild::Set(Procedure& on) {
  const auto read = [&](std::string_view key) { return on([&] { return Present(key); }); };
  const Values kept{read(kOptimizationKey), read(kDebugInfoKey)};
  Values wanted;
  std::vector<ReplacedValue> replaced;
  const auto replace = [&](std::string_view key, std::optional<std::int32_t> before,
                           std::int32_t during) {
    if (before) replaced.push_back({std::string(key), *before, during});
    return before ? std::optional(during) : std::nullopt;
  };
  wanted.optimization = replace(kOptimizationKey, kept.optimization, kNotOptimized);
  wanted.debugInfo = replace(kDebugInfoKey, kept.debugInfo, kWithDebugInfo);
  on([&] { replaced_.Note(path_, replaced); });
  Write(wanted);
  kept_ = kept;
}

void DebugBuild::Undo(Procedure& on) {
  const auto kept = std::exchange(kept_, std::nullopt);
  if (!kept) return;
  if (!IsWanted()) {
    on([&] { replaced_.Forget(path_); });
    return;
  }
  Write(*kept);
  on([&] { replaced_.Settle(path_); });
}

std::optional<std::int32_t> DebugBuild::Present(std::string_view key) {
  bool isRead = true;
  const Subscription failures =
      values_.failed.Connect([&](const std::string&, const RuntimeError&) { isRead = false; });
  const std::int32_t value = ToLong(NumericValue(values_.ReadProjectValue(path_, key)));
  return isRead ? std::optional(value) : std::nullopt;
}

// A file that cannot be written raises no error here.
void DebugBuild::Write(const Values& values) {
  const auto write = [&](std::string_view key, std::optional<std::int32_t> value) {
    if (value) values_.WriteProjectValue(path_, key, std::to_string(*value));
  };
  write(kOptimizationKey, values.optimization);
  write(kDebugInfoKey, values.debugInfo);
}

}  // namespace gorbex
