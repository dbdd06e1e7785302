#include "core/options.h"

#include <algorithm>
#include <thread>

#include "core/text.h"

namespace gorbex {

clsOptions::clsOptions(RegistryTools& registry, ErrorReport& report)
    : registry_(registry), report_(report) {
  for (std::size_t i = 0; i < kSettings; ++i) unread_[i] = AllSettings()[i].Text(*this);
}

void clsOptions::Load(std::size_t number) {
  const Setting& setting = AllSettings()[number];
  const std::string text = registry_.fnsGetRegistryValue(kProgramKey, setting.stored);
  try {
    setting.Load(*this, text);
  } catch (const RuntimeError& error) {
    throw RuntimeError(error.Code(), std::string(setting.stored).append("=").append(text));
  }
  unread_[number].reset();
}

bool clsOptions::LoadSettings() {
  return Procedure(report_, ": clsOptions.LoadSettings").Run([&](Procedure& on) {
    for (std::size_t i = 0; i < kSettings; ++i) {
      if (!AllSettings()[i].stored.empty()) on([&] { Load(i); });
    }
  });
}

void clsOptions::Save(std::size_t number) {
  const Setting& setting = AllSettings()[number];
  const std::string text = setting.Text(*this);
  if (unread_[number] == text) return;
  registry_.subSetRegistryValue(kProgramKey, setting.stored, text);
  unread_[number].reset();
}

void clsOptions::SaveSettings() {
  Procedure(report_, ": clsOptions.SaveSettings").Run([&](Procedure& on) {
    for (std::size_t i = 0; i < kSettings; ++i) {
      if (!AllSettings()[i].stored.empty()) on([&] { Save(i); });
    }
  });
}

bool clsOptions::LimitInterval() {
  constexpr std::int32_t kLongest = 60;
  const bool isTooLong = Interval > kLongest;
  if (isTooLong) Interval = kLongest;
  return isTooLong;
}

std::int32_t clsOptions::TimerInterval() const {
  return ToLong(Interval * 1000.0);
}

std::size_t clsOptions::Places() const {
  if (Jobs > 0) return static_cast<std::size_t>(Jobs);
  return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostJobs);
}

bool clsOptions::Store(const Setting& setting) {
  const std::string text = setting.Text(*this);
  registry_.subSetRegistryValue(kProgramKey, setting.stored, text);
  return registry_.fnsGetRegistryValue(kProgramKey, setting.stored) == text;
}

std::int32_t clsOptions::Major() const {
  return Procedure(report_, ": clsOptions.Major").Do([&] {
    const auto fields = Split(VersionComponents, '.');
    return fields.size() > 1 ? ToLong(NumericValue(fields[0])) : 0;
  });
}

std::int32_t clsOptions::Minor() const {
  return Procedure(report_, ": clsOptions.Minor").Do([&] {
    return ToLong(NumericValue(Field(Split(VersionComponents, '.'), 1)));
  });
}

std::int32_t clsOptions::Revision() const {
  return Procedure(report_, ": clsOptions.Revision").Do([&] {
    const auto fields = Split(VersionComponents, '.');
    return fields.size() > 2 ? ToLong(NumericValue(fields[2])) : 0;
  });
}

}  // namespace gorbex
