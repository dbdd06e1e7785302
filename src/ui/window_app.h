#pragma once

#include <wx/app.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/host.h"
#include "ui/window_session.h"

namespace gorbex::ui {

/// The toolkit's application: the main window over the host of the system, until it is closed.
class WindowApp : public wxApp {
 public:
  using MakeHost = std::function<std::unique_ptr<Host>()>;

  /// `typed` is what the command line names. A failure of the host is told in a box.
  WindowApp(MakeHost makeHost, std::string typed);

  bool OnInit() override;

 private:
  MakeHost makeHost_;
  std::string typed_;
  std::unique_ptr<Host> host_;
  std::unique_ptr<WindowSession> session_;
};

}  // namespace gorbex::ui
