#include "platform/linux/plugin_objects.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/code_page.h"
#include "platform/linux/plugin_library.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

[[noreturn]] void Refuse(const std::string& reason) {
  throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject, reason);
}

// Puts the identifier before the reason that an attempt to make its object gives.
template <class Attempt>
auto Creating(const std::string& identifier, Attempt&& attempt) {
  try {
    return attempt();
  } catch (const RuntimeError& reason) {
    const RuntimeError what(ErrorNumber::CannotCreateObject, identifier);
    throw RuntimeError::WithDescription(what.Code(),
                                        what.Description() + ": " + reason.Description());
  }
}

// An exception that a plug-in throws against its contract must not reach the program.
template <class... Parameters, class... Arguments>
std::int32_t Called(std::int32_t (*function)(Parameters...), Arguments&&... arguments) {
  try {
    return function(std::forward<Arguments>(arguments)...);
  } catch (...) {
    return GORBEX_FAILED;
  }
}

ErrorNumber ErrorOf(std::int32_t status) {
  switch (status) {
    case GORBEX_INVALID_VALUE:
      return ErrorNumber::InvalidCall;
    case GORBEX_OUT_OF_MEMORY:
      return ErrorNumber::OutOfMemory;
    case GORBEX_TYPE_MISMATCH:
      return ErrorNumber::TypeMismatch;
    case GORBEX_READ_ONLY:
      return ErrorNumber::PropertyReadOnly;
    case GORBEX_NO_SUCH_PROPERTY:
      return ErrorNumber::NoSuchProperty;
    default:
      return ErrorNumber::AutomationError;
  }
}

// Nothing when the text is too long or has characters outside the code page.
std::optional<std::string> Copied(const GorbexText& text, std::size_t limit) {
  if (text.size == 0) return std::string();
  if (text.bytes == nullptr || text.size > limit) return std::nullopt;
  return FromUtf8({text.bytes, text.size});
}

std::string HandedOver(const std::string& text, const std::string& property) {
  auto utf8 = ToUtf8(text);
  if (utf8.size() > GORBEX_TEXT_LIMIT) throw RuntimeError(ErrorNumber::InvalidCall, property);
  return utf8;
}

std::uint32_t Side(int pixels) {
  return static_cast<std::uint32_t>(std::clamp<int>(pixels, 0, GORBEX_SIDE_LIMIT));
}

/// One instance of a plug-in's class, from `create` to `destroy`.
class Instance : public ComponentObject {
 public:
  explicit Instance(PluginClass made, std::function<void()> repaint = nullptr)
      : class_(std::move(made)), repaint_(std::move(repaint)) {
    const auto status = Called(class_.calls.create, &host_, &instance_);
    if (status == GORBEX_OK) return;
    instance_ = nullptr;
    Raise(status, "");
  }
  ~Instance() override {
    try {
      class_.calls.destroy(instance_);
    } catch (...) {
      // It is gone as far as the program is concerned.
    }
  }
  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  void Let(const std::string& property, const std::string& value) override {
    const auto set = class_.calls.set_property;
    if (set == nullptr) throw RuntimeError(ErrorNumber::NoSuchProperty, property);
    const auto name = HandedOver(property, property);
    const auto text = HandedOver(value, property);
    Require(Called(set, instance_, View(name), View(text)), property);
  }

  [[nodiscard]] std::string Get(const std::string& property) override {
    const auto get = class_.calls.get_property;
    if (get == nullptr) throw RuntimeError(ErrorNumber::NoSuchProperty, property);
    const auto name = HandedOver(property, property);
    GorbexText value{};
    Require(Called(get, instance_, View(name), &value), property);
    const auto text = Copied(value, GORBEX_TEXT_LIMIT);
    if (!text) throw RuntimeError(ErrorNumber::TypeMismatch, property);
    return *text;
  }

  /// Calls a function of the user control, which may be null.
  template <class... Parameters, class... Arguments>
  void Do(std::int32_t (*GorbexControl::*function)(void*, Parameters...),
          Arguments&&... arguments) {
    const auto call = class_.control ? (*class_.control).*function : nullptr;
    if (call != nullptr) Require(Called(call, instance_, std::forward<Arguments>(arguments)...));
  }

 private:
  static GorbexText View(const std::string& text) { return {text.c_str(), text.size()}; }

  static void Repaint(void* site) noexcept {
    const auto& repaint = static_cast<Instance*>(site)->repaint_;
    try {
      if (repaint) repaint();
    } catch (...) {
      // The wish is lost: no exception may pass through the plug-in.
    }
  }

  void Require(std::int32_t status, const std::string& property = {}) {
    if (status != GORBEX_OK) Raise(status, property);
  }

