#include "scripted_object.h"

#include <oleauto.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <vector>

namespace gorbex::test {
namespace {

struct Line {
  std::string call;
  std::string answer;
};

std::filesystem::path Root() {
  std::array<wchar_t, MAX_PATH> root{};
  GetEnvironmentVariableW(L"GORBEX_TEST_SERVERS", root.data(), MAX_PATH);
  return root.data();
}

std::string Utf8(const std::wstring& wide) {
  const auto bytes = std::filesystem::path(wide).u8string();
  return {bytes.begin(), bytes.end()};
}

std::wstring Wide(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).native();
}

std::vector<Line> Script() {
  std::vector<Line> script;
  std::ifstream lines(Root() / "answers", std::ios::binary);
  for (std::string line; std::getline(lines, line);) {
    const auto equals = line.find('=');
    if (equals != std::string::npos)
      script.push_back({line.substr(0, equals), line.substr(equals + 1)});
  }
  return script;
}

std::string Shown(const VARIANT& value) {
  if (value.vt == VT_BOOL) return value.boolVal != VARIANT_FALSE ? "True" : "False";
  if (value.vt == VT_I4) return std::to_string(value.lVal);
  if (value.vt != VT_BSTR) return "type " + std::to_string(value.vt);
  return "\"" + Utf8({value.bstrVal, SysStringLen(value.bstrVal)}) + "\"";
}

// The last argument comes first.
std::string Shown(const DISPPARAMS& parameters) {
  std::string shown;
  for (UINT i = parameters.cArgs; i-- > 0;) {
    shown += Shown(parameters.rgvarg[i]) + (i > 0 ? ", " : "");
  }
  return shown;
}

void Note(const std::string& call, WORD kinds, const DISPPARAMS& parameters) {
  std::ofstream journal(Root() / "journal", std::ios::app | std::ios::binary);
  journal << call;
  if (kinds == DISPATCH_PROPERTYPUT) journal << " = " << Shown(parameters);
  if ((kinds & DISPATCH_METHOD) != 0) journal << '(' << Shown(parameters) << ')';
  journal << '\n';
}

HRESULT Fail(const std::string& answer, EXCEPINFO* exception) {
  const auto words = answer.find('|') + 1;
  *exception = {};
  exception->scode = static_cast<SCODE>(std::stoul(answer.substr(1), nullptr, 16));
  exception->bstrSource = SysAllocString(L"Server");
  exception->bstrDescription = SysAllocString(Wide(answer.substr(words)).c_str());
  return DISP_E_EXCEPTION;
}

void Give(const std::string& answer, VARIANT* to) {
  if (to == nullptr || answer.empty()) return;
  if (answer.starts_with('@')) {
    to->vt = VT_DISPATCH;
    to->pdispVal = new ScriptedObject(answer.substr(1));
  } else if (answer != "~") {
    to->vt = VT_BSTR;
    to->bstrVal = SysAllocString(Wide(answer).c_str());
  }
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

// A member's number is that of its line.
HRESULT ScriptedObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (count != 1) return E_INVALIDARG;
  const auto call = name_ + "." + Utf8(names[0]);
  const auto script = Script();
  ids[0] = DISPID_UNKNOWN;
  for (std::size_t i = 0; i < script.size(); ++i) {
    if (_stricmp(script[i].call.c_str(), call.c_str()) == 0) ids[0] = static_cast<DISPID>(i + 1);
  }
  return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT ScriptedObject::Invoke(DISPID id, REFIID, LCID, WORD kinds, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT*) {
  const auto line = Script().at(static_cast<std::size_t>(id) - 1);
  if (line.answer.starts_with('!')) return Fail(line.answer, exception);
  if (line.answer == "~") Sleep(2000);
  Note(line.call, kinds, *parameters);
  Give(line.answer, result);
  return S_OK;
}

}  // namespace gorbex::test
