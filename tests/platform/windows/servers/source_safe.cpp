#include <algorithm>
#include <optional>

#include "scripted_object.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kNotFound = 0x8004D68F;
constexpr std::uint32_t kFailed = 0x8004D6C8;

// The database, the working copy and what the latter was last made from, each a folder.
std::optional<std::string> Side(const char* side, const fs::path& item) {
  const auto file = Root() / side / item;
  return fs::is_regular_file(file) ? std::optional(ReadFile(file)) : std::nullopt;
}

fs::path LocalSpec(const fs::path& item) {
  auto path = (Root() / "work" / item).make_preferred().native();
  return path.substr(0, path.find_last_not_of(L'\\') + 1);
}

void BringUpToDate(const fs::path& file) {
  const auto database = Side("database", file);
  const auto got = Side("got", file);
  if (database == got) return;
  const auto local = Side("work", file);
  if (local != got) throw Refusal{kFailed, "A writable copy of " + file.string() + " exists"};
  WriteFile(Root() / "work" / file, *database);
  WriteFile(Root() / "got" / file, *database);
}

void Get(const fs::path& item) {
  const auto top = Root() / "database";
  if (!fs::is_directory(top / item)) return BringUpToDate(item);
  for (const auto& entry : fs::recursive_directory_iterator(top / item)) {
    if (entry.is_regular_file()) BringUpToDate(entry.path().lexically_relative(top));
  }
}

void Label(const Values& values) {
  const auto file = Root() / "labels" / Text(values.at(0));
  if (fs::exists(file)) throw Refusal{kFailed, "Label already used"};
  WriteFile(file, Utf8(Text(values.at(1))));
}

void CheckIn(const fs::path& file) {
  const auto local = ReadFile(Root() / "work" / file);
  WriteFile(Root() / "database" / file, local);
  WriteFile(Root() / "got" / file, local);
}

IDispatch* Item(const fs::path& item);

IDispatch* Items(const fs::path& project) {
  std::vector<fs::path> names;
  for (const auto& entry : fs::directory_iterator(Root() / "database" / project)) {
    names.push_back(project / entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return Object("VSSItems",
                {{"Count", Constant(static_cast<std::int32_t>(names.size()))},
                 {"Item", {kGet, "l", [names](const Values& values) -> Value {
                             const auto number = std::get<std::int32_t>(values.at(0));
                             return Item(names.at(static_cast<std::size_t>(number - 1)));
                           }}}});
}

template <class Action>
Member Method(const std::string& signature, Action&& action) {
  return {kCall, signature, [action](const Values& values) -> Value {
            action(values);
            return {};
          }};
}

IDispatch* Item(const fs::path& item) {
  const bool isProject = fs::is_directory(Root() / "database" / item);
  return Object(
      "VSSItem",
      {{"LocalSpec", Constant(LocalSpec(item).native())},
       {"Type", Constant(isProject ? 0 : 1)},
       {"Items", {kGet, "B", [item](const Values&) -> Value { return Items(item); }}},
       {"IsDifferent",
        {kGet, "S",
         [item](const Values&) -> Value { return Side("database", item) != Side("work", item); }}},
       {"Get", Method("SL", [item](const Values&) { Get(item); })},
       {"Label", Method("SS", Label)},
       {"Checkout", Method("SSL",
                           [item](const Values&) {
                             if (Side("work", item) != Side("got", item))
                               throw Refusal{kFailed, "It is checked out"};
                             BringUpToDate(item);
                           })},
       {"Checkin", Method("SSL", [item](const Values&) { CheckIn(item); })}});
}

Value Find(const std::wstring& spec) {
  if (!spec.starts_with(L"$/")) throw Refusal{kNotFound, "Invalid path"};
  const fs::path item = spec.substr(2);
  if (!fs::exists(Root() / "database" / item)) return static_cast<IDispatch*>(nullptr);
  return Item(item);
}

}  // namespace

IDispatch* NewSourceSafe() {
  const auto user = std::make_shared<std::wstring>();
  return Object("VSSDatabase",
                {{"Open", Method("SSS",
                                 [user](const Values& values) {
                                   if (!fs::exists(Text(values.at(0))))
                                     throw Refusal{kFailed, "No database"};
                                   *user = Text(values.at(1));
                                 })},
                 {"UserName", {kGet, "", [user](const Values&) -> Value { return *user; }}},
                 {"VSSItem", {kGet, "sB", [](const Values& values) -> Value {
                                return Find(Text(values.at(0)));
                              }}}});
}

}  // namespace gorbex::test