  [[noreturn]] void Raise(std::int32_t status, const std::string& property) {
    const auto words = Words();
    if (words.empty()) throw RuntimeError(ErrorOf(status), property);
    throw RuntimeError::WithDescription(ErrorOf(status), words);
  }

  [[nodiscard]] std::string Words() {
    if (class_.calls.last_error == nullptr) return {};
    try {
      return Copied(class_.calls.last_error(instance_), GORBEX_ERROR_LIMIT).value_or("");
    } catch (...) {
      return {};
    }
  }

  PluginClass class_;
  std::function<void()> repaint_;
  GorbexHost host_{sizeof(GorbexHost), this, &Instance::Repaint};
  void* instance_ = nullptr;
};

class PluginControl : public ComponentControl {
 public:
  PluginControl(PluginClass made, std::function<void()> repaint)
      : instance_(std::move(made), std::move(repaint)) {}

  void SetSize(ControlSize size) override {
    instance_.Do(&GorbexControl::set_size, Side(size.width), Side(size.height));
  }

  void Paint(const PixelBuffer& to) override {
    const GorbexPixels pixels{to.pixels, Side(to.size.width), Side(to.size.height), to.stride};
    const bool holds = to.pixels != nullptr && to.stride >= pixels.width;
    if (!holds || pixels.width == 0 || pixels.height == 0) return;
    instance_.Do(&GorbexControl::paint, &pixels);
  }

  void Pointer(const PointerEvent& event) override {
    const GorbexPointer pointer{static_cast<std::uint32_t>(event.action),
                                static_cast<std::uint32_t>(event.button), event.x, event.y};
    instance_.Do(&GorbexControl::pointer, &pointer);
  }

  void KeyPress(char32_t character) override {
    instance_.Do(&GorbexControl::key_press, static_cast<std::uint32_t>(character));
  }

 private:
  Instance instance_;
};

bool IsGuid(std::string_view text) {
  constexpr std::string_view kForm = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  return std::equal(text.begin(), text.end(), kForm.begin(), kForm.end(), [&](char c, char form) {
    return form == 'x' ? kDigits.find(c) != std::string_view::npos : c == form;
  });
}

// The real path of the file that the registry names. A name without a folder would be looked for in
// folders nobody registered, and is refused.
std::string HostFile(const Prefix& prefix, const std::string& windowsPath) {
  const auto parsed = ParseWindowsPath(windowsPath);
  if (!parsed || parsed->start == ParsedPath::Start::CurrentFolder) {
    Refuse("'" + windowsPath + "' is not the full path of a file");
  }
  const auto entry = prefix.Find(windowsPath);
  if (!entry) Refuse("'" + windowsPath + "' does not exist");
  std::error_code error;
  const auto real = std::filesystem::canonical(entry->path, error);
  if (error || !S_ISREG(entry->info.st_mode)) Refuse("'" + windowsPath + "' is not a plain file");
  return real.native();
}

}  // namespace

std::string PluginObjects::DefaultText(const std::string& classesKey) const {
  const auto value = registry_.Value(RegistryRoot::ClassesRoot, classesKey, "");
  if (!value) return {};
  const bool isText = value->type == RegistryType::Text || value->type == RegistryType::ExpandText;
  if (!isText) return {};
  return value->bytes.substr(0, value->bytes.find('\0'));
}

std::string PluginObjects::ClassIdentifier(const std::string& identifier) const {
  // A name with a separator would lead to keys of something else.
  const bool isName = !identifier.empty() && identifier.find('\\') == std::string::npos;
  auto clsid = isName ? UpperCase(DefaultText(identifier + "\\CLSID")) : std::string();
  if (clsid.empty()) Refuse("it is not registered");
  if (!IsGuid(clsid))
    Refuse("'" + clsid + "' is registered for it, which is not a class identifier");
  return clsid;
}

PluginClass PluginObjects::Load(const std::string& identifier) const {
  const auto clsid = ClassIdentifier(identifier);
  const auto path = DefaultText("CLSID\\" + clsid + "\\InprocServer32");
  if (path.empty()) Refuse("its class " + clsid + " has no in-process server");
  return LoadPluginClass(HostFile(prefix_, path), path, clsid);
}

std::unique_ptr<ComponentObject> PluginObjects::CreateObject(const std::string& identifier) {
  return Creating(identifier, [&] { return std::make_unique<Instance>(Load(identifier)); });
}

void PluginObjects::AddLicense(const std::string& identifier) {
  Creating(identifier, [&] { return ClassIdentifier(identifier); });
}

std::unique_ptr<ComponentControl> PluginObjects::CreateControl(const std::string& identifier,
                                                               std::function<void()> repaint) {
  return Creating(identifier, [&] {
    auto made = Load(identifier);
    if (!made.control) Refuse("it is not a user control");
    return std::make_unique<PluginControl>(std::move(made), std::move(repaint));
  });
}

}  // namespace gorbex
