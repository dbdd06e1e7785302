#include "core/file_tools.h"

#include <algorithm>
#include <chrono>

#include "core/text.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

std::string Padded(int number, std::size_t width) {
  std::string digits = std::to_string(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

std::string DateWith(const CivilTime& time, const char* separator) {
  return Padded(time.day, 2) + separator + Padded(time.month, 2) + separator + Padded(time.year, 4);
}

}  // namespace

std::string StripPath(std::string_view path) {
  const auto last = path.rfind('\\');
  return std::string(last == std::string_view::npos ? std::string_view() : path.substr(0, last));
}

std::string GetFileFromPath(std::string_view path) {
  return std::string(path.substr(path.rfind('\\') + 1));
}

std::string FileNames(const std::vector<std::string>& paths) {
  constexpr std::size_t kShown = 3;
  std::vector<std::string> names;
  for (std::size_t i = 0; i < paths.size() && i < kShown; ++i) {
    const std::string name = GetFileFromPath(paths[i]);
    const bool isKnown = std::ranges::find(names, name) != names.end();
    names.push_back(isKnown ? paths[i] : name);
  }
  std::string text = Joined(names);
  if (paths.size() > kShown) {
    text.append(" and ").append(Counted(paths.size() - kShown, "other", "others"));
  }
  return text;
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.ends_with('\\')) path += '\\';
  return path.append(name);
}

std::string ReadOrEmpty(const FileReader& files, const std::string& path) {
  try {
    return files.Read(path);
  } catch (const RuntimeError&) {
    return {};
  }
}

CivilTime ToCivil(FileTime time) {
  using namespace std::chrono;
  constexpr std::uint64_t kTicksPerSecond = 10'000'000;
  constexpr sys_days kEpoch = year{1601} / January / 1;
  const auto whole = static_cast<std::int64_t>(time.ticks / kTicksPerSecond);
  const auto moment = sys_seconds(kEpoch) + seconds(whole);
  const auto midnight = floor<days>(moment);
  const year_month_day date(midnight);
  const hh_mm_ss clock(moment - midnight);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(clock.hours().count()),
          static_cast<int>(clock.minutes().count()),
          static_cast<int>(clock.seconds().count())};
}

std::string GetFileDateString(FileTime time) {
  const CivilTime civil = ToCivil(time);
  return DateWith(civil, "/") + " " + Padded(civil.hour, 2) + ":" + Padded(civil.minute, 2);
}

std::string GetFileAmmendedTime(const FileReader& files, const std::string& path) {
  const auto info = files.Look(path);
  if (!info || info->isFolder) return "Not Found";
  return info->lastWrite ? GetFileDateString(*info->lastWrite) : "N/A";
}

std::string CompactDate(const CivilTime& time) {
  return DateWith(time, "");
}

std::string TimeStamp(const CivilTime& time) {
  return DateWith(time, "/") + " " + Padded(time.hour, 2) + ":" + Padded(time.minute, 2) + ":" +
         Padded(time.second, 2);
}

}  // namespace gorbex
