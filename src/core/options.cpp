#include "core/options.h"

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::int32_t kLongestInterval = 60;

bool StoredFlag(std::string_view text) {
  return EqualsIgnoringCase(text, "true");
}

}  // namespace

std::string clsOptions::Read(std::string_view name) const {
  return registry_.fnsGetRegistryValue(kProgramKey, name);
}

void clsOptions::Write(std::string_view name, std::string_view value) {
  registry_.subSetRegistryValue(kProgramKey, name, value);
}

void clsOptions::LoadSettings() {
  Procedure(report_, ": clsOptions.LoadSettings").Run([&](Procedure& on) {
    on([&] { Interval = ToLong(NumericValue(Read("Interval"))); });
    on([&] { AutoStart = StoredFlag(Read("AutoStart")); });
    on([&] { GetLatest = StoredFlag(Read("GetLatest")); });
    on([&] { Compatible = StoredFlag(Read("Compatible")); });
    on([&] { ChangeRefs = StoredFlag(Read("ChangeRefs")); });
    on([&] { StopProcessing = StoredFlag(Read("StopProcessing")); });
    on([&] { BuildPath = Read("BuildPath"); });
    on([&] { WatchFolder = Read("WatchFolder"); });
    on([&] { ReplyTo = ToInteger(NumericValue(Read("ReplyTo"))); });
    on([&] { ReplyUser = Read("ReplyUser"); });
    on([&] { AutoBuildDependant = StoredFlag(Read("AutoDependant")); });
    on([&] { AutoLaunchName = Read("AutoLaunch Name"); });
    on([&] { AutoLaunchVBP = StoredFlag(Read("AutoLaunch VBP")); });
    on([&] { DebugBuild = FlagText(StoredFlag(Read("Debug Build"))); });
  });
}

void clsOptions::SaveSettings() {
  Procedure(report_, ": clsOptions.SaveSettings").Run([&](Procedure& on) {
    on([&] { Write("Interval", std::to_string(Interval)); });
    on([&] { Write("AutoStart", FlagText(AutoStart)); });
    on([&] { Write("GetLatest", FlagText(GetLatest)); });
    on([&] { Write("Compatible", FlagText(Compatible)); });
    on([&] { Write("ChangeRefs", FlagText(ChangeRefs)); });
    on([&] { Write("StopProcessing", FlagText(StopProcessing)); });
    on([&] { Write("BuildPath", BuildPath); });
    on([&] { Write("WatchFolder", WatchFolder); });
    on([&] { Write("ReplyTo", std::to_string(ReplyTo)); });
    on([&] { Write("ReplyUser", ReplyUser); });
    on([&] { Write("AutoDependant", FlagText(AutoBuildDependant)); });
    on([&] { Write("AutoLaunch Name", AutoLaunchName); });
    on([&] { Write("AutoLaunch VBP", FlagText(AutoLaunchVBP)); });
    on([&] { Write("Debug Build", DebugBuild); });
  });
}

bool clsOptions::LimitInterval() {
  const bool isTooLong = Interval > kLongestInterval;
  if (isTooLong) Interval = kLongestInterval;
  return isTooLong;
}

std::int32_t clsOptions::TimerInterval() const {
  return ToLong(Interval * 1000.0);
}

std::int32_t clsOptions::Guarded(std::string_view procedure,
                                 std::int32_t (clsOptions::*value)() const) const {
  std::int32_t result = 0;
  Procedure(report_, procedure).Run([&](Procedure& on) { on([&] { result = (this->*value)(); }); });
  return result;
}

std::int32_t clsOptions::Major() const {
  return Guarded(": clsOptions.Major", &clsOptions::MajorValue);
}

std::int32_t clsOptions::Minor() const {
  return Guarded(": clsOptions.Minor", &clsOptions::MinorValue);
}

std::int32_t clsOptions::Revision() const {
  return Guarded(": clsOptions.Revision", &clsOptions::RevisionValue);
}

std::int32_t clsOptions::MajorValue() const {
  const auto dot = VersionComponents.find('.');
  if (dot == std::string::npos) return 0;
  return ToLong(NumericValue(std::string_view(VersionComponents).substr(0, dot)));
}

std::int32_t clsOptions::MinorValue() const {
  return ToLong(NumericValue(Field(Split(VersionComponents, '.'), 1)));
}

std::int32_t clsOptions::RevisionValue() const {
  const auto fields = Split(VersionComponents, '.');
  return fields.size() > 2 ? ToLong(NumericValue(fields[2])) : 0;
}

}  // namespace gorbex
