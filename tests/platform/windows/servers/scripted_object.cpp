#include "scripted_object.h"

#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>

namespace gorbex::test {
namespace {

std::optional<Value> ValueOf(const VARIANT& variant) {
  switch (variant.vt) {
    case VT_BSTR:
      return std::wstring(variant.bstrVal, SysStringLen(variant.bstrVal));
    case VT_I4:
      return static_cast<std::int32_t>(variant.lVal);
    case VT_BOOL:
      return variant.boolVal != VARIANT_FALSE;
    default:
      return std::nullopt;
  }
}

void Give(const Value& value, VARIANT* to) {
  if (to == nullptr) return;
  VariantInit(to);
  if (const auto* text = std::get_if<std::wstring>(&value)) {
    to->vt = VT_BSTR;
    to->bstrVal = SysAllocStringLen(text->data(), static_cast<UINT>(text->size()));
  } else if (const auto* number = std::get_if<std::int32_t>(&value)) {
    to->vt = VT_I4;
    to->lVal = *number;
  } else if (const auto* flag = std::get_if<bool>(&value)) {
    to->vt = VT_BOOL;
    to->boolVal = *flag ? VARIANT_TRUE : VARIANT_FALSE;
  } else if (const auto* object = std::get_if<IDispatch*>(&value)) {
    to->vt = VT_DISPATCH;
    to->pdispVal = *object;
  }
}

std::string Shown(const Values& values) {
  std::string shown;
  for (const Value& value : values) {
    shown += shown.empty() ? "" : ", ";
    if (const auto* text = std::get_if<std::wstring>(&value)) {
      shown += "\"" + Utf8(*text) + "\"";
    } else if (const auto* number = std::get_if<std::int32_t>(&value)) {
      shown += std::to_string(*number);
    } else {
      shown += std::get<bool>(value) ? "True" : "False";
    }
  }
  return shown;
}

HRESULT Check(const std::string& signature, const Values& values) {
  const auto isLeftOut = [](char kind) { return std::isupper(kind) != 0; };
  const auto needed = std::find_if(signature.begin(), signature.end(), isLeftOut);
  const auto count = static_cast<std::ptrdiff_t>(values.size());
  if (count < needed - signature.begin()) return DISP_E_PARAMNOTOPTIONAL;
  if (values.size() > signature.size()) return DISP_E_BADPARAMCOUNT;
  for (std::size_t i = 0; i < values.size(); ++i) {
    constexpr std::array kKinds = {'-', 's', 'l', 'b', 'o'};
    if (kKinds.at(values[i].index()) != std::tolower(signature[i])) return DISP_E_TYPEMISMATCH;
  }
  return S_OK;
}

void RaiseIfAsked(const std::string& call) {
  std::istringstream lines(ReadFile(Root() / "failures"));
  for (std::string line; std::getline(lines, line);) {
    const auto first = line.find('|');
    const auto second = line.find('|', first + 1);
    if (line.substr(0, first) != call) continue;
    if (line.ends_with("|silence")) return Sleep(2000);
    throw Refusal{static_cast<std::uint32_t>(std::stoul(line.substr(first + 1), nullptr, 16)),
                  line.substr(second + 1)};
  }
}

void Tell(const Refusal& refusal, EXCEPINFO* exception) {
  if (exception == nullptr) return;
  *exception = {};
  exception->scode = static_cast<SCODE>(refusal.number);
  exception->bstrSource = SysAllocString(L"Server");
  exception->bstrDescription = SysAllocString(Wide(refusal.words).c_str());
}

}  // namespace

HRESULT ScriptedObject::QueryInterface(REFIID id, void** object) {
  *object = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch) ? this : nullptr;
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG ScriptedObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ScriptedObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT ScriptedObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (count != 1) return E_INVALIDARG;
  const auto name = Utf8(names[0]);
  const auto member = std::find_if(members_.begin(), members_.end(), [&](const auto& entry) {
    return _stricmp(entry.first.c_str(), name.c_str()) == 0;
  });
  ids[0] = DISPID_UNKNOWN;
  if (member == members_.end()) return DISP_E_UNKNOWNNAME;
  ids[0] = static_cast<DISPID>(std::distance(members_.begin(), member) + 1);
  return S_OK;
}

HRESULT ScriptedObject::Invoke(DISPID id, REFIID, LCID, WORD kinds, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT*) {
  if (id < 1 || id > static_cast<DISPID>(members_.size())) return DISP_E_MEMBERNOTFOUND;
  const auto& [name, member] = *std::next(members_.begin(), id - 1);
  if ((member.kinds & kinds) == 0) return DISP_E_MEMBERNOTFOUND;
  Values values;
  for (UINT i = parameters->cArgs; i-- > 0;) {
    auto value = ValueOf(parameters->rgvarg[i]);
    if (!value) return DISP_E_TYPEMISMATCH;
    values.push_back(std::move(*value));
  }
  const HRESULT checked = Check(member.signature, values);
  if (FAILED(checked)) return checked;
  const auto call = name_ + "." + name;
  std::ofstream(Root() / "journal", std::ios::app | std::ios::binary)
      << call << '(' << Shown(values) << ")\n";
  try {
    RaiseIfAsked(call);
    Give(member.act(values), result);
    return S_OK;
  } catch (const Refusal& refusal) {
    Tell(refusal, exception);
    return DISP_E_EXCEPTION;
  }
}

Member Constant(const Value& value) {
  return {kGet, "", [value](const Values&) { return value; }};
}

std::filesystem::path Root() {
  std::array<wchar_t, MAX_PATH> root{};
  GetEnvironmentVariableW(L"GORBEX_TEST_SERVERS", root.data(), MAX_PATH);
  return root.data();
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string Utf8(const std::wstring& wide) {
  const auto bytes = std::filesystem::path(wide).u8string();
  return {bytes.begin(), bytes.end()};
}

std::wstring Wide(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).native();
}

}  // namespace gorbex::test
