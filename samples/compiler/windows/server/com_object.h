#pragma once

#include <windows.h>

#include <unknwn.h>

namespace gorbex::standin {

/// Counts the uses that keep the component's code loaded.
class CodeUse {
 public:
  CodeUse() { InterlockedIncrement(&count_); }
  ~CodeUse() { InterlockedDecrement(&count_); }
  CodeUse(const CodeUse&) = delete;
  CodeUse& operator=(const CodeUse&) = delete;

  [[nodiscard]] static bool IsNeeded() { return count_ != 0; }

  /// For clients that keep the code without having an object.
  static void Lock(bool isLocked) {
    if (isLocked) InterlockedIncrement(&count_);
    if (!isLocked) InterlockedDecrement(&count_);
  }

 private:
  static inline LONG count_ = 0;
};

/// An object with one interface besides IUnknown, which goes with the last reference to it.
template <class Interface>
class ComObject : public Interface {
 public:
  ComObject() = default;
  virtual ~ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool isOffered = iid == IID_IUnknown || iid == __uuidof(Interface);
    *object = isOffered ? static_cast<Interface*>(this) : nullptr;
    if (!isOffered) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&count_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const auto left = static_cast<ULONG>(InterlockedDecrement(&count_));
    if (left == 0) delete this;
    return left;
  }

 private:
  LONG count_ = 1;
  CodeUse use_;
};

}  // namespace gorbex::standin
