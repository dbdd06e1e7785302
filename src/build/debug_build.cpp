#include "build/debug_build.h"

#include <utility>
#include <vector>

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::array<std::string_view, 2> kKeys = {"OptimizationType", "CodeViewDebugInfo"};

// Not optimized, with debug information.
constexpr std::array<std::int32_t, 2> kDebugValues = {2, -1};

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
  Values kept;
  Values wanted;
  std::vector<ReplacedValue> replaced;
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    const auto before = on([&] { return Present(kKeys[i]); });
    kept[i] = before;
    if (!before) continue;
    wanted[i] = kDebugValues[i];
    replaced.push_back({std::string(kKeys[i]), *before, kDebugValues[i]});
  }
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
  for (std::size_t i = 0; i < kKeys.size(); ++i) {
    const auto value = values[i];
    if (value) values_.WriteProjectValue(path_, kKeys[i], std::to_string(*value));
  }
}

}  // namespace gorbex
