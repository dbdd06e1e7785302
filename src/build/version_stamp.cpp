#include "build/version_stamp.h"

#include "core/text.h"

namespace gorbex {
namespace {

// Three version numbers as one: their decimal texts joined, so that 1.2.10 is 1210 and
// 1.10.0 is 1100. Errors: 6 the number is too large, 13 the texts make no number.
std::int32_t ComparedVersion(double major, double minor, double revision) {
  return TextToLong(ShortestDecimal(major) + ShortestDecimal(minor) + ShortestDecimal(revision));
}

}  // namespace

bool CanBeStamped(const std::string& version) {
  const auto fields = Split(version, '.');
  const auto number = [&](std::size_t index) {
    return index < fields.size() ? ToLong(NumericValue(fields[index])) : 0;
  };
  try {
    static_cast<void>(ComparedVersion(number(0), number(1), number(2)));
    return fields.size() > 1;
  } catch (const RuntimeError&) {
    return false;
  }
}

void VersionStamp::Stamp(Procedure& on, const std::string& projectPath) {
  if (!Wanted(on, projectPath)) return;
  const auto write = [&](std::string_view key, std::int32_t number) {
    on([&] { values_.WriteProjectValue(projectPath, key, std::to_string(number)); });
  };
  write("MajorVer", options_.Major());
  write("MinorVer", options_.Minor());
  write("RevisionVer", options_.Revision());
}

bool VersionStamp::Wanted(Procedure& on, const std::string& projectPath) {
  const std::int32_t existing = on([&] { return ExistingVersion(projectPath); });
  const std::int32_t requested = on([&] { return RequestedVersion(); });
  return existing <= requested || on([&] { return AskToStepBack(); });
}

std::int32_t VersionStamp::ExistingVersion(const std::string& projectPath) {
  const auto part = [&](std::string_view key) {
    return NumericValue(values_.ReadProjectValue(projectPath, key));
  };
  const double major = part("MajorVer");
  const double minor = part("MinorVer");
  return ComparedVersion(major, minor, part("RevisionVer"));
}

std::int32_t VersionStamp::RequestedVersion() const {
  const std::int32_t major = options_.Major();
  const std::int32_t minor = options_.Minor();
  return ComparedVersion(major, minor, options_.Revision());
}

bool VersionStamp::AskToStepBack() {
  std::string question =
      "The new build number requested, is older than the existing version number for this "
      "component.";
  question.append(kLineBreak).append("Do you wish to change it's version to your new value?");
  return dialogs_.Show({question, Buttons::YesNo, MessageIcon::Question,
                        std::string(kApplicationTitle)}) == Answer::Yes;
}

}  // namespace gorbex
