#include "platform/windows/controls/activex_objects.h"

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>
#include <wx/defs.h>  // the next one asks it what there is
#include <wx/msw/ole/activex.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include <utility>

#include "platform/windows/automation_class.h"

namespace gorbex {
namespace {

template <class Interface>
ComPointer<Interface> Ask(IUnknown& object, REFIID id) {
  ComPointer<Interface> answer;
  object.QueryInterface(id, reinterpret_cast<void**>(answer.GetAddressOf()));
  return answer;
}

// The toolkit takes for granted what it needs of a control.
bool IsControl(IUnknown& object) {
  return Ask<IOleObject>(object, IID_IOleObject) &&
         Ask<IOleInPlaceObject>(object, IID_IOleInPlaceObject);
}

/// A window of the toolkit that a control fills.
class ControlWindow : public wxWindow {
 public:
  ControlWindow(wxWindow* parent, IUnknown* control, ControlSize size)
      : wxWindow(parent, wxID_ANY, {0, 0}, {size.width, size.height}),
        container_(new wxActiveXContainer(this, IID_IUnknown, control)) {}
  ~ControlWindow() override {
    // The control destroys its own window.
    container_->DissociateHandle();
    delete container_;
  }
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

 private:
  wxActiveXContainer* container_;
};

class ActiveXControl : public ComponentControl {
 public:
  ActiveXControl(std::shared_ptr<ComApartment> apartment, const ComPointer<IDispatch>& object)
      : apartment_(std::move(apartment)), control_(Ask<IUnknown>(*object.Get(), IID_IUnknown)) {}
  ~ActiveXControl() override {
    if (window_) window_->Destroy();
  }
  ActiveXControl(const ActiveXControl&) = delete;
  ActiveXControl& operator=(const ActiveXControl&) = delete;

  void SetSize(ControlSize size) override {
    size_ = size;
    if (window_) window_->SetSize(0, 0, size.width, size.height);
  }
  void Paint(const PixelBuffer& /*to*/) override {}

  [[nodiscard]] bool ShowIn(void* window) override {
    window_ = new ControlWindow(static_cast<wxWindow*>(window), control_.Get(), size_);
    window_->Raise();
    return true;
  }

 private:
  std::shared_ptr<ComApartment> apartment_;  // outlives the object
  ComPointer<IUnknown> control_;
  ControlSize size_;
  wxWeakRef<wxWindow> window_;  // its parent's, which may go before this
};

}  // namespace

std::unique_ptr<ComponentControl> ActiveXObjects::CreateControl(const std::string& identifier,
                                                                std::function<void()> /*repaint*/) {
  auto made = MakeControl(identifier);
  if (!IsControl(*made.Get())) RefuseObject(identifier, "it is not a control");
  return std::make_unique<ActiveXControl>(Apartment(), made);
}

}  // namespace gorbex
