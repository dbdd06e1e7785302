#include <algorithm>
#include <memory>
#include <sstream>

#include "scripted_object.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kNotFound = 0x8004010F;
constexpr std::uint32_t kNoSuchNumber = 0x80020009;

template <class Action>
Member Method(const std::string& signature, Action&& action) {
  return {kCall, signature, [action](const Values& values) -> Value { return action(values); }};
}

/// A collection whose "Item" takes a number from 1.
IDispatch* Collection(const std::string& name, std::vector<std::function<IDispatch*()>> items,
                      Members others = {}) {
  others["Count"] = Constant(static_cast<std::int32_t>(items.size()));
  others["Item"] = Method("l", [items = std::move(items)](const Values& values) -> Value {
    const auto number = static_cast<std::size_t>(std::get<std::int32_t>(values.at(0)));
    if (number < 1 || number > items.size())
      throw Refusal{kNoSuchNumber, "Array index out of bounds"};
    return items[number - 1]();
  });
  return Object(name, std::move(others));
}

// A mail is a file: its properties in lines "NAME=TEXT", an empty line, and the body.
fs::path FileOf(const std::wstring& id) {
  for (const char* folder : {"Builder", "Deleted"}) {
    if (fs::exists(Root() / folder / id)) return Root() / folder / id;
  }
  throw Refusal{kNotFound, "The item has been moved or deleted"};
}

IDispatch* Folder(const fs::path& path);

IDispatch* Properties(const std::wstring& header) {
  return Object("PropertyAccessor",
                {{"GetProperty", Method("s", [header](const Values& values) -> Value {
                    if (!Text(values.at(0)).ends_with(L"0x007D001E"))
                      throw Refusal{kNotFound, "None"};
                    return header;
                  })}});
}

IDispatch* ReplyRecipients(const std::wstring& address) {
  std::vector<std::function<IDispatch*()>> all;
  if (!address.empty()) {
    all.emplace_back([address] {
      return Object("Recipient", {{"Address", Constant(address)}, {"Name", Constant(L"Somebody")}});
    });
  }
  return Collection("Recipients", std::move(all));
}

IDispatch* MailAt(const fs::path& path) {
  const auto id = path.filename().native();
  std::istringstream lines(ReadFile(path));
  Members members;
  std::wstring header;
  std::wstring reply;
  bool isUnread = true;
  for (std::string line; std::getline(lines, line) && !line.empty();) {
    const auto equals = line.find('=');
    const auto name = line.substr(0, equals);
    const auto text = Wide(line.substr(equals + 1));
    if (name == "Header") header = text;
    if (name == "ReplyTo") reply = text;
    if (name == "Read") isUnread = false;
    members[name] = Constant(text);
  }
  const std::string body{std::istreambuf_iterator<char>(lines), {}};
  members["Body"] = Constant(Wide(body));
  members["EntryID"] = Constant(id);
  members["Parent"] = {kGet, "",
                       [path](const Values&) -> Value { return Folder(path.parent_path()); }};
  members["PropertyAccessor"] = {kGet, "",
                                 [header](const Values&) -> Value { return Properties(header); }};
  members["ReplyRecipients"] = {kGet, "",
                                [reply](const Values&) -> Value { return ReplyRecipients(reply); }};
  const auto mark = std::make_shared<bool>(isUnread);
  members["UnRead"] = {kGet | kPut, "B", [mark](const Values& values) -> Value {
                         if (!values.empty()) *mark = std::get<bool>(values.at(0));
                         return *mark;
                       }};
  members["Save"] = Method("", [mark, id](const Values&) -> Value {
    auto text = ReadFile(FileOf(id));
    if (text.starts_with("Read=")) text.erase(0, text.find('\n') + 1);
    WriteFile(FileOf(id), (*mark ? "" : "Read=\n") + text);
    return {};
  });
  return Object("MailItem", std::move(members));
}

IDispatch* Items(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  std::vector<std::function<IDispatch*()>> mails;
  mails.reserve(files.size());
  for (const auto& file : files) mails.emplace_back([file] { return MailAt(file); });
  return Collection("Items", std::move(mails));
}

IDispatch* Folder(const fs::path& path) {
  return Object("MAPIFolder",
                {{"EntryID", Constant(path.filename().native())},
                 {"Items", {kGet, "", [path](const Values&) -> Value { return Items(path); }}}});
}

