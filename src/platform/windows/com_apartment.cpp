#include "platform/windows/com_apartment.h"

#include <windows.h>

#include <objbase.h>

namespace gorbex {

ComApartment::ComApartment()
    : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}

ComApartment::~ComApartment() {
  if (entered_) CoUninitialize();
}

}  // namespace gorbex
