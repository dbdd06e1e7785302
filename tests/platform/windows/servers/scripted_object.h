#pragma once

#include <windows.h>

#include <oaidl.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace gorbex::test {

// What stands at the other end of automation in the tests. Every call is noted in the file
// "journal" of the servers' folder, and fails when the file "failures" says so in a line
// "Class.Member|number|words"; the word "silence" makes it take its time instead.

/// Texts, longs, flags and objects (null for Nothing; a result gives its reference away): a caller
/// that hands over anything else is refused.
using Value = std::variant<std::monostate, std::wstring, std::int32_t, bool, IDispatch*>;
using Values = std::vector<Value>;

struct Refusal {
  std::uint32_t number;
  std::string words;
};

struct Member {
  int kinds;              ///< DISPATCH_METHOD, DISPATCH_PROPERTYGET and DISPATCH_PROPERTYPUT
  std::string signature;  ///< s, l and b for each argument; capitals for those that may be left out
  std::function<Value(const Values&)> act;
};
using Members = std::map<std::string, Member>;

inline constexpr int kCall = DISPATCH_METHOD;
inline constexpr int kGet = DISPATCH_PROPERTYGET;
inline constexpr int kPut = DISPATCH_PROPERTYPUT;

class ScriptedObject : public IDispatch {
 public:
  ScriptedObject(std::string name, Members members)
      : name_(std::move(name)), members_(std::move(members)) {}
  virtual ~ScriptedObject() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kinds, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override;

 private:
  std::string name_;
  Members members_;
  ULONG references_ = 1;
};

/// Any object with these members.
inline IDispatch* Object(std::string name, Members members) {
  return new ScriptedObject(std::move(name), std::move(members));
}

/// A property that is read alone.
Member Constant(const Value& value);

[[nodiscard]] std::filesystem::path Root();
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& bytes);
[[nodiscard]] std::string Utf8(const std::wstring& wide);
[[nodiscard]] std::wstring Wide(const std::string& utf8);
[[nodiscard]] inline std::wstring Text(const Value& value) {
  return std::get<std::wstring>(value);
}

IDispatch* NewSourceSafe();
IDispatch* NewOutlook();
IDispatch* NewComponent();

}  // namespace gorbex::test