IDispatch* Folders() {
  return Object("Folders", {{"Item", Method("s", [](const Values& values) -> Value {
                               const auto path = Root() / Text(values.at(0));
                               if (fs::is_directory(path)) return Folder(path);
                               throw Refusal{kNotFound, "An object could not be found."};
                             })}});
}

IDispatch* NameSpace() {
  return Object(
      "NameSpace",
      {{"GetDefaultFolder",
        Method("l",
               [](const Values& values) -> Value {
                 if (std::get<std::int32_t>(values.at(0)) != 6)
                   throw Refusal{kNotFound, "Not the inbox"};
                 return Object(
                     "MAPIFolder",
                     {{"Folders", {kGet, "", [](const Values&) -> Value { return Folders(); }}}});
               })},
       {"GetItemFromID", Method("sS", [](const Values& values) -> Value {
          return MailAt(FileOf(Text(values.at(0))));
        })}});
}

struct Draft {
  std::vector<std::wstring> recipients;
  std::wstring subject;
  std::wstring body;
  std::string attachments;
};

Member Field(const std::shared_ptr<Draft>& draft, std::wstring Draft::*field) {
  return {kGet | kPut, "S", [draft, field](const Values& values) -> Value {
            if (!values.empty()) (*draft).*field = Text(values.at(0));
            return (*draft).*field;
          }};
}

IDispatch* Recipients(const std::shared_ptr<Draft>& draft) {
  const auto add = [draft](const Values& values) -> Value {
    const auto name = Text(values.at(0));
    draft->recipients.push_back(name);
    return Object("Recipient", {{"Resolve", Method("",
                                                   [name](const Values&) -> Value {
                                                     return name.find(L'@') != name.npos ||
                                                            name == L"J\u00F6rg";
                                                   })},
                                {"Delete", Method("", [draft](const Values&) -> Value {
                                   draft->recipients.pop_back();
                                   return {};
                                 })}});
  };
  const auto remove = [draft](const Values& values) -> Value {
    draft->recipients.erase(draft->recipients.begin() + std::get<std::int32_t>(values.at(0)) - 1);
    return {};
  };
  return Object("Recipients",
                {{"Add", Method("s", add)},
                 {"Remove", Method("l", remove)},
                 {"Count", Constant(static_cast<std::int32_t>(draft->recipients.size()))}});
}

std::string Attachment(const fs::path& file) {
  std::ostringstream text;
  text << '|' << Utf8(file.filename().native()) << '=' << std::hex;
  for (const char byte : ReadFile(file)) {
    text << (static_cast<unsigned char>(byte) >> 4) << (static_cast<unsigned char>(byte) & 15);
  }
  return text.str();
}

void Send(const Draft& draft) {
  if (draft.recipients.empty()) throw Refusal{kNoSuchNumber, "There must be at least one name"};
  std::string text;
  for (const auto& name : draft.recipients) text += (text.empty() ? "" : ",") + Utf8(name);
  WriteFile(Root() / "sent",
            text + "|" + Utf8(draft.subject) + "|" + Utf8(draft.body) + draft.attachments);
}

IDispatch* NewMail() {
  const auto draft = std::make_shared<Draft>();
  const auto attach = [draft](const Values& values) -> Value {
    draft->attachments += Attachment(Text(values.at(0)));
    return {};
  };
  return Object(
      "NewMail",
      {{"Subject", Field(draft, &Draft::subject)},
       {"Body", Field(draft, &Draft::body)},
       {"Recipients", {kGet, "", [draft](const Values&) -> Value { return Recipients(draft); }}},
       {"Attachments",
        {kGet, "",
         [attach](const Values&) -> Value {
           return Object("Attachments", {{"Add", Method("sLLS", attach)}});
         }}},
       {"Send", Method("", [draft](const Values&) -> Value {
          Send(*draft);
          return {};
        })}});
}

}  // namespace

IDispatch* NewOutlook() {
  return Object("Application",
                {{"GetNamespace", Method("s",
                                         [](const Values& values) -> Value {
                                           if (Text(values.at(0)) == L"MAPI") return NameSpace();
                                           throw Refusal{kNotFound, "No such namespace"};
                                         })},
                 {"CreateItem", Method("l", [](const Values& values) -> Value {
                    if (std::get<std::int32_t>(values.at(0)) == 0) return NewMail();
                    throw Refusal{kNotFound, "Not a mail"};
                  })}});
}

}  // namespace gorbex::test
